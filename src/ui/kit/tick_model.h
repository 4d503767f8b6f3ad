// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIdentityProxyModel>
#include <QSet>

class List_Model;

/// A list whose rows have boxes to tick, in front of their first column. Ticks follow the rows' tags.
class Tick_Model : public QIdentityProxyModel
{
    Q_OBJECT

public:
    explicit Tick_Model(List_Model &list, QObject *parent = nullptr);

    [[nodiscard]] const QSet<QString> &Ticked() const { return m_ticked; }
    void Tick(const QString &tag, bool on);
    void Tick_All(bool on);
    /// Takes ticks of rows that are no longer there away.
    void Forget_Missing();

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    void Ticks_Changed();

private:
    [[nodiscard]] QString Tag(const QModelIndex &index) const;

    List_Model &m_list;
    QSet<QString> m_ticked;
};

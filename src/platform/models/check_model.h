// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAbstractListModel>
#include <QString>
#include <vector>

/// One line with a box. A half-ticked box means that only some of what the list is about have it.
struct Check_Item {
    QString key;
    QString text;
    Qt::CheckState state = Qt::Unchecked;
    Qt::CheckState before = state; ///< as the logic filled it
};

/// A list of boxes that the logic fills and a view shows. A click ticks or unticks; it never makes a half tick.
class Check_Model : public QAbstractListModel
{
    Q_OBJECT

public:
    static constexpr int Key_Role = Qt::UserRole;

    using QAbstractListModel::QAbstractListModel;

    void Replace(std::vector<Check_Item> items);
    void Add(Check_Item item);
    [[nodiscard]] int Count() const { return static_cast<int>(m_items.size()); }
    [[nodiscard]] const Check_Item &Item(int row) const { return m_items[static_cast<size_t>(row)]; }
    /// -1 when no line has that key.
    [[nodiscard]] int Find(const QString &key) const;
    void Set_State(int row, Qt::CheckState state);
    /// Keys of the lines that stand in `state` now and did not when the list was filled.
    [[nodiscard]] QStringList Changed_To(Qt::CheckState state) const;

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex &index) const override;
    [[nodiscard]] int rowCount(const QModelIndex &parent) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

private:
    std::vector<Check_Item> m_items;
};

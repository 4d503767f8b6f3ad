// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLayout>

/// Puts its items side by side and goes on in the next line where the width ends, so that nothing is ever out of reach.
class Flow_Layout : public QLayout
{
public:
    explicit Flow_Layout(QWidget *parent);
    ~Flow_Layout() override;

    void addItem(QLayoutItem *item) override { m_items << item; }
    [[nodiscard]] int count() const override { return static_cast<int>(m_items.size()); }
    [[nodiscard]] QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    [[nodiscard]] Qt::Orientations expandingDirections() const override { return {}; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSize() const override;
    [[nodiscard]] QSize sizeHint() const override;
    void setGeometry(const QRect &place) override;

private:
    int Place_Items(const QRect &place, bool move) const;

    QList<QLayoutItem *> m_items;
};

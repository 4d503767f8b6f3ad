// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStyledItemDelegate>
#include <functional>

/// Gives the nodes of a folder tree their icons; the model knows only the images' names.
class Node_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Whether a node wears the mark of a lock.
    std::function<bool(const QModelIndex &)> Is_Locked;
    /// The node under a drag is shown as if it were chosen.
    QPersistentModelIndex Drop_Target;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

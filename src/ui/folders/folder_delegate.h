// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/node_delegate.h"

/// A node of the folder tree: its name, at the right quietly how many documents it has, and on the row under the
/// pointer the buttons of its commands.
class Folder_Delegate : public Node_Delegate
{
public:
    enum class Button { None, Add, More };

    using Node_Delegate::Node_Delegate;

    /// The node under the pointer.
    QPersistentModelIndex Hovered;

    /// The button of the row under the pointer that lies there. @param row  the node's rectangle in the viewport
    [[nodiscard]] Button Button_At(const QPoint &at, const QRect &row, int seenWidth) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Width that the whole name needs.
    [[nodiscard]] int Whole_Width(const QStyleOptionViewItem &option, const QModelIndex &index) const;
    /// Of a long name no more counts than one knows it by: the tree is not scrolled across for the rest.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

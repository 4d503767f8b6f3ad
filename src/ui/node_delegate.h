// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"
#include "ui/icons.h"

#include <QStyledItemDelegate>

/// Gives the nodes of a tree their icons; the model knows only the images' names.
class Tree_Node_Delegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->icon = Node_Icon(index.data(Tree_Model::Image_Role).toString());
        option->features |= QStyleOptionViewItem::HasDecoration;
    }
};

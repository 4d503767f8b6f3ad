// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/node_delegate.h"

#include "platform/models/tree_model.h"
#include "ui/kit/icons.h"

#include <QApplication>
#include <QPainter>

void Node_Delegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->icon = Node_Icon(index.data(Tree_Model::Image_Role).toString());
    option->features |= QStyleOptionViewItem::HasDecoration;
    if (Drop_Target == index)
        option->state |= QStyle::State_Selected;
}

void Node_Delegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyledItemDelegate::paint(painter, option, index);
    if (!Is_Locked || !Is_Locked(index))
        return;
    QStyleOptionViewItem own = option;
    initStyleOption(&own, index);
    const QStyle &style = own.widget == nullptr ? *QApplication::style() : *own.widget->style();
    const QRect icon = style.subElementRect(QStyle::SE_ItemViewItemDecoration, &own, own.widget);
    // The corner of the folder's icon, on a spot of the background so that it shows on any picture.
    const int side = icon.width() * 3 / 4;
    const QRect corner(icon.right() - side + 3, icon.bottom() - side + 2, side, side);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(own.palette.base());
    painter->drawEllipse(corner);
    Line_Icon(QStringLiteral("lock")).paint(painter, corner.adjusted(1, 1, -1, -1));
    painter->restore();
}

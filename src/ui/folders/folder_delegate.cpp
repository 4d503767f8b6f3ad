// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/folder_delegate.h"

#include "tree/folder_ids.h"
#include "ui/kit/icons.h"
#include "ui/kit/numbers.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPainter>
#include <algorithm>

namespace
{
constexpr int Button_Side = 20;
constexpr int Icon_Side = 16;
constexpr int Gap = 8;
constexpr int Least_Row = 26;
constexpr int Room_To_Know_By = 140; ///< pixels for a name, its icon and its count

/// "576" of "Work[576]", "" for a node without a count.
QString Count_Text(const QString &caption)
{
    const qsizetype from = caption.lastIndexOf(u'[');
    bool isNumber = false;
    const qint64 count = from < 0 ? 0 : caption.mid(from + 1).chopped(1).toLongLong(&isNumber);
    return isNumber && count > 0 ? Grouped(count) : QString();
}

int Seen_Width(const QStyleOptionViewItem &option)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(option.widget);
    return view == nullptr ? option.rect.right() + 1 : view->viewport()->width();
}

QRect Add_Place(const QRect &row, int right)
{
    return {right - 2 * Button_Side - Gap / 2, row.center().y() - Button_Side / 2, Button_Side, Button_Side};
}

QRect More_Place(const QRect &row, int right)
{
    return Add_Place(row, right).translated(Button_Side, 0);
}
} // namespace

Folder_Delegate::Button Folder_Delegate::Button_At(const QPoint &at, const QRect &row, int seenWidth) const
{
    if (Add_Place(row, seenWidth).contains(at))
        return Button::Add;
    return More_Place(row, seenWidth).contains(at) ? Button::More : Button::None;
}

void Folder_Delegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    Node_Delegate::initStyleOption(option, index);
    if (!Count_Text(option->text).isEmpty() || option->text.endsWith(QLatin1String("[0]")))
        option->text = Caption_Name(option->text);
}

int Folder_Delegate::Whole_Width(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const int count = option.fontMetrics.horizontalAdvance(Count_Text(index.data().toString())) + 2 * Gap;
    return Node_Delegate::sizeHint(option, index).width() + std::max(count, 2 * Button_Side + Gap);
}

QSize Folder_Delegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return {std::min(Whole_Width(option, index), Room_To_Know_By),
            std::max(Node_Delegate::sizeHint(option, index).height(), Least_Row)};
}

void Folder_Delegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const bool hovered = Hovered == index;
    const QString count = hovered ? QString() : Count_Text(index.data().toString());
    const int right = Seen_Width(option);
    const int taken =
        hovered ? 2 * Button_Side + Gap : (count.isEmpty() ? 0 : option.fontMetrics.horizontalAdvance(count) + 2 * Gap);
    // The ground of the whole row first, then the name in the room that is left of it.
    QStyleOptionViewItem ground = option;
    initStyleOption(&ground, index);
    const bool chosen = ground.state.testFlag(QStyle::State_Selected);
    ground.text.clear();
    ground.icon = {};
    ground.features &= ~QStyleOptionViewItem::HasDecoration;
    const QStyle &style = option.widget == nullptr ? *QApplication::style() : *option.widget->style();
    style.drawControl(QStyle::CE_ItemViewItem, &ground, painter, option.widget);
    QStyleOptionViewItem name = option;
    name.rect.setRight(std::min(name.rect.right(), right - 1 - taken));
    Node_Delegate::paint(painter, name, index);

    const QPalette::ColorRole role = chosen ? QPalette::HighlightedText : QPalette::PlaceholderText;
    painter->save();
    painter->setPen(option.palette.color(QPalette::Active, role));
    if (!count.isEmpty())
        painter->drawText(QRect(0, option.rect.top(), right - Gap, option.rect.height()),
                          Qt::AlignRight | Qt::AlignVCenter, count);
    painter->restore();
    if (!hovered)
        return;
    const int inset = (Button_Side - Icon_Side) / 2;
    const QIcon::Mode mode = chosen ? QIcon::Selected : QIcon::Normal;
    Line_Icon(QStringLiteral("add"))
        .paint(painter, Add_Place(option.rect, right).adjusted(inset, inset, -inset, -inset), Qt::AlignCenter, mode);
    Line_Icon(QStringLiteral("more"))
        .paint(painter, More_Place(option.rect, right).adjusted(inset, inset, -inset, -inset), Qt::AlignCenter, mode);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/row_delegate.h"

#include "platform/models/list_model.h"
#include "ui/kit/readable_color.h"
#include "ui/kit/type_icons.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>
#include <utility>

namespace
{
const QString Place_Indent = QStringLiteral("    "); ///< before the text of a place, in its title
constexpr int Row_Height = 28;
constexpr int Icon_Side = 16;
constexpr int Gap = 8;          ///< between a row's edge, its icon and its words
constexpr float Second = 0.66F; ///< strength of what is read after the title
constexpr float Second_Chosen = 0.85F;
constexpr int To_Minutes = 16; ///< characters of "2026-03-05 10:30:00"

const QStyle &Style_Of(const QStyleOptionViewItem &cell)
{
    return cell.widget == nullptr ? *QApplication::style() : *cell.widget->style();
}

QColor Text_Color(const QStyleOptionViewItem &cell)
{
    const bool chosen = cell.state.testFlag(QStyle::State_Selected);
    return cell.palette.color(QPalette::Active, chosen ? QPalette::HighlightedText : QPalette::Text);
}

QColor Quiet(QColor color, float strength)
{
    color.setAlphaF(strength);
    return color;
}

void Paint_Background(QPainter &painter, QStyleOptionViewItem cell)
{
    cell.text.clear();
    cell.icon = {};
    cell.features &= ~QStyleOptionViewItem::HasDecoration;
    Style_Of(cell).drawControl(QStyle::CE_ItemViewItem, &cell, &painter, cell.widget);
}
} // namespace

void Row_Delegate::Read_Columns(const List_Model &list)
{
    const struct {
        int &column;
        const char *key;
    } rows[] = {{m_title, "Title"},   {m_star, "Star"}, {m_done, "Done"},    {m_explain, "Explain"},
                {m_type, "FileType"}, {m_file, "File"}, {m_update, "Update"}};
    for (const auto &row : rows)
        row.column = list.Column(QStringLiteral("Lsv_Code_Info_") + QLatin1String(row.key));
}

bool Row_Delegate::Is_Place(const QModelIndex &index)
{
    return index.data(List_Model::Place_Role).toLongLong() >= 0;
}

QSize Row_Delegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const QSize size = QStyledItemDelegate::sizeHint(option, index);
    const int line = option.fontMetrics.height();
    const int least = comfortable ? 2 * line + Gap + Gap / 2 : std::max(Row_Height, line + Gap);
    return {size.width(), std::max(least, size.height())};
}

void Row_Delegate::initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.data(Qt::ForegroundRole).isValid()) {
        const QColor stored = option->palette.color(QPalette::Text);
        option->palette.setColor(QPalette::Text, Readable(stored, option->palette.color(QPalette::Base)));
    }
    if (index.column() == m_update)
        option->text.truncate(To_Minutes);
    if (index.column() == 0) // a number that nobody reads by
        option->palette.setColor(QPalette::Text, Quiet(option->palette.color(QPalette::Text), Second));
    if (index.column() != m_title || Is_Place(index))
        return;
    const QString type = index.siblingAtColumn(m_type).data().toString();
    const bool isLink = type.isEmpty() && !index.siblingAtColumn(m_file).data().toString().isEmpty();
    option->icon = Type_Icon(type, isLink);
    option->decorationSize = QSize(Icon_Side, Icon_Side);
    option->features |= QStyleOptionViewItem::HasDecoration;
}

void Row_Delegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    if (index.column() == m_star || index.column() == m_done)
        Paint_Stars(*painter, cell, cell.text);
    else if (index.column() == m_title)
        Paint_Title(*painter, cell, comfortable ? index.siblingAtColumn(m_explain).data().toString() : QString());
    else
        QStyledItemDelegate::paint(painter, option, index);
    if (grid)
        Paint_Grid(*painter, cell);
}

/// Equal widths for both kinds of stars, whatever the font has for them.
void Row_Delegate::Paint_Stars(QPainter &painter, const QStyleOptionViewItem &cell, const QString &stars) const
{
    constexpr float Unset = 0.28F;
    Paint_Background(painter, cell);
    const int width = std::max(cell.fontMetrics.horizontalAdvance(u'★'), cell.fontMetrics.horizontalAdvance(u'☆'));
    QRect place(cell.rect.left() + Gap / 2, cell.rect.top(), width, cell.rect.height());
    painter.save();
    painter.setClipRect(cell.rect);
    painter.setFont(cell.font);
    for (const QChar star : stars) {
        const QColor color = Text_Color(cell);
        painter.setPen(star == u'★' ? color : Quiet(color, Unset));
        painter.drawText(place, Qt::AlignCenter, QString(star));
        place.translate(width, 0);
    }
    painter.restore();
}

void Row_Delegate::Paint_Title(QPainter &painter, const QStyleOptionViewItem &cell, const QString &summary) const
{
    Paint_Background(painter, cell);
    const int line = cell.fontMetrics.height();
    const bool two = !summary.trimmed().isEmpty();
    const int top = cell.rect.top() + (cell.rect.height() - (two ? 2 * line : line)) / 2;
    const int left = cell.rect.left() + Gap / 2 + Icon_Side + Gap;
    const int room = cell.rect.right() - Gap / 2 - left;
    const bool chosen = cell.state.testFlag(QStyle::State_Selected);
    painter.save();
    painter.setClipRect(cell.rect);
    cell.icon.paint(&painter, QRect(cell.rect.left() + Gap / 2, top + (line - Icon_Side) / 2, Icon_Side, Icon_Side),
                    Qt::AlignCenter, chosen ? QIcon::Selected : QIcon::Normal);
    const auto write = [&](int y, const QString &text, const QColor &color) {
        painter.setPen(color);
        const QString shown = cell.fontMetrics.elidedText(QString(text).replace(u'\n', u' '), Qt::ElideRight, room);
        painter.drawText(QRect(left, y, room, line), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    };
    painter.setFont(cell.font);
    write(top, cell.text, Text_Color(cell));
    if (two)
        write(top + line, summary.trimmed(), Quiet(Text_Color(cell), chosen ? Second_Chosen : Second));
    painter.restore();
}

void Row_Delegate::Paint_Place(QPainter &painter, const QStyleOptionViewItem &row, const QModelIndex &title,
                               int left) const
{
    constexpr float Muted = 0.8F;
    QStyleOptionViewItem line = row;
    initStyleOption(&line, title);
    QString text = std::exchange(line.text, QString());
    Paint_Background(painter, line);
    text.replace(u'\n', u' ').replace(QChar::LineSeparator, u' ').replace(QChar::ParagraphSeparator, u' ');
    const bool marks = key_length > 0 && text.startsWith(Place_Indent);
    text = marks ? text.mid(Place_Indent.size()) : text.trimmed();
    const QRect room = line.rect.adjusted(left + Gap / 2 + Icon_Side + Gap, 0, -Gap, 0);
    const bool chosen = line.state.testFlag(QStyle::State_Selected);
    QTextCharFormat marked;
    marked.setFontWeight(QFont::Bold);
    marked.setForeground(Text_Color(line));
    if (!chosen)
        marked.setBackground(line.palette.color(QPalette::Highlight));
    if (!chosen)
        marked.setForeground(line.palette.color(QPalette::HighlightedText));
    QTextLayout layout(line.fontMetrics.elidedText(text, Qt::ElideRight, room.width() - Gap), line.font);
    if (marks)
        layout.setFormats({{0, key_length, marked}});
    layout.beginLayout();
    layout.createLine();
    layout.endLayout();
    painter.save();
    painter.setClipRect(room);
    painter.setPen(Quiet(Text_Color(line), Muted));
    layout.draw(&painter, QPointF(room.left(), room.top() + (room.height() - layout.boundingRect().height()) / 2));
    painter.restore();
    if (grid)
        Paint_Grid(painter, line);
}

void Row_Delegate::Paint_Grid(QPainter &painter, const QStyleOptionViewItem &cell) const
{
    constexpr float Faint = 0.16F;
    painter.save();
    painter.setPen(Quiet(cell.palette.color(QPalette::Text), Faint));
    painter.drawLine(cell.rect.topRight(), cell.rect.bottomRight());
    painter.drawLine(cell.rect.bottomLeft(), cell.rect.bottomRight());
    painter.restore();
}

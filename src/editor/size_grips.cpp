// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/size_grips.h"

#include "editor/picture_handler.h"
#include "editor/pictures.h"
#include "editor/text_editor.h"

#include <QAbstractTextDocumentLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>
#include <limits>
#include <optional>

namespace
{
constexpr qreal Grip_Side = 9;     // pixels
constexpr qreal Line_Reach = 4;    // pixels on either side of a column's line
constexpr qreal Least_Column = 24; // pixels
constexpr qreal Least_Picture = 8;

QPointF Scrolled(const Text_Editor &editor)
{
    return {static_cast<qreal>(editor.horizontalScrollBar()->value()),
            static_cast<qreal>(editor.verticalScrollBar()->value())};
}
} // namespace

Size_Grips::Size_Grips(Text_Editor &editor) : QObject(&editor), m_editor(editor) {}

bool Size_Grips::Is_Picture(const QTextCursor &cursor)
{
    return cursor.selectionEnd() - cursor.selectionStart() == 1 && !cursor.hasComplexSelection() &&
           cursor.document()->characterAt(cursor.selectionStart()) == QChar::ObjectReplacementCharacter &&
           Pictures::Format_Of(cursor).isImageFormat();
}

QTextCursor Size_Grips::Picture_At(const QPoint &place) const
{
    QTextCursor cursor = m_editor.cursorForPosition(place);
    const int near = cursor.position();
    for (const int position : {near, near - 1}) {
        if (position < 0)
            continue;
        cursor.setPosition(position);
        cursor.setPosition(std::min(position + 1, m_editor.document()->characterCount() - 1), QTextCursor::KeepAnchor);
        if (Is_Picture(cursor) && Place_Of(cursor).contains(place))
            return cursor;
    }
    cursor.setPosition(near);
    return cursor;
}

QRectF Size_Grips::Picture_Place() const
{
    const QTextCursor cursor = m_editor.textCursor();
    return Is_Picture(cursor) ? Place_Of(cursor) : QRectF();
}

QRectF Size_Grips::Place_Of(const QTextCursor &picture) const
{
    const QTextBlock block = m_editor.document()->findBlock(picture.selectionStart());
    const QTextLayout *layout = block.layout();
    const int at = picture.selectionStart() - block.position();
    const QTextLine line = layout->lineForTextPosition(at);
    if (!line.isValid())
        return {};
    QTextObjectInterface *handler = m_editor.document()->documentLayout()->handlerForObject(QTextFormat::ImageObject);
    const QSizeF size =
        handler->intrinsicSize(m_editor.document(), picture.selectionStart(), Pictures::Format_Of(picture));
    const QPointF corner(std::min(line.cursorToX(at), line.cursorToX(at + 1)),
                         line.y() + line.ascent() - size.height());
    const QPointF origin = m_editor.document()->documentLayout()->blockBoundingRect(block).topLeft();
    return {origin + corner - Scrolled(m_editor), size};
}

QRectF Size_Grips::Grip() const
{
    const QRectF place = Picture_Place();
    return place.isEmpty()
               ? QRectF()
               : QRectF(place.bottomRight() - QPointF(Grip_Side, Grip_Side) / 2, QSizeF(Grip_Side, Grip_Side));
}

/// The left lines of the columns and the table's right one; the longest indent in a column says least of where it
/// begins. A column in which no cell begins has no line.
QList<Size_Grips::Column_Line> Size_Grips::Column_Lines(QTextTable &table) const
{
    const QAbstractTextDocumentLayout &layout = *m_editor.document()->documentLayout();
    const qreal shift = Scrolled(m_editor).x();
    QList<Column_Line> lines;
    for (int column = 0; column < table.columns(); ++column) {
        std::optional<qreal> edge;
        for (int row = 0; row < table.rows(); ++row) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.column() != column)
                continue;
            const qreal left = layout.blockBoundingRect(cell.firstCursorPosition().block()).left();
            edge = std::min(edge.value_or(left), left);
        }
        if (edge)
            lines.append({&table, column, *edge - table.format().cellPadding() - shift});
    }
    lines.append({&table, table.columns(), layout.frameBoundingRect(&table).right() - shift});
    return lines;
}

Size_Grips::Column_Line Size_Grips::Line_At(const QPoint &place) const
{
    // On the line itself the cursor may fall to either side of it, or beside a table whose cells are short.
    for (const int step : {0, -8, 8}) {
        QTextTable *table = m_editor.cursorForPosition(place + QPoint(step, 0)).currentTable();
        if (table == nullptr)
            continue;
        const QRectF frame =
            m_editor.document()->documentLayout()->frameBoundingRect(table).translated(-Scrolled(m_editor));
        for (const Column_Line &line : Column_Lines(*table)) {
            if (line.column > 0 && std::abs(place.x() - line.x) <= Line_Reach && place.y() >= frame.top() &&
                place.y() <= frame.bottom())
                return line;
        }
    }
    return {};
}

bool Size_Grips::Press(const QMouseEvent &event)
{
    if (event.button() != Qt::LeftButton || m_editor.isReadOnly())
        return false;
    m_from = m_at = event.position();
    m_line = Line_At(event.position().toPoint());
    if (Grip().contains(event.position()))
        m_pull = Pull::Picture;
    else if (m_line.table != nullptr)
        m_pull = Pull::Column;
    else if (const QTextCursor picture = Picture_At(event.position().toPoint());
             picture.hasSelection() && !Picture_Place().contains(event.position()))
        m_editor.setTextCursor(picture);
    else
        return false; // a picture that is selected already can be dragged to another place
    return true;
}

bool Size_Grips::Move(const QMouseEvent &event)
{
    m_free = event.modifiers().testFlag(Qt::ShiftModifier);
    if (m_pull != Pull::None) {
        m_at = event.position();
        m_editor.viewport()->update();
        return true;
    }
    if (event.buttons() != Qt::NoButton || m_editor.isReadOnly())
        return false;
    if (Grip().contains(event.position()))
        m_editor.viewport()->setCursor(Qt::SizeFDiagCursor);
    else if (Line_At(event.position().toPoint()).table != nullptr)
        m_editor.viewport()->setCursor(Qt::SplitHCursor);
    else
        return false;
    return true;
}

bool Size_Grips::Release(const QMouseEvent &event)
{
    if (m_pull == Pull::None)
        return false;
    m_at = event.position();
    if (m_at == m_from) {
        m_pull = Pull::None;
        return true;
    }
    if (m_pull == Pull::Picture)
        Pictures::Set_Size(m_editor.textCursor(), Pulled_Size() * 100 / m_editor.Zoom());
    else
        Resize_Columns();
    m_pull = Pull::None;
    m_editor.viewport()->update();
    return true;
}

QSizeF Size_Grips::Pulled_Size() const
{
    const QSizeF old = Picture_Place().size();
    const QPointF by = m_at - m_from;
    const QSizeF wanted(std::max(Least_Picture, old.width() + by.x()), std::max(Least_Picture, old.height() + by.y()));
    if (m_free)
        return wanted;
    const qreal scale = std::max(wanted.width() / old.width(), wanted.height() / old.height());
    return old * scale;
}

/// Gives the columns the widths that they have on screen, with the pulled line in its new place. Columns that no line
/// divides share their room alike. Where the table has a width, the outer line changes that.
void Size_Grips::Resize_Columns()
{
    QTextTable &table = *m_line.table;
    QList<Column_Line> lines = Column_Lines(table);
    const qreal oldWidth = lines.last().x - lines.first().x;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        if (lines[i].column != m_line.column)
            continue;
        const qreal least = lines[i - 1].x + Least_Column;
        const qreal most =
            i + 1 < lines.size() ? lines[i + 1].x - Least_Column : std::numeric_limits<qreal>::infinity();
        if (most < least)
            return;
        lines[i].x = std::clamp(lines[i].x + m_at.x() - m_from.x(), least, most);
    }
    const qreal newWidth = lines.last().x - lines.first().x;
    QTextTableFormat format = table.format();
    const QTextLength::Type kind = format.width().type();
    const bool shares = kind == QTextLength::PercentageLength;
    if (m_line.column == table.columns() && kind != QTextLength::VariableLength) {
        const qreal wanted = format.width().rawValue() * newWidth / oldWidth;
        format.setWidth(QTextLength(kind, shares ? std::min(wanted, 100.0) : wanted));
    }
    QList<QTextLength> lengths;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const int columns = lines[i].column - lines[i - 1].column;
        const qreal width = (lines[i].x - lines[i - 1].x) / columns;
        lengths +=
            QList<QTextLength>(columns, shares ? QTextLength(QTextLength::PercentageLength, 100 * width / newWidth)
                                               : QTextLength(QTextLength::FixedLength, width * 100 / m_editor.Zoom()));
    }
    format.setColumnWidthConstraints(lengths);
    table.setFormat(format);
}

void Size_Grips::Paint(QPainter &painter) const
{
    const QColor accent = m_editor.palette().color(QPalette::Link);
    painter.setPen(QPen(accent, 1, m_pull == Pull::None ? Qt::SolidLine : Qt::DashLine));
    if (m_pull == Pull::Column) {
        painter.drawLine(QPointF(m_at.x(), 0), QPointF(m_at.x(), m_editor.viewport()->height()));
        return;
    }
    QRectF place = Picture_Place();
    if (place.isEmpty() || m_editor.isReadOnly())
        return;
    if (m_pull == Pull::Picture)
        place.setSize(Pulled_Size());
    painter.drawRect(place);
    painter.setBrush(accent);
    painter.drawRect(QRectF(place.bottomRight() - QPointF(Grip_Side, Grip_Side) / 2, QSizeF(Grip_Side, Grip_Side)));
}

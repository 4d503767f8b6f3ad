// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/decorations.h"

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/rtf_borders.h"
#include "platform/richtext/rtf_model.h"

#include <QAbstractTextDocumentLayout>
#include <QFontMetricsF>
#include <QPainter>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
using Rtf::Shown_Border;
using Rtf::Shown_Borders;

constexpr double usualResolution = 96;

/// Whether two paragraphs that follow each other stand in one box.
bool Share_Box(const QTextBlock &one, const QTextBlock &other)
{
    if (!one.isValid() || !other.isValid())
        return false;
    const QTextBlockFormat a = one.blockFormat(), b = other.blockFormat();
    return Rtf::Borders_Of(a) == Rtf::Borders_Of(b) && a.leftMargin() == b.leftMargin() &&
           a.rightMargin() == b.rightMargin() && a.indent() == b.indent() &&
           QTextCursor(one).currentFrame() == QTextCursor(other).currentFrame();
}

class Decorator
{
public:
    Decorator(QPainter &painter, const QTextDocument &document, const QColor &text)
        : m_painter(painter), m_document(document), m_layout(*document.documentLayout()), m_text(text)
    {
        if (const QPaintDevice *device = m_layout.paintDevice())
            m_scale = device->logicalDpiY() / usualResolution;
    }

    void Paint(const QRectF &clip)
    {
        for (QTextBlock block = First_Block(clip); block.isValid(); block = block.next()) {
            const QRectF place = m_layout.blockBoundingRect(block);
            if (place.top() > clip.bottom() && !QTextCursor(block).currentTable())
                break;
            if (const Shown_Borders borders = Rtf::Borders_Of(block.blockFormat()); Rtf::Has_Lines(borders))
                Paint_Borders(block, borders);
            if (const QTextList *list = block.textList(); list && list->format().style() == Rich_Text::Kept_Labels)
                Paint_Label(block);
            Paint_Underlines(block);
        }
    }

private:
    /// The paragraph at the clip's top, or the first one of the table that stands there.
    QTextBlock First_Block(const QRectF &clip) const
    {
        const int position = m_layout.hitTest(clip.topLeft(), Qt::FuzzyHit);
        QTextBlock block = m_document.findBlock(std::max(0, position));
        QTextCursor cursor(block);
        const QTextFrame *frame = cursor.currentFrame();
        while (frame && frame->parentFrame() && frame->parentFrame() != m_document.rootFrame())
            frame = frame->parentFrame();
        if (frame && frame != m_document.rootFrame())
            block = m_document.findBlock(frame->firstPosition());
        return block.previous().isValid() ? block.previous() : block;
    }

    /// Where the paragraph's lines stand.
    QRectF Text_Place(const QTextBlock &block) const
    {
        QRectF place = m_layout.blockBoundingRect(block);
        const QTextLayout &lines = *block.layout();
        const QRectF own = lines.boundingRect();
        place.setLeft(place.left() + own.left());
        place.setWidth(own.width());
        if (lines.lineCount() == 1) // a first line may stand apart, the box doesn't
            place.setLeft(place.left() - std::max(0.0, block.blockFormat().textIndent() * m_scale));
        return place;
    }

    /// On a screen lines begin and end at whole pixels.
    double Snapped(double length) const { return m_scale == 1 ? std::round(length) : length; }
    double Width(const Shown_Border &border) const
    {
        return border.Is_Line() ? std::max(Snapped(border.width * m_scale), 1.0) : 0;
    }

    void Paint_Line(const Shown_Border &border, QLineF line, QPointF outwards)
    {
        static constexpr Qt::PenStyle styles[] = {Qt::NoPen,     Qt::DotLine,     Qt::DashLine,      Qt::SolidLine,
                                                  Qt::SolidLine, Qt::DashDotLine, Qt::DashDotDotLine};
        if (!border.Is_Line())
            return;
        const bool isDouble = border.style == QTextFrameFormat::BorderStyle_Double;
        const double width = Width(border), stroke = isDouble ? std::max(Snapped(width / 3), 1.0) : width;
        const auto style = static_cast<std::size_t>(border.style);
        const QColor color = border.brush.style() == Qt::NoBrush ? m_text : border.brush.color();
        m_painter.setPen({color, stroke, style < std::size(styles) ? styles[style] : Qt::SolidLine, Qt::FlatCap});
        m_painter.drawLine(line.translated(outwards * (stroke / 2)));
        if (isDouble)
            m_painter.drawLine(line.translated(outwards * (std::max(width, 3 * stroke) - stroke / 2)));
    }

    /// Where the borders stand. QTextDocument leaves no room for them, so they may only take that of the margins.
    QRectF Box(const QTextBlock &block, const Shown_Borders &borders) const
    {
        const QRectF text = Text_Place(block);
        const double below = block.next().isValid() ? block.next().blockFormat().topMargin() : 0;
        const QTextBlockFormat format = block.blockFormat();
        const double rooms[] = {format.topMargin() * m_scale, std::max(format.bottomMargin(), below) * m_scale,
                                text.left(), m_layout.documentSize().width() - text.right()};
        std::array<double, 4> spaces{};
        for (std::size_t side = 0; side < spaces.size(); ++side) {
            const double room = std::max(0.0, rooms[side] - Width(borders[side]));
            spaces[side] = borders[side].Is_Line() ? std::clamp(borders[side].space * m_scale, 0.0, room) : 0;
        }
        return {QPointF(Snapped(text.left() - spaces[Rtf::Left_Side]), Snapped(text.top() - spaces[Rtf::Top])),
                QPointF(Snapped(text.right() + spaces[Rtf::Right_Side]), Snapped(text.bottom() + spaces[Rtf::Bottom]))};
    }

    void Paint_Borders(const QTextBlock &block, const Shown_Borders &borders)
    {
        QRectF box = Box(block, borders);
        const bool joinsAbove = Share_Box(block.previous(), block), joinsBelow = Share_Box(block, block.next());
        if (joinsAbove)
            box.setTop(Snapped(Text_Place(block.previous()).bottom()));
        if (joinsBelow)
            box.setBottom(Snapped(Text_Place(block).bottom()));
        const QPointF left(Width(borders[Rtf::Left_Side]), 0), right(Width(borders[Rtf::Right_Side]), 0);
        if (!joinsAbove)
            Paint_Line(borders[Rtf::Top], {box.topLeft() - left, box.topRight() + right}, {0, -1});
        if (!joinsBelow)
            Paint_Line(borders[Rtf::Bottom], {box.bottomLeft() - left, box.bottomRight() + right}, {0, 1});
        Paint_Line(borders[Rtf::Left_Side], {box.topLeft(), box.bottomLeft()}, {-1, 0});
        Paint_Line(borders[Rtf::Right_Side], {box.topRight(), box.bottomRight()}, {1, 0});
    }

    /// A label stands where QTextDocument puts its own: a blank before the first line, in the paragraph's format.
    void Paint_Label(const QTextBlock &block)
    {
        const QTextLayout &lines = *block.layout();
        const QString text = Rich_Text::Item_Label(block);
        if (lines.lineCount() == 0 || text.isEmpty())
            return;
        const QTextCharFormat format = block.charFormat();
        const QFont font = Font_Of(format);
        const QFontMetricsF metrics = Metrics(font);
        const QTextLine line = lines.lineAt(0);
        const QPointF corner = m_layout.blockBoundingRect(block).topLeft() + line.naturalTextRect().topLeft();
        const double blank = metrics.horizontalAdvance(QLatin1Char(' '));
        const bool isLeftward = block.textDirection() == Qt::RightToLeft;
        const double left = isLeftward ? corner.x() + line.naturalTextRect().width() + blank
                                       : corner.x() - blank - metrics.horizontalAdvance(text);
        m_painter.setFont(font);
        m_painter.setPen(format.hasProperty(QTextFormat::ForegroundBrush) ? format.foreground().color() : m_text);
        m_painter.drawText(QPointF(left, corner.y() + line.ascent()), text);
    }

    /// QTextDocument draws one thin line where there are two, or a thick one.
    void Paint_Underlines(const QTextBlock &block)
    {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            const auto kind = static_cast<Rtf::Underline>(format.intProperty(Rich_Text::Underline_Property));
            if (kind == Rtf::Underline::Double || kind == Rtf::Underline::Thick)
                Paint_Underline(block, it.fragment(), kind == Rtf::Underline::Double ? 2 : 1);
        }
    }

    /// @param distance from the line that is there, in its widths
    void Paint_Underline(const QTextBlock &block, const QTextFragment &fragment, int distance)
    {
        const QTextCharFormat format = fragment.charFormat();
        const QFontMetricsF metrics = Metrics(Font_Of(format));
        const double width = std::max(Snapped(metrics.lineWidth()), 1.0);
        const QPointF corner = m_layout.blockBoundingRect(block).topLeft();
        const int begin = fragment.position() - block.position(), end = begin + fragment.length();
        const QBrush color = format.underlineColor().isValid() ? QBrush(format.underlineColor()) : format.foreground();
        m_painter.setPen({color.style() == Qt::NoBrush ? m_text : color.color(), width, Qt::SolidLine, Qt::FlatCap});
        for (int i = 0; i < block.layout()->lineCount(); ++i) {
            const QTextLine line = block.layout()->lineAt(i);
            const int first = std::max(begin, line.textStart());
            const int last = std::min(end, line.textStart() + line.textLength());
            if (first >= last)
                continue;
            const double y =
                std::ceil(corner.y() + line.y() + line.ascent() + metrics.underlinePos()) + (distance + 0.5) * width;
            const QRectF text = line.naturalTextRect(); // without the blanks at its end
            const auto at = [&](int position) {
                return QPointF(corner.x() + std::clamp(line.cursorToX(position), text.left(), text.right()), y);
            };
            m_painter.drawLine(at(first), at(last));
        }
    }

    QFont Font_Of(const QTextCharFormat &format) const
    {
        const QFont font = format.font().resolve(m_document.defaultFont());
        return m_layout.paintDevice() ? QFont(font, m_layout.paintDevice()) : font;
    }

    QFontMetricsF Metrics(const QFont &font) const
    {
        return m_layout.paintDevice() ? QFontMetricsF(font, m_layout.paintDevice()) : QFontMetricsF(font);
    }

    QPainter &m_painter;
    const QTextDocument &m_document;
    const QAbstractTextDocumentLayout &m_layout;
    QColor m_text;
    double m_scale = 1; ///< of the document's pixels to the device's
};
} // namespace

void Rich_Text::Paint_Decorations(QPainter &painter, const QTextDocument &document, const QRectF &clip,
                                  const QColor &text)
{
    painter.save();
    Decorator(painter, document, text).Paint(clip);
    painter.restore();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_borders.h"

#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_formats.h"

#include <QTextBlockFormat>

#include <algorithm>

namespace Rtf
{
namespace
{
constexpr int thinLine = 10; // twips: what a border without a width is drawn with
constexpr int ruleWidth = 15;

int Of_Side(QTextFormat::Property first, std::size_t side)
{
    return first + static_cast<int>(side);
}
static_assert(QTextFormat::TableCellRightBorder - QTextFormat::TableCellTopBorder == int{Right_Side} &&
              QTextFormat::TableCellLeftBorderStyle - QTextFormat::TableCellTopBorderStyle == int{Left_Side} &&
              QTextFormat::TableCellBottomBorderBrush - QTextFormat::TableCellTopBorderBrush == int{Bottom} &&
              QTextFormat::TableCellRightPadding - QTextFormat::TableCellTopPadding == int{Right_Side});
} // namespace

bool Has_Border(const QTextFormat &format, std::size_t side)
{
    return format.hasProperty(Of_Side(QTextFormat::TableCellTopBorderStyle, side));
}

Shown_Border Border_Of(const QTextFormat &format, std::size_t side)
{
    const int padding = Of_Side(QTextFormat::TableCellTopPadding, side);
    return {.style = static_cast<QTextFrameFormat::BorderStyle>(
                format.intProperty(Of_Side(QTextFormat::TableCellTopBorderStyle, side))),
            .width = format.doubleProperty(Of_Side(QTextFormat::TableCellTopBorder, side)),
            .space = format.hasProperty(padding) ? format.doubleProperty(padding) : -1,
            .brush = format.brushProperty(Of_Side(QTextFormat::TableCellTopBorderBrush, side))};
}

Shown_Borders Borders_Of(const QTextFormat &format)
{
    Shown_Borders borders;
    for (std::size_t side = 0; side < borders.size(); ++side)
        borders[side] = Border_Of(format, side);
    return borders;
}

void Set_Border(QTextFormat &format, std::size_t side, const Shown_Border &border)
{
    format.setProperty(Of_Side(QTextFormat::TableCellTopBorderStyle, side), static_cast<int>(border.style));
    format.setProperty(Of_Side(QTextFormat::TableCellTopBorder, side), border.width);
    if (border.brush.style() != Qt::NoBrush)
        format.setProperty(Of_Side(QTextFormat::TableCellTopBorderBrush, side), border.brush);
    Set_Padding(format, side, border.space);
}

void Set_Padding(QTextFormat &format, std::size_t side, double padding)
{
    if (padding >= 0)
        format.setProperty(Of_Side(QTextFormat::TableCellTopPadding, side), padding);
}

bool Has_Lines(const Shown_Borders &borders)
{
    return std::any_of(borders.begin(), borders.end(), [](const Shown_Border &border) { return border.Is_Line(); });
}

int Lines_Of(Line line)
{
    return line == Line::Double ? 3 : 1;
}

Shown_Border Shown(const Model &model, const Border &border)
{
    if (border.line == Line::None)
        return {.style = QTextFrameFormat::BorderStyle_None, .width = 0, .space = -1, .brush = Qt::NoBrush};
    return {.style = static_cast<QTextFrameFormat::BorderStyle>(border.line),
            .width = (border.width ? border.width : thinLine) * Lines_Of(border.line) / Twips_Per_Pixel,
            .space = border.space / Twips_Per_Pixel,
            .brush = border.color > 0 ? Brush(model, border.color) : QBrush(Qt::NoBrush)};
}

bool Is_Rule(const Borders &borders)
{
    const auto isNone = [&](Side side) {
        return borders[side].line == Line::None;
    };
    const Border &line = borders[Bottom];
    return line.line == Line::Solid && line.width <= ruleWidth && isNone(Top) && isNone(Left_Side) &&
           isNone(Right_Side);
}

void Make_Rule(const Model &model, const Borders &borders, QTextBlockFormat &format)
{
    for (const auto first : {QTextFormat::TableCellTopBorderStyle, QTextFormat::TableCellTopBorder,
                             QTextFormat::TableCellTopBorderBrush, QTextFormat::TableCellTopPadding})
        format.clearProperty(Of_Side(first, Bottom));
    format.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth, QTextLength(QTextLength::PercentageLength, 100));
    if (borders[Bottom].color > 0) // QTextDocument draws a rule in its block's background
        format.setBackground(Brush(model, borders[Bottom].color));
}
} // namespace Rtf

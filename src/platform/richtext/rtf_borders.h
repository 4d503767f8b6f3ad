// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

#include <QBrush>
#include <QTextFrameFormat>

class QTextBlockFormat;

/// Borders in the formats of QTextDocument. A paragraph's are kept in its block format under the properties that a
/// table's cell has for its own, so both are read, drawn and written in one way.
namespace Rtf
{
/// One side's line, in pixels. Without a brush it has the colour of the text.
struct Shown_Border {
    QTextFrameFormat::BorderStyle style = QTextFrameFormat::BorderStyle_None;
    double width = 0;
    double space = 0; ///< between text and line: a paragraph's border or a cell's padding, negative where not said
    QBrush brush = Qt::NoBrush;

    [[nodiscard]] bool Is_Line() const { return style != QTextFrameFormat::BorderStyle_None && width > 0; }
    bool operator==(const Shown_Border &) const = default;
};
using Shown_Borders = std::array<Shown_Border, 4>; ///< by Side

/// Whether the format says anything of the side's line, be it that there is none.
bool Has_Border(const QTextFormat &format, std::size_t side);
Shown_Border Border_Of(const QTextFormat &format, std::size_t side);
Shown_Borders Borders_Of(const QTextFormat &format);
void Set_Border(QTextFormat &format, std::size_t side, const Shown_Border &border);
/// @param padding in pixels; nothing is set where it is negative
void Set_Padding(QTextFormat &format, std::size_t side, double padding);
bool Has_Lines(const Shown_Borders &borders);

/// How many times a line is as wide as RTF says of it, which tells the width of a double line's strokes.
int Lines_Of(Line line);
Shown_Border Shown(const Model &model, const Border &border);
/// What a paragraph without text is that has a thin line below it and nothing else: a horizontal rule.
bool Is_Rule(const Borders &borders);
void Make_Rule(const Model &model, const Borders &borders, QTextBlockFormat &format);
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_tables.h"

#include <QBrush>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextListFormat>
#include <QTextTableFormat>

#include <vector>

/// A model's styles in the formats of QTextDocument.
namespace Rtf
{
/// The brush of a colour's index, or none for an automatic colour.
QBrush Brush(const Model &model, int color);
std::vector<QTextCharFormat> Char_Formats(const Model &model);
std::vector<QTextBlockFormat> Block_Formats(const Model &model);
/// Whether the paragraph's list shows something before it; the outline of headings often does not.
bool Is_List_Item(const Model &model, const Para_Style &style);
/// Whether labels of the paragraph's list count items of other levels too.
bool Is_Family(const Model &model, const Para_Style &style);
/// @param family what such lists have in common, else 0
QTextListFormat List_Format(const Model &model, const Para_Style &style, int family);
QTextListFormat List_Format(const Old_List &list);
/// @param common the border of all cells, or nullptr where they differ
QTextTableFormat Table_Format(const Model &model, const Table &table, const Grid &grid, const Border *common);
/// What sets one cell apart from the others of its table. @param hasBorders whether its borders do
QTextTableCellFormat Cell_Format(const Model &model, const Cell_Definition &cell, bool hasBorders);

/// How a kind of underlining is written, and shown.
struct Underline_Row {
    const char *word;
    QTextCharFormat::UnderlineStyle style;
};
/// By Underline.
inline constexpr Underline_Row Underline_Rows[] = {
    {"", QTextCharFormat::NoUnderline},
    {"\\ul", QTextCharFormat::SingleUnderline},
    {"\\uldash", QTextCharFormat::DashUnderline},
    {"\\uld", QTextCharFormat::DotLine},
    {"\\uldashd", QTextCharFormat::DashDotLine},
    {"\\uldashdd", QTextCharFormat::DashDotDotLine},
    {"\\ulwave", QTextCharFormat::WaveUnderline},
    {"\\uldb", QTextCharFormat::SingleUnderline},
    {"\\ulw", QTextCharFormat::SingleUnderline},
    {"\\ulth", QTextCharFormat::SingleUnderline},
    {"\\ulldash", QTextCharFormat::DashUnderline},
    {"\\ulthdash", QTextCharFormat::DashUnderline},
    {"\\ulthldash", QTextCharFormat::DashUnderline},
    {"\\ulthd", QTextCharFormat::DotLine},
    {"\\ulthdashd", QTextCharFormat::DashDotLine},
    {"\\ulthdashdd", QTextCharFormat::DashDotDotLine},
    {"\\ulhwave", QTextCharFormat::WaveUnderline},
    {"\\ululdbwave", QTextCharFormat::WaveUnderline},
};

inline constexpr int Twips_Per_List_Indent = 720; ///< how far one level of a list goes in
inline constexpr int Usual_First = -360;          ///< where the label of an item begins, from its text
/// How far the text of an item's first line must go in, so that the label stands where that line begins.
/// @param first where it begins, from the others
int Label_Room(int first);
/// Where the first line of an item begins, from the others.
int First_Of(const QTextListFormat &list, const QTextBlockFormat &item = {});
} // namespace Rtf

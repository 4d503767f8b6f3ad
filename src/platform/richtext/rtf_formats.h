// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_tables.h"

#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextListFormat>
#include <QTextTableFormat>

#include <vector>

/// A model's styles in the formats of QTextDocument.
namespace Rtf
{
std::vector<QTextCharFormat> Char_Formats(const Model &model);
std::vector<QTextBlockFormat> Block_Formats(const Model &model);
/// Whether the paragraph's list shows something before it; the outline of headings often does not.
bool Is_List_Item(const Model &model, const Para_Style &style);
QTextListFormat List_Format(const Model &model, const Para_Style &style);
QTextListFormat List_Format(const Old_List &list);
QTextTableFormat Table_Format(const Model &model, const Table &table, const Grid &grid);
/// What sets one cell apart from the others of its table.
QTextTableCellFormat Cell_Format(const Model &model, const Cell_Definition &cell);

inline constexpr int Twips_Per_List_Indent = 720; ///< how far one level of a list goes in
} // namespace Rtf

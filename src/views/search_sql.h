// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Parts of the condition of a search: %1 is a folder id or a column, %2 the key.
namespace Sql
{
constexpr const char16_t *Search_First_Folder = u" WHERE ( Cate_ID = '%1'   ";
constexpr const char16_t *Search_Next_Folder = u" or Cate_ID = '%1'   ";
constexpr const char16_t *Search_Everywhere = u" WHERE Cate_ID like '%'   ";
constexpr const char16_t *Search_First_Field = u" and ( instr(1,lcase(%1),lcase('%2'),0)<>0 ";
constexpr const char16_t *Search_Next_Field = u" or ( instr(1,lcase(%1),lcase('%2'),0)<>0 )";
constexpr const char16_t *Search_Only_Field = u" and ( instr(1,lcase(%1),lcase('%2'),0)<>0 ) ";
constexpr const char16_t *Search_Group_End = u")";
constexpr const char16_t *Search_Order = u" order by Code_ID ";
/// %1 the columns that were searched, %2 a document.
constexpr const char16_t *Searched_Fields = u"select %1 from Code_Info where Code_ID='%2'";
} // namespace Sql

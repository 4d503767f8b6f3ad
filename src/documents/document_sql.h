// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
inline constexpr const char16_t *Whole_Document = u"Select * From Code_Info Where Code_ID='%1'";
inline constexpr const char16_t *Adopt_Attachments = u"update tab_file set code_id='%1' where code_id=''";
inline constexpr const char16_t *Find_Document = u" select code_id from code_info where code_id ='%1'";
inline constexpr const char16_t *Read_Document =
    u"Select cate_ID,Code_Title,Code_ID,Code_Keys,Code_Content,Code_Content_IO,Code_Color,Code_Done,Code_Explain,"
    u"Code_Update,Code_Date,Code_Promulgator,Code_Provenance,Code_Author,Code_Memo,Code_Memo_IO,Code_Sum,Code_Sum_IO,"
    u"Code_Type,Code_File,Code_Readnum From Code_Info Where Code_ID='%1'";
inline constexpr const char16_t *Count_Reading =
    u" update code_info set code_readnum = %1 ,code_readdate = '%2' , Code_ReadDate_Sta = '' where Code_ID='%3'";
} // namespace Sql

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Whole_Document = u"Select * From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Adopt_Attachments = u"update tab_file set code_id='%1' where code_id=''";
constexpr const char16_t *Find_Document = u" select code_id from code_info where code_id ='%1'";
constexpr const char16_t *Last_Change = u"Select Code_Updater,Code_Update From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Read_Document =
    u"Select cate_ID,Code_Title,Code_ID,Code_Keys,Code_Content,Code_Content_IO,Code_Color,Code_Done,Code_Explain,"
    u"Code_Update,Code_Date,Code_Promulgator,Code_Provenance,Code_Author,Code_Memo,Code_Memo_IO,Code_Sum,Code_Sum_IO,"
    u"Code_Type,Code_File,Code_Readnum From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Count_Reading =
    u" update code_info set code_readnum = %1 ,code_readdate = '%2' , Code_ReadDate_Sta = '' where Code_ID='%3'";
constexpr const char16_t *Move_To_Bin = u"update code_info set cate_id = '000' where Code_ID='%1'";
constexpr const char16_t *Type_And_Content = u"Select Code_Type,code_content  From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Delete_Document = u"Delete Code_Info From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Delete_Attachments = u"delete tab_file from tab_file where  Code_ID='%1'";
constexpr const char16_t *Delete_Tags = u"delete tab_tag from tab_tag where  Code_ID='%1'";
constexpr const char16_t *Title_And_Folder = u"Select Code_Title,Cate_ID From Code_Info Where Code_ID='%1'";
constexpr const char16_t *Find_Folder = u"Select Cate_ID From Cate_Info Where Cate_ID='%1'";
} // namespace Sql

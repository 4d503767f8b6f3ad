// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Statements of the document list. In the row statements %1 is the number of rows to read, %2 the folder id or the
/// date filter, %3 the filter (or the order where there is none), %4 the order; the column list is the same in all.
namespace Sql
{
#define ZELQOR_LIST_COLUMNS                                                                                            \
    u"  Code_Info.Code_ID,Code_Info.Code_Title,Code_Info.Cate_ID,Code_Keys,Code_Color,Code_Done,Code_Explain,"         \
    u"Code_Author,Code_Create,Code_Update,Code_Provenance,Code_Promulgator,Code_Date,Code_File,Code_Type,"             \
    u"Code_ReadDate,Code_Readnum,Code_UpdateNum,Code_Creater,Code_Updater,Code_LineColor,Code_ReadDateNext "

constexpr const char16_t *Count_Of_Date = u"Select count(*)  From Code_Info where code_date = #%1# ";
constexpr const char16_t *Count_Of_Date_Server = u"Select count(*)  From Code_Info where code_date = '%1' ";
constexpr const char16_t *Count_Of_Date_Prefix = u"Select count(*)  From Code_Info where code_date like '%1%' ";
constexpr const char16_t *Count_Of_Subtree = u"Select count(*)  From Code_Info where Cate_ID like '%1%' ";
constexpr const char16_t *Count_Of_Folder = u"Select count(*)  From Code_Info where Cate_ID = '%1' ";

constexpr const char16_t *Filter_Date = u" and code_date = #%1# ";
constexpr const char16_t *Filter_Date_Server = u" and code_date = '%1' ";
constexpr const char16_t *Filter_Date_Prefix = u" and code_date like '%1%' ";
constexpr const char16_t *Filter_No_Password = u" and Cate_Info.Cate_pass = ''";

constexpr const char16_t *Rows_Of_Date =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info,Cate_Info   where  Code_Info.Cate_id = Cate_Info.Cate_id   "
    u"and Cate_Info.Cate_pass = ''%2  order by %3";
constexpr const char16_t *Rows_Of_Date_Prefix =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info,Cate_Info   where  Code_Info.Cate_id = Cate_Info.Cate_id   "
    u"and Cate_Info.Cate_pass = ''%2   order by %3";
constexpr const char16_t *Rows_Of_All =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info,Cate_Info   where Code_Info.Cate_id not like '000%'  and "
    u"Code_Info.Cate_id = Cate_Info.Cate_id  and Cate_Info.Cate_pass = '' order by %2";
constexpr const char16_t *Rows_Of_Root =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info ,Cate_Info where Code_Info.Cate_id not like '000%'  and "
    u"Code_Info.Cate_id = Cate_Info.Cate_id  and Cate_Info.Cate_pass = '' order by %2";

// clang-format off
constexpr const char16_t *Rows_Of_Subtree =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info ,Cate_Info  Where Code_Info.Cate_ID like '%2%'  and "
    u"Code_Info.Cate_id = Cate_Info.Cate_id  %3 order by %4 union select " ZELQOR_LIST_COLUMNS
    u"  from code_info ,tab_VirCate where code_info.code_id = tab_VirCate.code_id and tab_VirCate.cate_id like "
    u"'%2%'  order by %4";
// clang-format on
/// The server's statement has no "%" in its pattern.
constexpr const char16_t *Rows_Of_Subtree_Server =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info inner join Cate_Info on   Code_Info.Cate_id = "
    u"Cate_Info.Cate_id  left join tab_VirCate on "
    u"code_info.code_id = tab_VirCate.code_id  Where Code_Info.Cate_ID like '%2'  %3 order by %4";
// clang-format off
constexpr const char16_t *Rows_Of_Folder =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info ,Cate_Info  Where Code_Info.Cate_ID = '%2'  and "
    u"Code_Info.Cate_id = Cate_Info.Cate_id  %3 order by %4 union select " ZELQOR_LIST_COLUMNS
    u"  from code_info inner join tab_VirCate on code_info.code_id = tab_VirCate.code_id where code_info.cate_id = "
    u"'%2'  order by %4";
// clang-format on
constexpr const char16_t *Rows_Of_Folder_Server =
    u"Select top %1" ZELQOR_LIST_COLUMNS u" From Code_Info inner join Cate_Info on   Code_Info.Cate_id = "
    u"Cate_Info.Cate_id  left join tab_VirCate on "
    u"code_info.code_id = tab_VirCate.code_id  Where Code_Info.Cate_ID = '%2'  %3 order by %4";

constexpr const char16_t *Rows_By_Condition = u"Select  " ZELQOR_LIST_COLUMNS u" ,Code_Content  From Code_Info %1";
constexpr const char16_t *Some_Rows =
    u"Select  " ZELQOR_LIST_COLUMNS u" From Code_Info where Code_Info.Code_ID in (%1)";
constexpr const char16_t *One_Row = u"Select  " ZELQOR_LIST_COLUMNS u" From Code_Info where Code_Info.Code_ID='%1'";

/// The name of a row's folder, "select cate_name from Cate_Info where cate_id='id'", and its attachments, "SELECT
/// count(*)  From tab_file WHERE (file_type = 0 or file_type = 1) and code_id='id'", asked for all rows of a page at
/// once.
constexpr const char16_t *Folder_Names = u"select cate_id,cate_name from Cate_Info where cate_id in (%1)";
constexpr const char16_t *Attachment_Counts =
    u"SELECT code_id,count(*)  From tab_file WHERE (file_type = 0 or file_type = 1) and code_id in (%1) "
    u"group by code_id";
/// What is told of one document.
constexpr const char16_t *Document_Facts =
    u"Select Code_Title,Code_Type,Code_Create,Code_Creater,Code_Update,Code_Updater,Code_UpdateNum,Code_ReadNum,"
    u"Code_ReadDate,Code_ReadDateNext,Code_File,Code_ID,len(Code_Content) From Code_Info where Code_ID='%1'";
constexpr const char16_t *Stored_Style = u"Select Code_LineColor From Code_Info where Code_ID='%1'";
constexpr const char16_t *New_Style = u"update Code_Info set Code_LineColor='%1' where Code_ID='%2'";
constexpr const char16_t *Folder_Password = u"Select Cate_id,Cate_pass  From Cate_Info Where Cate_id='%1'";

#undef ZELQOR_LIST_COLUMNS

struct Order_Row {
    const char16_t *code;
    const char16_t *text;
};
/// The order for each value of Cob_OrderBy; any other value has none.
inline constexpr Order_Row Orders[] = {
    {u"1", u" Code_Create ASC"}, {u"2", u" Code_Create DESC"}, {u"3", u" Code_Title ASC"}, {u"4", u" Code_Title DESC"},
    {u"5", u" Code_Keys ASC"},   {u"6", u" Code_Keys DESC"},   {u"7", u" Code_Date DESC"}, {u"8", u" Code_Update DESC"},
};
} // namespace Sql

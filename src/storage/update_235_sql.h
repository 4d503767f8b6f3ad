// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Statements of the one-time upgrade, frozen as those of the ladder's rungs.
namespace Update_235_Sql
{
constexpr const char16_t *Document_Count = u"SELECT Count(*) AS qty FROM Code_Info ";
constexpr const char16_t *Add_Compressed_Content =
    u"ALTER TABLE code_info ADD COLUMN Code_Content_IO OLEOBJECT, TinyClass_ID long ";
constexpr const char16_t *Contents = u"Select Code_ID,Code_Content,Code_Content_IO  From Code_Info order by Code_ID";
constexpr const char16_t *Add_Classes_Of_Files =
    u"ALTER TABLE tab_file ADD COLUMN Class_ID Long,SmallClass_ID Long, TinyClass_ID long  ";
constexpr const char16_t *Files = u"select file_id,code_id,Class_ID,SmallClass_ID from tab_file order by file_id";
constexpr const char16_t *Classes_Of_Document = u"select Class_ID,SmallClass_ID  From Code_Info where Code_ID='%1'";

/// Tables and columns that the following rungs read. Where a file has one already, it stays as it is.
constexpr const char16_t *Later_Needs[] = {
    u"CREATE TABLE Mess_Conf ([Mess_ID] Text(5), [Mess_Name1] Text(50), [Mess_Name2] Text(50))",
    u"CREATE TABLE User_List ([User_Name] Text(50) PRIMARY KEY, [User_Title] Text(20), [User_Name1] Text(50), "
    u"[User_Name2] Text(50), [User_Addr] Text(50), [User_Tel] Text(50), [User_Fax] Text(50), [User_Email] Text(50), "
    u"[User_Memo1] Text(50), [User_Memo2] Text(50), [User_Memo3] Text(50), [User_Memo4] Text(50), "
    u"[User_Memo5] Text(50), [User_Memo6] Text(50), [User_Memo7] Text(50), [User_Memo8] Text(50), "
    u"[User_Memo9] Text(50), [User_Memo10] Text(50))",
    u"ALTER TABLE [Class_Info] ADD COLUMN Icon_Name Text(20)",
    u"ALTER TABLE [SmallClass_Info] ADD COLUMN Code_Num Long DEFAULT 0",
    u"ALTER TABLE [SmallClass_Info] ADD COLUMN Icon_Name Text(20)",
    u"CREATE TABLE TinyClass_Info ([TinyClass_ID] AutoIncrement, [SmallClass_ID] Long, [TinyClass_Name] Text(50), "
    u"[Code_Num] Long DEFAULT 0, [Icon_Name] Text(20), [Memo] Text(100), "
    u"PRIMARY KEY ([SmallClass_ID],[TinyClass_Name]))",
};
} // namespace Update_235_Sql

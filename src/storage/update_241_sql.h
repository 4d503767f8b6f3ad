// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Statements of the move to the folder tree, frozen as those of the other rungs.
namespace Update_241_Sql
{
constexpr const char16_t *Create_Folders =
    u"CREATE TABLE Cate_Info ([Cate_ID] Text(250) PRIMARY KEY, [Cate_Name] Text(50), [Cate_Memo] Text(200), "
    u"[AutoColor_ID] Text(3), [Code_Num] Long DEFAULT 0, [Order_Id] Long DEFAULT 0, [Icon_Name] Text(20))";
constexpr const char16_t *Classes = u"select * from Class_Info order by class_id ";
constexpr const char16_t *Small_Classes = u"select * from SmallClass_Info where  Class_id =%1";
constexpr const char16_t *Tiny_Classes = u"select * from TinyClass_Info where  SmallClass_id =%1";
constexpr const char16_t *Insert_Class = u"insert into cate_info(cate_id,cate_name,Icon_Name) values ('%1','%2','%3') ";
constexpr const char16_t *Insert_Inner_Class =
    u"insert into cate_info(cate_id,cate_name,Code_Num,Icon_Name) values ('%1','%2',%3,'%4') ";
constexpr const char16_t *Folder_Of_Documents = u"select top 1 Cate_ID from Code_Info";
constexpr const char16_t *Add_Folder_Of_Documents =
    u"ALTER TABLE Code_Info Add COLUMN Cate_ID TEXT(250), [Code_Create] DateTime DEFAULT Now() NOT NULL  ";
constexpr const char16_t *Documents =
    u"Select Code_ID,Class_ID,SmallClass_ID,TinyClass_ID,Cate_ID,Code_Create,Code_Update  From Code_Info order by "
    u"Code_ID";
constexpr const char16_t *Add_Note_Of_Home = u"ALTER TABLE test Add COLUMN temp_memo TEXT(200)  ";
} // namespace Update_241_Sql

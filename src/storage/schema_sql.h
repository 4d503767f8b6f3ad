// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The creation statements, one for each table, in the order in which a new file gets them.
namespace Schema
{
constexpr const char16_t *Cate_Info =
    u"CREATE TABLE Cate_Info ([Cate_ID] Text(250) PRIMARY KEY, [Cate_Name] Text(50), [Cate_Memo] Text(200), "
    u"[Cate_pass] Text(255), [AutoColor_ID] Text(3), [Code_Num] Long DEFAULT 0, [Order_Id] Long DEFAULT 0, "
    u"[Cate_Exp] TEXT(1), [Icon_Name] Text(20))";

constexpr const char16_t *Code_Info =
    u"CREATE TABLE Code_Info ([Code_ID] Text(38) PRIMARY KEY, [Cate_ID] Text(250), "
    u"[Class_ID] Long DEFAULT 1 NOT NULL, [SmallClass_ID] Long, [TinyClass_ID] Long, [Code_Title] Text(255) NOT NULL, "
    u"[Code_Explain] Text(200), [Code_Content] memo, [Code_Content_IO] OLEObject NULL, [Code_Memo] memo, "
    u"[Code_Memo_IO] OLEObject NULL, [Code_Sum] memo, [Code_Sum_IO] OLEObject NULL, [Code_Date] DateTime, "
    u"[Code_Update] DateTime DEFAULT Now() NOT NULL, [Code_Create] DateTime DEFAULT Now() NOT NULL, "
    u"[Code_ReadDate] DateTime DEFAULT Now() NOT NULL, [Code_ReadNum] Long DEFAULT 0, "
    u"[Code_UpdateNum] Long DEFAULT 0, [Code_ReadDate_Sta ] Text(1) ,[Code_ReadDateNext ] DateTime   , "
    u"[Code_ReadDate_gene_Id] Long DEFAULT 0, [Code_Creater] Text(50), [Code_Updater] Text(50), "
    u"[Code_Promulgator] Text(255), [Code_Provenance] Text(255), [Code_Author] Text(255), [Code_Color] Text(10), "
    u"[Code_Done] Text(10), [Code_Type] Text(10), [Code_File] Text(255), [Code_LineColor] Text(30), "
    u"[Code_Keys] Text(255), [Code_Tags] Text(255))";

constexpr const char16_t *Class_Info =
    u"CREATE TABLE Class_Info ([Class_ID] AutoIncrement, [Class_Name] Text(50) PRIMARY KEY, [Memo] Text(100), "
    u"[AutoColor_ID] Text(3), [Icon_Name] Text(20))";

constexpr const char16_t *SmallClass_Info =
    u"CREATE TABLE SmallClass_Info ([SmallClass_ID] AutoIncrement, [Class_ID] Long DEFAULT 1, "
    u"[SmallClass_Name] Text(50), [Memo] Text(100), [Code_Num] Long DEFAULT 0, [Icon_Name] Text(20), "
    u"PRIMARY KEY ([Class_ID],[SmallClass_Name]))";

constexpr const char16_t *TinyClass_Info =
    u"CREATE TABLE TinyClass_Info ([TinyClass_ID] AutoIncrement, [SmallClass_ID] Long, [TinyClass_Name] Text(50), "
    u"[Code_Num] Long DEFAULT 0, [Icon_Name] Text(20), [Memo] Text(100), "
    u"PRIMARY KEY ([SmallClass_ID],[TinyClass_Name]))";

constexpr const char16_t *Test =
    u"CREATE TABLE test ([temp_name] Text(50), [temp_txt] Text(50), [temp_show] Text(50), [temp_memo] TEXT(200), "
    u"[temp_ver] Text(50), [temp_add] Text(50))";

constexpr const char16_t *Tab_File =
    u"CREATE TABLE tab_file ([file_id] AutoIncrement PRIMARY KEY, [code_id] Text(38), [Class_ID] Long, "
    u"[SmallClass_ID] Long, [TinyClass_ID] Long, [order_id] Long, [file_name] Text(255), [file_cont] OLEOBJECT, "
    u"[file_infor] TEXT(255), [file_txt] memo, [file_size] Text(50), [file_date] DateTime, [file_path] Text(255), "
    u"[file_type] Long, [file_var1] Text(50), [file_var2] Text(50), [file_var3] Text(50))";

constexpr const char16_t *Tab_Tag =
    u"CREATE TABLE tab_tag ([tag_id] AutoIncrement PRIMARY KEY, [code_id] Text(38), [order_id] Long, "
    u"[tag_name] Text(255), [code_title] TEXT(255), [tag_date] DateTime, [tag_lineno] Long, [tag_var1] Text(255), "
    u"[tag_var2] Text(50), [tag_var3] Text(50))";

constexpr const char16_t *Tab_VirCate =
    u"CREATE TABLE tab_VirCate ([VirCate_id] AutoIncrement PRIMARY KEY, [Cate_ID] Text(250), [Code_id] Text(38))";

constexpr const char16_t *Mess_Conf =
    u"CREATE TABLE Mess_Conf ([Mess_ID] Text(50), [Mess_Name1] Text(255), [Mess_Name2] Text(255))";

constexpr const char16_t *User_Pass =
    u"CREATE TABLE User_pass ([User_Name] Text(50) PRIMARY KEY, [User_Pass] Text(255), [User_Lock] Text(1), "
    u"[User_Start] DateTime, [User_End] DateTime)";

constexpr const char16_t *User_List =
    u"CREATE TABLE User_List ([User_Name] Text(50) PRIMARY KEY, [User_Title] Text(20), [User_Name1] Text(50), "
    u"[User_Name2] Text(50), [User_Addr] Text(50), [User_Tel] Text(50), [User_Fax] Text(50), [User_Email] Text(50), "
    u"[User_Memo1] Text(50), [User_Memo2] Text(50), [User_Memo3] Text(50), [User_Memo4] Text(50), "
    u"[User_Memo5] Text(50), [User_Memo6] Text(50), [User_Memo7] Text(50), [User_Memo8] Text(50), "
    u"[User_Memo9] Text(50), [User_Memo10] Text(50))";

constexpr const char16_t *Tab_Log =
    u"CREATE TABLE tab_log ([log_id] AutoIncrement PRIMARY KEY, [type_id] Text(1), [log_text] TEXT(255), "
    u"[log_user] Text(50), [log_date] DateTime, [log_mac] Text(50), [log_comp] Text(255), [log_var1] Text(50), "
    u"[log_var2] Text(50))";

constexpr const char16_t *Tab_Tags =
    u"CREATE TABLE tab_tags ([tags_Index] AutoIncrement PRIMARY KEY, [tags_Id] Long DEFAULT 0, [tags_Name] Text(50), "
    u"[tags_Count] Long DEFAULT 0)";

constexpr const char16_t *Tab_Gene =
    u"CREATE TABLE tab_Gene ([Gene_Index] AutoIncrement PRIMARY KEY, [Gene_Id] Long, [Gene_Name] Text(50), "
    u"[Gene_Per] Text(2), [Gene_Default] Text(1), [Gene_Num] single)";

constexpr const char16_t *All_Tables[] = {
    Cate_Info,   Code_Info, Class_Info, SmallClass_Info, TinyClass_Info, Test,     Tab_File, Tab_Tag,
    Tab_VirCate, Mess_Conf, User_Pass,  User_List,       Tab_Log,        Tab_Tags, Tab_Gene,
};

/// The legacy row of the home node, made where the table `test` is missing or empty.
constexpr const char16_t *Home_Node = u"insert into test (temp_name,temp_txt) values ('Zelqor','Home.ico') ";
} // namespace Schema

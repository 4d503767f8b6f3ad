// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The statements of the ladder. They are frozen: each is of the time of its rung, and stays as it is whatever
/// becomes of the schema. Do not use the creation statements of today's schema here.
namespace Ladder_Sql
{
using Statement = const char16_t *;

inline constexpr Statement Version_Row = u" select * from mess_conf where Mess_ID ='DB_VER'";
inline constexpr Statement Insert_Version = u" insert into mess_conf(mess_id,mess_name1) values('DB_VER','%1')";
inline constexpr Statement Update_Version = u" update Mess_Conf set Mess_Name1='%1' where Mess_ID ='DB_VER'";

/// Tables of which one holds a row in every database that was ever started.
inline constexpr Statement Rows_Of_Old_Databases[] = {
    u"select top 1 Code_ID from Code_Info",   u"select top 1 file_id from tab_file",
    u"select top 1 Cate_ID from Cate_Info",   u"select top 1 Class_ID from Class_Info",
    u"select top 1 temp_name from test",      u"select top 1 Mess_ID from Mess_Conf",
    u"select top 1 User_Name from User_pass",
};

inline constexpr Statement Tiny_Class_Of_Files = u"SELECT top 1 TinyClass_ID FROM tab_file ";

inline constexpr Statement File_Name = u"SELECT top 1 file_name FROM tab_file where file_id <> 0 ";
inline constexpr Statement Widen_File_Name[] = {u"ALTER TABLE tab_file ALTER COLUMN file_name TEXT(255) "};

inline constexpr Statement Documents = u"SELECT top 1 * FROM Code_Info ";
inline constexpr Statement Add_Code_Color[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_Color TEXT(10) ",
    u"update code_info set code_color ='0'",
};

inline constexpr Statement Document_Count = u"SELECT count(*)  FROM code_info  ";
inline constexpr Statement Folder_Count = u"SELECT count(*)  FROM cate_info  ";

inline constexpr Statement Titles =
    u"SELECT top 1 Code_Title,Code_Promulgator,Code_Provenance,Code_Author,Code_Keys FROM Code_Info ";
inline constexpr Statement Widen_Titles[] = {
    u"ALTER TABLE Code_Info ALTER COLUMN Code_Title TEXT(255)  ",
    u"ALTER TABLE Code_Info ALTER COLUMN Code_Promulgator TEXT(255)  ",
    u"ALTER TABLE Code_Info ALTER COLUMN Code_Provenance TEXT(255)  ",
    u"ALTER TABLE Code_Info ALTER COLUMN Code_Author TEXT(255)  ",
    u"ALTER TABLE Code_Info ALTER COLUMN Code_Keys TEXT(255)  ",
};

inline constexpr Statement Folder_Order = u"SELECT top 1 * FROM Cate_Info where order_id <> 0";
inline constexpr Statement Add_Folder_Order[] = {
    u"ALTER TABLE Cate_Info Add COLUMN [order_id] Long  ",
    u"update Cate_Info set order_id=right(cate_id,3) where cate_id <> \"\"",
};

inline constexpr Statement Folder_Expansion = u"SELECT top 1 Cate_Exp  FROM Cate_Info ";
inline constexpr Statement Add_Folder_Expansion[] = {
    u"ALTER TABLE Cate_Info Add COLUMN [Cate_Exp] TEXT(1)  ",
    u"update Cate_Info set Cate_Exp = '1' where Cate_ID <> \"\" ",
    u"ALTER TABLE tab_file Add COLUMN [order_id] Long  ",
    u"update tab_file set order_id=file_id where file_id <> 0",
};

inline constexpr Statement Recycle_Bin = u"SELECT top 1 Cate_id  FROM Cate_Info where Cate_ID = '000'";
inline constexpr Statement Insert_Recycle_Bin =
    u" insert into Cate_Info(cate_id,Cate_Name,Cate_Memo,AutoColor_ID,Code_Num,Order_Id,Cate_Exp,Icon_Name,Cate_pass) "
    u"values('000','回收站','回收站','',0,999,'1','RECYCLEBIN.ico','')";
/// The same for a table that gets its passwords on a later rung.
inline constexpr Statement Insert_Recycle_Bin_Without_Password =
    u" insert into Cate_Info(cate_id,Cate_Name,Cate_Memo,AutoColor_ID,Code_Num,Order_Id,Cate_Exp,Icon_Name) "
    u"values('000','回收站','回收站','',0,999,'1','RECYCLEBIN.ico')";

inline constexpr Statement Code_Memo = u"SELECT top 1 Code_Memo FROM Code_Info  ";
inline constexpr Statement Add_Code_Memo[] = {
    u"ALTER TABLE code_info ADD COLUMN Code_Memo memo,Code_Memo_IO OLEOBJECT,Code_Sum memo, Code_Sum_IO OLEOBJECT ",
    u"ALTER TABLE test add column temp_ver text(50) ",
};

inline constexpr Statement Code_Done = u"SELECT top 1 Code_Done FROM Code_Info  ";
inline constexpr Statement Add_Code_Done[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_Done TEXT(10) ",
    u"update code_info set Code_Done ='★★★★★'",
};

inline constexpr Statement Code_Type = u"SELECT top 1 Code_Type FROM Code_Info ";
inline constexpr Statement Add_Code_Type[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_Type TEXT(10) ",
    u"update code_info set Code_Type ='RTF'",
};

inline constexpr Statement File_Path = u"SELECT top 1 file_path  FROM tab_file ";
inline constexpr Statement Widen_File_Path[] = {u"ALTER TABLE tab_file ALTER COLUMN file_path TEXT(255)  "};

inline constexpr Statement File_Infor = u"SELECT top 1 file_infor FROM tab_file ";
inline constexpr Statement Add_File_Infor[] = {
    u"ALTER TABLE tab_file Add COLUMN file_infor TEXT(255),file_txt memo ",
    u"update tab_file set file_infor ='' ",
};

inline constexpr Statement Bin_Password = u"SELECT top 1 Cate_pass FROM Cate_Info where Cate_ID = '000'";
inline constexpr Statement Bin_Password_Missing =
    u"SELECT top 1 Cate_pass FROM Cate_Info where Cate_ID = '000' and Cate_pass is null";
inline constexpr Statement Empty_Bin_Password[] = {u"update Cate_Info set Cate_pass = '' where Cate_ID = '000' "};
inline constexpr Statement Add_Folder_Password[] = {
    u"ALTER TABLE Cate_Info Add COLUMN Cate_pass TEXT(255)",
    u"update Cate_Info set Cate_pass ='' ",
};

inline constexpr Statement Bookmarks = u"SELECT top 1 tag_id FROM tab_tag ";
inline constexpr Statement Create_Bookmarks[] = {
    u"CREATE TABLE tab_tag ([tag_id] AutoIncrement PRIMARY KEY, [code_id] Text(30), [order_id] Long, "
    u"[tag_name] Text(255), [code_title] TEXT(255), [tag_date] DateTime, [tag_lineno] Long, [tag_var1] Text(255), "
    u"[tag_var2] Text(50), [tag_var3] Text(50))",
};

inline constexpr Statement Code_Date = u"SELECT top 1 Code_Date FROM Code_Info ";
inline constexpr Statement Add_Code_Date[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_Date  DateTime",
    u"update Code_Info set Code_Date=format(Code_Create,'YYYY-MM-DD') ",
};
inline constexpr Statement Fill_Code_Date =
    u"update Code_Info set Code_Date=format(Code_Create,'YYYY-MM-DD') where code_date is null";

inline constexpr Statement Code_File = u"SELECT top 1 Code_File FROM Code_Info ";
inline constexpr Statement Add_Code_File[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_File TEXT(255)",
    u"Update Code_Info set Code_File ='' ",
};

inline constexpr Statement More_Folders = u"SELECT top 1 VirCate_id FROM tab_VirCate ";
inline constexpr Statement Create_More_Folders[] = {
    u"CREATE TABLE tab_VirCate ([VirCate_id] AutoIncrement PRIMARY KEY, [Cate_ID] Text(250), [Code_id] Text(30))",
};

inline constexpr Statement Old_Facts = u"Select top 1 * from test ";

inline constexpr Statement Credentials = u"SELECT top 1 User_Name FROM User_pass ";
inline constexpr Statement Create_Credentials[] = {
    u"CREATE TABLE User_pass ([User_Name] Text(50) PRIMARY KEY, [User_Pass] Text(255), [User_Lock] Text(1), "
    u"[User_Start] DateTime, [User_End] DateTime)",
};
inline constexpr Statement Insert_Credentials =
    u" insert into user_pass(user_name,user_pass,user_lock,user_start,user_end) values ('%1','','','%2','2019-12-01')";

inline constexpr Statement Profiles = u"SELECT top 1 User_Name FROM User_List ";
inline constexpr Statement Create_Profiles[] = {
    u"CREATE TABLE User_List ([User_Name] Text(50) PRIMARY KEY, [User_Title] Text(20), [User_Name1] Text(50), "
    u"[User_Name2] Text(50), [User_Addr] Text(50), [User_Tel] Text(50), [User_Fax] Text(50), [User_Email] Text(50), "
    u"[User_Memo1] Text(50), [User_Memo2] Text(50), [User_Memo3] Text(50), [User_Memo4] Text(50), "
    u"[User_Memo5] Text(50), [User_Memo6] Text(50), [User_Memo7] Text(50), [User_Memo8] Text(50), "
    u"[User_Memo9] Text(50), [User_Memo10] Text(50))",
};
inline constexpr Statement Insert_Profile = u" insert into User_List(User_Name) values ('%1')";

inline constexpr Statement Facts = u"SELECT top 1 Mess_ID FROM Mess_Conf ";
inline constexpr Statement Widen_Facts[] = {
    u"ALTER TABLE Mess_Conf ALTER COLUMN Mess_ID TEXT(50)  ",
    u"ALTER TABLE Mess_Conf ALTER COLUMN Mess_Name1 TEXT(255)  ",
    u"ALTER TABLE Mess_Conf ALTER COLUMN Mess_Name2 TEXT(255)  ",
};
inline constexpr Statement Create_Facts[] = {
    u"CREATE TABLE Mess_Conf ([Mess_ID] Text(50), [Mess_Name1] Text(255), [Mess_Name2] Text(255))",
};
inline constexpr Statement Insert_Fact = u"insert into mess_conf(Mess_ID,Mess_Name1) values ('%1','%2')";

inline constexpr Statement Code_ReadDate = u"SELECT top 1 Code_ReadDate FROM Code_Info ";
inline constexpr Statement Add_Code_ReadDate[] = {
    u"ALTER TABLE Code_Info Add COLUMN Code_ReadDate  DateTime",
    u"ALTER TABLE Code_Info Add COLUMN Code_ReadNum  Long",
    u"update Code_Info set Code_ReadDate = Code_Create,Code_ReadNum = 1 ",
};
inline constexpr Statement Fill_Code_ReadDate =
    u"update Code_Info set Code_ReadDate=Code_Create  where Code_ReadDate is null";

inline constexpr Statement Code_Id = u"SELECT top 1 Code_id  FROM Code_Info ";
inline constexpr Statement Widen_Code_Id[] = {u"ALTER TABLE Code_Info ALTER COLUMN Code_id TEXT(38)  "};
inline constexpr Statement Code_Id_Of_Files = u"SELECT top 1 Code_id  FROM tab_file ";
inline constexpr Statement Widen_Code_Id_Of_Files[] = {u"ALTER TABLE tab_file ALTER COLUMN Code_id TEXT(38)  "};
inline constexpr Statement Code_Id_Of_Bookmarks = u"SELECT top 1 Code_id  FROM tab_tag ";
inline constexpr Statement Widen_Code_Id_Of_Bookmarks[] = {u"ALTER TABLE tab_tag ALTER COLUMN Code_id TEXT(38)  "};
inline constexpr Statement Code_Id_Of_More_Folders = u"SELECT top 1 Code_id  FROM tab_VirCate ";
inline constexpr Statement Widen_Code_Id_Of_More_Folders[] = {
    u"ALTER TABLE tab_VirCate ALTER COLUMN Code_id TEXT(38)  "};

inline constexpr Statement Code_UpdateNum = u"SELECT top 1 Code_UpdateNum FROM Code_Info ";
inline constexpr Statement Add_Code_UpdateNum[] = {
    u"ALTER TABLE Code_Info Add COLUMN  Code_UpdateNum  Long DEFAULT 0",
    u"ALTER TABLE Code_Info Add COLUMN  Code_Creater  Text(50)",
    u"ALTER TABLE Code_Info Add COLUMN  Code_Updater  Text(50)",
    u"ALTER TABLE Code_Info Add COLUMN  Code_LineColor  Text(30)",
    u"update Code_Info set Code_Creater = '',Code_Updater = '',Code_LineColor = '',Code_UpdateNum = 0 ",
};

inline constexpr Statement Log = u"SELECT top 1 log_user FROM tab_log ";
inline constexpr Statement Create_Log[] = {
    u"CREATE TABLE tab_log ([log_id] AutoIncrement PRIMARY KEY, [type_id] Text(1), [log_text] TEXT(255), "
    u"[log_user] Text(50), [log_date] DateTime, [log_mac] Text(50), [log_comp] Text(255), [log_var1] Text(50), "
    u"[log_var2] Text(50))",
};

inline constexpr Statement Old_Classes = u"SELECT top 1 Class_ID FROM Code_Info ";
inline constexpr Statement Drop_Old_Classes[] = {
    u"ALTER TABLE Code_Info DROP COLUMN Class_ID    ",
    u"ALTER TABLE Code_Info DROP COLUMN SmallClass_ID ",
};

inline constexpr Statement Tags = u"SELECT top 1 tags_Id FROM tab_tags ";
inline constexpr Statement Create_Tags[] = {
    u"CREATE TABLE tab_tags ([tags_Index] AutoIncrement PRIMARY KEY, [tags_Id] Long DEFAULT 0, [tags_Name] Text(50), "
    u"[tags_Count] Long DEFAULT 0)",
};

inline constexpr Statement Code_Tags = u"SELECT top 1 Code_Tags FROM Code_Info ";
inline constexpr Statement Add_Code_Tags[] = {
    u"ALTER TABLE Code_Info Add COLUMN  Code_Tags Text(255)",
    u"update Code_Info set Code_Tags = '' ",
};

inline constexpr Statement Curves = u"SELECT top 1 Gene_Id FROM tab_Gene ";
inline constexpr Statement Create_Curves[] = {
    u"CREATE TABLE tab_Gene ([Gene_Index] AutoIncrement PRIMARY KEY, [Gene_Id] Long, [Gene_Name] Text(50), "
    u"[Gene_Per] Text(2), [Gene_Default] Text(1), [Gene_Num] single)",
};

inline constexpr Statement Review_State = u"SELECT top 1 Code_ReadDate_Sta FROM Code_Info ";
inline constexpr Statement Add_Review_State[] = {
    u"ALTER TABLE Code_Info Add COLUMN  Code_ReadDate_Sta Text(1)",
    u"ALTER TABLE Code_Info Add COLUMN  Code_ReadDateNext DateTime",
    u"ALTER TABLE Code_Info Add COLUMN  Code_ReadDate_gene_Id Long ",
    u" update Code_Info set Code_ReadDate_Sta = '', Code_ReadDate_gene_Id = 0   ",
};
} // namespace Ladder_Sql

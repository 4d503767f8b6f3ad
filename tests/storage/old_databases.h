// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QStringList>

/// Databases as earlier releases left them, made with the statements of the time.
namespace Old_Databases
{
/// The state of a file: what the releases up to it had changed, one after the other.
struct Change {
    const char *name;
    QStringList statements;
};

/// A file from before the compressed contents, with two documents, an attachment and its classes.
inline const QStringList First_Release{
    QStringLiteral("CREATE TABLE Code_Info ([Code_ID] Text(30) PRIMARY KEY, [Class_ID] Long DEFAULT 1 NOT NULL, "
                   "[SmallClass_ID] Long, [Code_Title] Text(50) NOT NULL, [Code_Explain] Text(200), "
                   "[Code_Content] memo, [Code_Update] DateTime DEFAULT Now() NOT NULL, [Code_Promulgator] Text(50), "
                   "[Code_Provenance] Text(50), [Code_Author] Text(50), [Code_Keys] Text(50))"),
    QStringLiteral("CREATE TABLE Class_Info ([Class_ID] AutoIncrement, [Class_Name] Text(50) PRIMARY KEY, "
                   "[Memo] Text(100), [AutoColor_ID] Text(3))"),
    QStringLiteral("CREATE TABLE SmallClass_Info ([SmallClass_ID] AutoIncrement, [Class_ID] Long DEFAULT 1, "
                   "[SmallClass_Name] Text(50), [Memo] Text(100), PRIMARY KEY ([Class_ID],[SmallClass_Name]))"),
    QStringLiteral("CREATE TABLE test ([temp_name] Text(50), [temp_txt] Text(50), [temp_show] Text(50), "
                   "[temp_add] Text(50))"),
    QStringLiteral("CREATE TABLE tab_file ([file_id] AutoIncrement PRIMARY KEY, [code_id] Text(30), "
                   "[file_name] Text(50), [file_cont] OLEOBJECT, [file_size] Text(50), [file_date] DateTime, "
                   "[file_path] Text(100), [file_type] Long, [file_var1] Text(50), [file_var2] Text(50), "
                   "[file_var3] Text(50))"),
    QStringLiteral("insert into test(temp_name,temp_txt,temp_add) values ('Ann''s','Home.ico','2007-05-06')"),
    QStringLiteral("insert into Class_Info(Class_Name) values ('Work')"),
    QStringLiteral("insert into Class_Info(Class_Name) values ('It''s mine')"),
    QStringLiteral("insert into SmallClass_Info(Class_ID,SmallClass_Name) values (2,'100%1')"),
    QStringLiteral("insert into Code_Info(Code_ID,Class_ID,SmallClass_ID,Code_Title,Code_Content,Code_Update,Code_Keys)"
                   " values ('20070506-1',1,null,'One','{\\rtf1 plain é}','2007-05-07 08:09:10','k')"),
    QStringLiteral("insert into Code_Info(Code_ID,Class_ID,SmallClass_ID,Code_Title,Code_Content,Code_Update)"
                   " values ('20070506-2',2,1,'资料','{\\rtf1 two}','2008-01-02')"),
    QStringLiteral("insert into tab_file(code_id,file_name,file_path,file_type) "
                   "values ('20070506-2','a.txt','C:\\a.txt',1)"),
};

/// What each release changed, from the first one that compressed the contents.
inline const QList<Change> Changes{
    {"235",
     {QStringLiteral("ALTER TABLE code_info ADD COLUMN Code_Content_IO OLEOBJECT, TinyClass_ID long"),
      QStringLiteral("ALTER TABLE tab_file ADD COLUMN Class_ID Long,SmallClass_ID Long, TinyClass_ID long"),
      QStringLiteral("CREATE TABLE Mess_Conf ([Mess_ID] Text(5), [Mess_Name1] Text(50), [Mess_Name2] Text(50))"),
      QStringLiteral("ALTER TABLE Class_Info ADD COLUMN Icon_Name Text(20)"),
      QStringLiteral("ALTER TABLE SmallClass_Info ADD COLUMN Code_Num Long DEFAULT 0, Icon_Name Text(20)"),
      QStringLiteral("CREATE TABLE TinyClass_Info ([TinyClass_ID] AutoIncrement, [SmallClass_ID] Long, "
                     "[TinyClass_Name] Text(50), [Code_Num] Long DEFAULT 0, [Icon_Name] Text(20), [Memo] Text(100), "
                     "PRIMARY KEY ([SmallClass_ID],[TinyClass_Name]))"),
      QStringLiteral("update Class_Info set Icon_Name='work.ico' where Class_ID=1"),
      QStringLiteral("update SmallClass_Info set Code_Num=7"),
      QStringLiteral("insert into TinyClass_Info(SmallClass_ID,TinyClass_Name) values (1,'Tiny')"),
      QStringLiteral("insert into Code_Info(Code_ID,Class_ID,SmallClass_ID,TinyClass_ID,Code_Title,Code_Update) "
                     "values ('20090101-3',2,1,1,'Three','2009-01-01')"),
      QStringLiteral("insert into Mess_Conf values ('NOTE','a fact','')")}},
    {"236", {QStringLiteral("ALTER TABLE tab_file ALTER COLUMN file_name TEXT(255)")}},
    {"238",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_Color TEXT(10)"),
      QStringLiteral("update Code_Info set Code_Color='0'"),
      QStringLiteral("update Code_Info set Code_Color='255' where Code_ID='20070506-2'")}},
    {"241",
     {QStringLiteral("CREATE TABLE Cate_Info ([Cate_ID] Text(250) PRIMARY KEY, [Cate_Name] Text(50), "
                     "[Cate_Memo] Text(200), [AutoColor_ID] Text(3), [Code_Num] Long DEFAULT 0, [Icon_Name] Text(20))"),
      QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name,Icon_Name) values ('001','Work','work.ico')"),
      QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name) values ('002','It''s mine')"),
      QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name,Code_Num) values ('002001','100%1',7)"),
      QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name,Code_Num) values ('002001001','Tiny',0)"),
      QStringLiteral(
          "ALTER TABLE Code_Info Add COLUMN Cate_ID TEXT(250), [Code_Create] DateTime DEFAULT Now() NOT NULL"),
      QStringLiteral("update Code_Info set Code_Create=Code_Update"),
      QStringLiteral("update Code_Info set Cate_ID='001' where Class_ID=1"),
      QStringLiteral("update Code_Info set Cate_ID='002001' where Code_ID='20070506-2'"),
      QStringLiteral("update Code_Info set Cate_ID='002001001' where Code_ID='20090101-3'"),
      QStringLiteral("ALTER TABLE test Add COLUMN temp_memo TEXT(200)")}},
    {"titles",
     {QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_Title TEXT(255)"),
      QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_Promulgator TEXT(255)"),
      QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_Provenance TEXT(255)"),
      QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_Author TEXT(255)"),
      QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_Keys TEXT(255)")}},
    {"order",
     {QStringLiteral("ALTER TABLE Cate_Info Add COLUMN [order_id] Long"),
      QStringLiteral("update Cate_Info set order_id=right(cate_id,3)")}},
    {"expansion",
     {QStringLiteral("ALTER TABLE Cate_Info Add COLUMN [Cate_Exp] TEXT(1)"),
      QStringLiteral("update Cate_Info set Cate_Exp='1'"),
      QStringLiteral("ALTER TABLE tab_file Add COLUMN order_id Long"),
      QStringLiteral("update tab_file set order_id=file_id")}},
    {"bin",
     {QStringLiteral(
         "insert into Cate_Info(cate_id,Cate_Name,Cate_Memo,AutoColor_ID,Code_Num,Order_Id,Cate_Exp,Icon_Name)"
         " values('000','回收站','回收站','',0,999,'1','RECYCLEBIN.ico')")}},
    {"memo",
     {QStringLiteral("ALTER TABLE code_info ADD COLUMN Code_Memo memo,Code_Memo_IO OLEOBJECT,Code_Sum memo, "
                     "Code_Sum_IO OLEOBJECT"),
      QStringLiteral("ALTER TABLE test add column temp_ver text(50)"),
      QStringLiteral("update Code_Info set Code_Memo='noted' where Code_ID='20070506-1'")}},
    {"done",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_Done TEXT(10)"),
      QStringLiteral("update code_info set Code_Done ='★★★★★'")}},
    {"type",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_Type TEXT(10)"),
      QStringLiteral("update code_info set Code_Type ='RTF'")}},
    {"250", {QStringLiteral("ALTER TABLE tab_file ALTER COLUMN file_path TEXT(255)")}},
    {"251",
     {QStringLiteral("ALTER TABLE tab_file Add COLUMN file_infor TEXT(255),file_txt memo"),
      QStringLiteral("update tab_file set file_infor =''")}},
    {"passwords",
     {QStringLiteral("ALTER TABLE Cate_Info Add COLUMN Cate_pass TEXT(255)"),
      QStringLiteral("update Cate_Info set Cate_pass =''")}},
    {"tag",
     {QStringLiteral("CREATE TABLE tab_tag ([tag_id] AutoIncrement PRIMARY KEY, [code_id] Text(30), [order_id] Long, "
                     "[tag_name] Text(255), [code_title] TEXT(255), [tag_date] DateTime, [tag_lineno] Long, "
                     "[tag_var1] Text(255), [tag_var2] Text(50), [tag_var3] Text(50))")}},
    {"date",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_Date  DateTime"),
      QStringLiteral("update Code_Info set Code_Date=format(Code_Create,'YYYY-MM-DD')")}},
    {"file",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_File TEXT(255)"),
      QStringLiteral("Update Code_Info set Code_File =''")}},
    {"more folders",
     {QStringLiteral("CREATE TABLE tab_VirCate ([VirCate_id] AutoIncrement PRIMARY KEY, [Cate_ID] Text(250), "
                     "[Code_id] Text(30))")}},
    {"credentials",
     {QStringLiteral("CREATE TABLE User_pass ([User_Name] Text(50) PRIMARY KEY, [User_Pass] Text(255), "
                     "[User_Lock] Text(1), [User_Start] DateTime, [User_End] DateTime)"),
      QStringLiteral("insert into user_pass(user_name,user_pass,user_lock,user_start,user_end) "
                     "values ('Ann''s','','','2007-05-06','2019-12-01')")}},
    {"profiles",
     {QStringLiteral("CREATE TABLE User_List ([User_Name] Text(50) PRIMARY KEY, [User_Title] Text(20), "
                     "[User_Name1] Text(50), [User_Name2] Text(50), [User_Addr] Text(50), [User_Tel] Text(50), "
                     "[User_Fax] Text(50), [User_Email] Text(50), [User_Memo1] Text(50), [User_Memo2] Text(50), "
                     "[User_Memo3] Text(50), [User_Memo4] Text(50), [User_Memo5] Text(50), [User_Memo6] Text(50), "
                     "[User_Memo7] Text(50), [User_Memo8] Text(50), [User_Memo9] Text(50), [User_Memo10] Text(50))"),
      QStringLiteral("insert into User_List(User_Name) values ('Ann''s')")}},
    {"facts",
     {QStringLiteral("ALTER TABLE Mess_Conf ALTER COLUMN Mess_ID TEXT(50)"),
      QStringLiteral("ALTER TABLE Mess_Conf ALTER COLUMN Mess_Name1 TEXT(255)"),
      QStringLiteral("ALTER TABLE Mess_Conf ALTER COLUMN Mess_Name2 TEXT(255)")}},
    {"readings",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_ReadDate  DateTime"),
      QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_ReadNum  Long"),
      QStringLiteral("update Code_Info set Code_ReadDate = Code_Create,Code_ReadNum = 1")}},
    {"ids",
     {QStringLiteral("ALTER TABLE Code_Info ALTER COLUMN Code_id TEXT(38)"),
      QStringLiteral("ALTER TABLE tab_file ALTER COLUMN Code_id TEXT(38)"),
      QStringLiteral("ALTER TABLE tab_tag ALTER COLUMN Code_id TEXT(38)"),
      QStringLiteral("ALTER TABLE tab_VirCate ALTER COLUMN Code_id TEXT(38)")}},
    {"updaters",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_UpdateNum Long DEFAULT 0, Code_Creater Text(50), "
                     "Code_Updater Text(50), Code_LineColor Text(30)"),
      QStringLiteral("update Code_Info set Code_Creater='',Code_Updater='',Code_LineColor='',Code_UpdateNum=0")}},
    {"255",
     {QStringLiteral("CREATE TABLE tab_log ([log_id] AutoIncrement PRIMARY KEY, [type_id] Text(1), "
                     "[log_text] TEXT(255), [log_user] Text(50), [log_date] DateTime, [log_mac] Text(50), "
                     "[log_comp] Text(255), [log_var1] Text(50), [log_var2] Text(50))"),
      QStringLiteral("insert into Mess_Conf(Mess_ID,Mess_Name1) values ('DB_VER','255')")}},
    {"classes gone",
     {QStringLiteral("ALTER TABLE Code_Info DROP COLUMN Class_ID"),
      QStringLiteral("ALTER TABLE Code_Info DROP COLUMN SmallClass_ID")}},
    {"tags",
     {QStringLiteral("CREATE TABLE tab_tags ([tags_Index] AutoIncrement PRIMARY KEY, [tags_Id] Long DEFAULT 0, "
                     "[tags_Name] Text(50), [tags_Count] Long DEFAULT 0)")}},
    {"tags of documents",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN  Code_Tags Text(255)"),
      QStringLiteral("update Code_Info set Code_Tags = ''")}},
    {"curves",
     {QStringLiteral("CREATE TABLE tab_Gene ([Gene_Index] AutoIncrement PRIMARY KEY, [Gene_Id] Long, "
                     "[Gene_Name] Text(50), [Gene_Per] Text(2), [Gene_Default] Text(1), [Gene_Num] single)")}},
    {"256",
     {QStringLiteral("ALTER TABLE Code_Info Add COLUMN Code_ReadDate_Sta Text(1), Code_ReadDateNext DateTime, "
                     "Code_ReadDate_gene_Id Long"),
      QStringLiteral("update Code_Info set Code_ReadDate_Sta = '', Code_ReadDate_gene_Id = 0")}},
};
} // namespace Old_Databases

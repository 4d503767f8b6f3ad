// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
// Ids of the folders right below a parent, for the allocation of a new one.
constexpr const char16_t *Children_From_First =
    u"select cate_id from cate_Info where cate_id like '%1[0-9][0-9][0-9]'  order by cate_id asc ";
constexpr const char16_t *Children_But_Bin =
    u"select cate_id from cate_Info where cate_id like '%1[0-9][0-9][0-9]' and cate_id <> '000'  order by cate_id asc ";
constexpr const char16_t *Folder_Exists = u"select cate_id from cate_info where cate_id = '%1'";

// Adding and changing.
constexpr const char16_t *Add_Folder =
    u" insert into cate_info(cate_id,cate_name,icon_name,Order_Id,Cate_Memo,Cate_Exp,Cate_pass) values "
    u"('%1','%2','%3',%4,'%5','%6','')";
constexpr const char16_t *Add_Import_Folder =
    u" insert into cate_info(cate_id,cate_name,icon_name,Order_Id,Cate_Memo,Cate_Exp,Cate_Pass) values "
    u"('%1','%2','home.ico',%3,' ','1','')";
constexpr const char16_t *Folder_By_Name =
    u"select top 1 cate_id from cate_Info where cate_id like '%1[0-9][0-9][0-9]' and  cate_name = '%2' "
    u"order by cate_id desc ";
constexpr const char16_t *Folder_Fields =
    u"Select Cate_id,Cate_name,Icon_Name,Cate_Memo,Cate_Exp From Cate_Info Where Cate_id='%1'";
constexpr const char16_t *Root_Remark = u"select temp_memo from test";
constexpr const char16_t *Set_Root_Name = u" update Mess_Conf set Mess_Name1 ='%1' where Mess_id='COM_NAME'";
constexpr const char16_t *Set_Root_Icon = u" update Mess_Conf set Mess_Name1 ='%1' where Mess_id='COM_ICON'";
constexpr const char16_t *Set_Folder_Name = u" update Cate_Info set cate_name ='%1' where cate_id='%2'";
constexpr const char16_t *Set_Folder_Icon = u" update Cate_Info set Icon_Name ='%1' where cate_id='%2'";

// Order among siblings.
constexpr const char16_t *Siblings_In_Order =
    u"Select cate_ID,cate_Name,Icon_Name,Code_Num,Order_Id from Cate_Info where cate_id like '%1[0-9][0-9][0-9]' "
    u"order by len(cate_id),order_id asc ";
constexpr const char16_t *Highest_Sibling =
    u"select top 1 cate_id from cate_info where  cate_id like '%1[0-9][0-9][0-9]' order by  cate_id desc";
constexpr const char16_t *Own_Order = u"select order_id,cate_Name from cate_info where cate_id = '%1'";
constexpr const char16_t *Set_Order = u"update cate_info set order_id = %1 where cate_id = '%2'";

// Moving.
constexpr const char16_t *Subtree = u"select cate_id from cate_info where cate_id like '%1%'";
constexpr const char16_t *Renumber_Folder = u"Update  cate_info  set cate_id ='%1' Where cate_id= '%2'";
constexpr const char16_t *Renumber_Documents = u"Update  code_info  set cate_id ='%1' Where cate_id= '%2'";
constexpr const char16_t *Title_And_Folder = u"select  Code_Title ,cate_id  from  code_info   Where code_id= '%1'";
constexpr const char16_t *Move_Document = u"Update  code_info  set cate_id ='%1' Where code_id= '%2'";

// Removing.
constexpr const char16_t *Name_Of_Folder = u"Select Cate_Name  From Cate_Info Where Cate_Id ='%1'";
constexpr const char16_t *Documents_Below = u" select Code_ID from Code_Info where Cate_Id   like '%1%'";
constexpr const char16_t *Delete_Attachments = u"Delete tab_file From tab_file Where Code_ID= '%1'";
constexpr const char16_t *Delete_Documents_Below = u" Delete Code_Info from Code_Info where Cate_Id   like '%1%'";
constexpr const char16_t *Delete_Folders_Below = u" Delete Cate_Info from Cate_Info where Cate_Id  like '%1%'";
constexpr const char16_t *Empty_Bin_Folders =
    u" Delete Cate_Info from Cate_Info where Cate_Id  like '000[0-9][0-9][0-9]%'";

// Passwords.
constexpr const char16_t *Folder_Lock = u"Select Cate_id,Cate_pass  From Cate_Info Where Cate_id='%1'";
constexpr const char16_t *Subtree_Locks = u"Select Cate_id,Cate_pass  From Cate_Info Where Cate_id like '%1%'";
constexpr const char16_t *Locked_Folders = u"Select Cate_id,Cate_pass  From Cate_Info Where Cate_pass <> ''";

// Memberships beside the home folder.
constexpr const char16_t *Memberships = u" select cate_info.cate_id,cate_name from cate_info inner join tab_vircate on "
                                        u"cate_info.cate_id = tab_vircate.cate_id where code_id = '%1'";
constexpr const char16_t *Delete_Memberships = u" delete tab_vircate from  tab_vircate where code_id ='%1' ";
constexpr const char16_t *Add_Membership = u" insert into tab_vircate(code_id,cate_id) values ('%1','%2')";

// Icons that the database carries.
constexpr const char16_t *Stored_Icons = u"select file_name,file_cont from tab_file where file_type = 3";
constexpr const char16_t *Used_Icons =
    u"select file_name,file_cont from tab_file where file_type = 3 and (file_name in (select Icon_Name from Cate_Info) "
    u"or file_name in (select Mess_Name1 from Mess_Conf where Mess_ID = 'COM_ICON'))";
constexpr const char16_t *One_File = u"select top 1 * from tab_file";
} // namespace Sql

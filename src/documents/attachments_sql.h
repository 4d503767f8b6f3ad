// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Attachments_Of = u"SELECT file_id, file_type, file_name, file_size, "
                                           u"file_date,file_path,file_infor From tab_file WHERE (file_type = 0 "
                                           u"or file_type = 1) and code_id='%1' order by order_id";
constexpr const char16_t *Count_Of_Attachments =
    u"select count(*) From tab_file WHERE (file_type = 0 or file_type = 1) and code_id='%1'";
constexpr const char16_t *One_Attachment =
    u"SELECT file_id, file_type, file_name, file_size, file_date,file_path,file_infor,code_id,order_id From tab_file "
    u"WHERE file_id=%1";
constexpr const char16_t *New_Attachment = u"select * from tab_file where file_id = 0";
constexpr const char16_t *Last_Order = u"select top 1 order_id from tab_file where code_id='%1' order by order_id desc";
constexpr const char16_t *Order_Of_File = u"Select file_id,order_id  from tab_file where file_id = %1";
constexpr const char16_t *Set_File_Order = u"update tab_file set order_id = %1 where file_id = %2";
constexpr const char16_t *Delete_Attachment = u" delete from tab_file where file_id=%1";
constexpr const char16_t *Set_File_Remark = u"update tab_file set file_infor = '%1' where file_id=%2";
constexpr const char16_t *Give_Attachment = u"update tab_file set code_id = '%1',order_id = %2 where file_id = %3";
constexpr const char16_t *Pictures_Of_Page =
    u"select  file_cont,file_name from tab_file where  file_type = 4 and code_id='%1'";
constexpr const char16_t *All_Attachments =
    u"SELECT tab_file.file_id,file_type, code_title, file_name, file_size, "
    u"file_date,file_path,file_infor,tab_file.code_id "
    u"From tab_file,Code_Info where tab_file.code_id = Code_Info.code_id and (file_type = 0 or file_type = 1)";
constexpr const char16_t *Attachments_Without_Document =
    u"SELECT file_id,file_type, file_name, file_size, file_date,file_path,file_infor,code_id From tab_file where "
    u"(file_type = 0 or file_type = 1) and (code_id is null or code_id not in (select Code_Info.code_id from "
    u"Code_Info))";
} // namespace Sql

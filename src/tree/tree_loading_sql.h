// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *All_Folders =
    u"Select cate_ID,cate_Name,Icon_Name,Code_Num,Cate_Exp From Cate_Info Order by len(cate_id),order_id asc ";
constexpr const char16_t *Count_Subtree = u"Select count(*) from Code_Info where cate_id like '%1%'";
constexpr const char16_t *Count_Folder = u"Select count(*) from Code_Info where cate_id = '%1'";
/// Documents of every folder in one pass; the captions are sums of these.
constexpr const char16_t *Count_By_Folder = u"Select cate_id,count(*) from Code_Info group by cate_id";
constexpr const char16_t *Combo_Folders =
    u"Select cate_ID,cate_Name,order_id From Cate_Info where cate_id not like '000%' Order by cate_id , order_id desc";
constexpr const char16_t *Combo_Recycle_Bin =
    u"Select cate_ID,cate_Name,order_id From Cate_Info where cate_id like '000%' Order by cate_id , order_id desc";
constexpr const char16_t *Save_Expanded = u"update Cate_Info set  Cate_Exp=%1 Where Cate_id='%2'";
constexpr const char16_t *Fact = u"select mess_name1 from mess_conf where mess_id ='%1'";
constexpr const char16_t *New_Fact = u"insert into mess_conf(Mess_ID,Mess_Name1) values ('%1','%2')";
} // namespace Sql

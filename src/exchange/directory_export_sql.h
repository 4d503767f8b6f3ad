// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Exported_Folders = u"Select cate_ID,cate_Name,Icon_Name,Code_Num,Cate_Exp,Cate_pass From "
                                             u"Cate_Info  where Cate_ID like '%1%'  Order by "
                                             u"len(cate_id),order_id asc ";
constexpr const char16_t *Name_On_The_Way =
    u"Select cate_ID,Cate_Name  From Cate_Info  where Cate_ID = '%1'  Order by len(cate_id),order_id asc ";
constexpr const char16_t *Exported_Documents =
    u"Select cate_ID,Code_Title,Code_ID,Code_Keys,Code_Content,Code_Content_IO, Code_Type From Code_Info Where cate_ID "
    u"='%1'";
constexpr const char16_t *Count_Of_Exported = u"Select count(*) From Code_Info Where cate_ID like '%1%'";
} // namespace Sql

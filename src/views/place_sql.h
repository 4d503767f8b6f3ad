// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Places_Folders =
    u"select cate_id,cate_name,Cate_pass from Cate_Info order by len(cate_id),order_id";
constexpr const char16_t *Places_Documents = u"select Code_ID,Code_Title,Cate_ID from Code_Info";
constexpr const char16_t *Places_Read_Last =
    u"select top 100 Code_ID from Code_Info where Code_ReadNum > 0 order by Code_ReadDate desc";
constexpr const char16_t *Places_Tags = u"select tags_Id,tags_Name,tags_Count from tab_tags order by tags_Name";
constexpr const char16_t *Places_Bookmarks =
    u"select code_id,tag_name,tag_lineno from tab_tag order by code_id,order_id";
} // namespace Sql

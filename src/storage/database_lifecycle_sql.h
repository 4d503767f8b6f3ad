// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Opening_Test = u"Select top 1 * From Cate_Info";
constexpr const char16_t *Clean_Attachments =
    u"delete Code_id from tab_file where tab_file.file_type <> 3 and tab_file.code_id not in (select "
    u"Code_Info.code_id from Code_Info)";
constexpr const char16_t *Clean_Documents =
    u"delete Code_id from Code_Info where Code_Info.Cate_ID not in (select Cate_Info.Cate_ID from Cate_Info)";
// What the two would remove.
constexpr const char16_t *Count_Attachments =
    u"select count(*) from tab_file where tab_file.file_type <> 3 and tab_file.code_id not in (select "
    u"Code_Info.code_id from Code_Info)";
constexpr const char16_t *Count_Documents =
    u"select count(*) from Code_Info where Code_Info.Cate_ID not in (select Cate_Info.Cate_ID from Cate_Info)";
} // namespace Sql

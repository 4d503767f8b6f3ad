// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Count_Of_Internal_Files =
    u"select count(*) from tab_file where file_type = 0 and  code_id='%1'";
constexpr const char16_t *Internal_Files =
    u"select file_name,file_size,file_date,file_id from tab_file where file_type = 0 and  code_id='%1'";
} // namespace Sql

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Login_Names = u"select user_name from User_pass  order by user_name";
constexpr const char16_t *Login_User = u"select top 1 * from User_pass where user_name ='%1'";
} // namespace Sql

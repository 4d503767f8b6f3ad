// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Drop_Passwords_Without_User =
    u"delete from user_pass where user_name not in ( select user_name from user_list ) ";
constexpr const char16_t *Drop_Users_Without_Password =
    u"delete from user_list where user_name not in ( select user_name from user_pass ) ";
constexpr const char16_t *User_Credentials = u"select top 1 * from User_pass where user_name ='%1'";
constexpr const char16_t *User_Profile = u"select top 1 * from User_list where user_name ='%1'";
constexpr const char16_t *User_Count = u"select count(*) from user_list ";
constexpr const char16_t *Default_Credentials =
    u"insert into user_pass(user_name,user_pass,user_lock,user_start,user_end) values "
    u"('Zelqor','','','2008-11-30','2019-12-01')";
constexpr const char16_t *Default_Profile = u"insert into user_list(user_name) values ('Zelqor')";
} // namespace Sql

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Users_By_Name = u"select   * from User_List order by user_name ";
constexpr const char16_t *Credentials_Of = u"select * from user_pass where user_name = '%1'";
constexpr const char16_t *Profile_Of = u"select * from user_List where user_name = '%1'";
constexpr const char16_t *User_Is_There = u" select * from user_List where user_name = '%1'";
constexpr const char16_t *Count_Users = u" select count(*) from user_List ";
constexpr const char16_t *New_Credentials = u"select * from user_pass where 1=2";
constexpr const char16_t *New_Profile = u"select * from user_List where 1=2";
constexpr const char16_t *Delete_Credentials = u"delete user_pass   from user_pass where user_name = '%1'";
constexpr const char16_t *Delete_Profile = u"delete user_List   from user_List where user_name = '%1'";
constexpr const char16_t *Own_Credentials = u"select top 1 * from User_pass where user_name ='%1'";
} // namespace Sql

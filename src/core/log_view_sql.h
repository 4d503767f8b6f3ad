// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Log_Users = u"SELECT user_name  From user_list  ";
/// %1 user, %2 delimiter of dates, %3 and %4 first and last day.
constexpr const char16_t *Log_Lines =
    u"SELECT *  From tab_log   WHERE log_user like  '%%1%'  and log_date >= %2%3 00:00:00%2 and log_date<= "
    u"%2%4 23:59:59%2 order by log_date desc";
} // namespace Sql

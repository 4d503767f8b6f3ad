// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Log_Users = u"SELECT user_name  From user_list  ";
/// %1 user, %2 and %3 first and last day.
constexpr const char16_t *Log_Lines =
    u"SELECT *  From tab_log   WHERE log_user like  '%%1%'  and log_date >= #%2 00:00:00# and log_date<= "
    u"#%3 23:59:59# order by log_date desc";
constexpr const char16_t *Log_Lines_Server =
    u"SELECT *  From tab_log   WHERE log_user like  '%%1%'  and log_date >= '%2 00:00:00' and log_date<= "
    u"'%3 23:59:59' order by log_date desc";
constexpr const char16_t *One_Line = u"Select top 1 * From tab_log";
} // namespace Sql

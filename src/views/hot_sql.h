// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Conditions of the hot lists. In the lists by date %1 is the year; in those of what is due %1 and %2 are the first
/// and the last moment.
namespace Sql
{
constexpr const char16_t *Hot_Most_Read = u" Code_ReadNum > 0   order by Code_ReadNum desc ";
constexpr const char16_t *Hot_Newest = u" Code_Date like '%1%' order by Code_Date desc ";
constexpr const char16_t *Hot_Updated = u" Code_Update like '%1%' order by Code_Update desc ";
constexpr const char16_t *Hot_Read = u" Code_ReadDate like '%1%' order by Code_ReadDate desc ";
constexpr const char16_t *Hot_Tagged = u" Code_Tags <> '' order by Code_Date desc ";
constexpr const char16_t *Hot_Where = u" where ";

constexpr const char16_t *Overdue = u" Code_ReadDateNext <  #%1#";
constexpr const char16_t *Overdue_Server = u" Code_ReadDateNext <  '%1'";
constexpr const char16_t *Due_Between =
    u" ( ( Code_ReadDate >=  #%1# and  Code_ReadDate <=  #%2# )   and  Code_ReadDate_Sta = 'X' ) or ( "
    u"Code_ReadDateNext >=  #%1# and  Code_ReadDateNext <=  #%2# )";
constexpr const char16_t *Due_Between_Server =
    u" ( ( Code_ReadDate >=  '%1' and  Code_ReadDate <=  '%2' )   and  Code_ReadDate_Sta = 'X' ) or ( "
    u"Code_ReadDateNext >=  '%1' and  Code_ReadDateNext <=  '%2' )";
constexpr const char16_t *Order_Of_Overdue = u"    order by Code_Date desc ";
constexpr const char16_t *Order_Of_Due = u" order by Code_Date desc ";
constexpr const char16_t *Count_Where = u"Select count(*)  From Code_Info where ";
} // namespace Sql

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *First_Date = u"Select top 1 cate_ID,code_date  From Code_Info  Order by code_date asc";
constexpr const char16_t *Last_Date = u"Select top 1 cate_ID,code_date  From Code_Info  Order by code_date desc";
/// The earliest date when documents without one come before it.
constexpr const char16_t *First_Known_Date =
    u"Select top 1 cate_ID,code_date  From Code_Info  where code_date is not null Order by code_date asc";
constexpr const char16_t *Count_Of_Period = u"Select count(*)  From Code_Info where code_date like '%1%' ";
constexpr const char16_t *Days_Of_Month =
    u"Select count(*),Code_date  From Code_Info where code_date like '%1%' group by Code_date Order by Code_date asc";
} // namespace Sql

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Review_Of_Document =
    u" select Code_ReadDate_Gene_Id,Code_ReadDate_Sta,Code_ReadDate,Code_ReadDateNext from Code_Info where code_id "
    u"='%1'";
constexpr const char16_t *Groups_By_Name = u" select * from tab_Gene order by gene_name asc ";
constexpr const char16_t *Group_By_Id = u" select * from tab_gene where Gene_Id = %1";
constexpr const char16_t *Group_By_Name = u" select * from tab_Gene where gene_name = '%1'";
constexpr const char16_t *Count_Group_Use = u" select count(*) from Code_Info where Code_ReadDate_Gene_Id =  %1";
constexpr const char16_t *Delete_Group = u" delete * from tab_Gene where Gene_Id =  %1";
constexpr const char16_t *Set_Group_Id = u"update tab_Gene set Gene_Id = %1 where Gene_Index = %2";

/// What is due before a moment, outside of the recycle bin.
constexpr const char16_t *Due_Before = u"select Code_ID,Code_Title,Code_Color,Code_ReadDateNext from Code_Info where "
                                       u"Code_ReadDateNext < '%1' and Cate_ID "
                                       u"not like '000%' order by Code_ReadDateNext";
constexpr const char16_t *Next_Reading = u"select Code_ReadDateNext,Cate_ID from Code_Info where Code_ID = '%1'";
/// Only where the old date still stands.
constexpr const char16_t *Postpone =
    u"update Code_Info set Code_ReadDateNext = '%1' where Code_ID = '%2' and Code_ReadDateNext = '%3'";
} // namespace Sql

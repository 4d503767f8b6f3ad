// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Statements of the tags. A document's tags are tokens "{id}" in Code_Tags.
namespace Sql
{
constexpr const char16_t *Tags_By_Name = u"select  *    from  tab_tags      order by tags_name asc";
constexpr const char16_t *Tags_For_Document = u"select  *  from  tab_tags   order by tags_Name asc ";
constexpr const char16_t *Tags_Of_Document = u"select  Code_Tags  from  code_info   Where code_id= '%1'";
constexpr const char16_t *Tag_Named = u"select  *  from  tab_tags   Where tags_Name = '%1'";
constexpr const char16_t *Other_Tag_Named = u"select  *      from tab_tags Where tags_Name = '%1'";
constexpr const char16_t *Tag_By_Id = u"select  *      from tab_tags Where tags_id = %1";
constexpr const char16_t *Set_Tag_Id = u" update tab_tags set tags_id = %1 where tags_index = %2";
constexpr const char16_t *Set_Tag_Name = u" update   tab_tags    set tags_Name = '%1' Where tags_id = %2";
constexpr const char16_t *Set_Tag_Count = u"Update  tab_tags  set tags_Count = %1 Where tags_id= %2";
constexpr const char16_t *Delete_Tag = u" delete tags_id from  tab_tags    Where tags_id = %1";
constexpr const char16_t *Set_Document_Tags = u"Update  code_info  set Code_Tags ='%1' Where code_id= '%2'";
constexpr const char16_t *Count_Of_Tag = u" select count(*) from code_info where Code_Tags like '%{%1}%'";
constexpr const char16_t *Documents_Of_Tag =
    u" select code_id ,code_tags from code_info where Code_Tags like '%{%1}%' order by Code_Date ";
constexpr const char16_t *Document_With_Tag =
    u" select code_id ,code_tags from code_info where Code_Tags like '%{%1}%' and Code_Id = '%2' order by Code_Date ";
/// The list of a tag. Each "_" is any one character where the brace is, so tag 5 also lists the documents of 15.
constexpr const char16_t *List_Of_Tag = u" where Code_Tags like '%_%1_%' order by Code_Date ";

// Looking after many tags.
constexpr const char16_t *All_Tagged = u"select code_id,Code_Tags from code_info where Code_Tags <> ''";
} // namespace Sql

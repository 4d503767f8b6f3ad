// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
// The candidates of a folder.
constexpr const char16_t *Lock_Of_Folder = u"Select Cate_id,Cate_pass  From Cate_Info Where Cate_id='%1'";
constexpr const char16_t *Candidates_Of_Folder =
    u"Select Code_ID,Code_Title,Cate_ID,Code_Keys,Code_Color,Code_Explain From Code_Info  Where Cate_ID like '%1%'  "
    u"order by Code_ID";
/// The engine refuses this one, so that the root of the exported database lists nothing.
constexpr const char16_t *Candidates_To_Export =
    u"Select Code_ID,Code_Title,Code_Info.Cate_ID,Code_Keys,Code_Color,Code_Explain From Code_Info,Cate_Info where "
    u"and Code_Info.Cate_id = Cate_Info.Cate_id  and Cate_Info.Cate_pass = '' order by Code_ID";
constexpr const char16_t *Candidates_To_Import =
    u"Select Code_ID,Code_Title,Cate_ID,Code_Keys,Code_Color,Code_Explain From Code_Info order by Code_ID";
constexpr const char16_t *Name_Of_Candidates_Folder = u"select cate_name from Cate_Info where cate_id='%1'";

// What belongs to one document, the same on both sides.
constexpr const char16_t *Transferred_Document = u"Select * From Code_Info where Code_ID='%1'";
constexpr const char16_t *Transferred_Files = u"select * from tab_file where code_id = '%1'";
constexpr const char16_t *Transferred_Bookmarks = u"select * from tab_tag where code_id = '%1'";
constexpr const char16_t *Transferred_Folder = u"select * from cate_info where cate_id = '%1'";
constexpr const char16_t *Transferred_Memberships = u"select * from tab_VirCate where code_id = '%1'";

// Tables that are copied whole into an empty one.
constexpr const char16_t *All_Tags = u"select * from tab_tags  ";
constexpr const char16_t *All_Groups = u"select * from tab_Gene  ";
constexpr const char16_t *All_Profiles = u"select * from User_List ";
constexpr const char16_t *All_Credentials = u"select * from User_pass ";
constexpr const char16_t *All_Facts = u"select * from Mess_Conf ";

// What goes over by its name.
constexpr const char16_t *Tag_By_Id = u"select * from tab_tags where tags_Id = %1";
constexpr const char16_t *Source_Group = u"select * from tab_Gene where Gene_Id = %1";
constexpr const char16_t *Group_By_Name = u"select * from tab_Gene where Gene_Name = '%1'";
constexpr const char16_t *Number_Group = u"update tab_Gene set Gene_Id = %1 where Gene_Index = %2";

// What two databases say of the same id.
constexpr const char16_t *Compared_Document =
    u"Select Code_Title,Code_Update,Code_Content,Code_Content_IO,Code_Memo,Code_Memo_IO,Code_Sum,Code_Sum_IO From "
    u"Code_Info where Code_ID='%1'";
constexpr const char16_t *Places_Of_Document =
    u"Select Cate_ID,Code_Tags,Code_ReadDate_gene_Id From Code_Info where Code_ID='%1'";
} // namespace Sql

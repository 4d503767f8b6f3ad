// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Candidates_For_Book =
    u"Select Code_ID,Code_Title,Cate_ID,Code_Keys,Code_Color,Code_Explain,Code_Content,Code_Type  From Code_Info  "
    u"Where Cate_ID like '%1%'  order by Code_ID";
constexpr const char16_t *Document_For_Book =
    u"Select cate_ID,Code_Title,Code_ID,Code_Keys,Code_Content,Code_Content_IO, Code_Type From Code_Info Where Code_ID "
    u"='%1'";
} // namespace Sql

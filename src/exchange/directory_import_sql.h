// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
constexpr const char16_t *Titles_In_Folder = u"Select Code_Title From Code_Info where Cate_ID = '%1'";
} // namespace Sql

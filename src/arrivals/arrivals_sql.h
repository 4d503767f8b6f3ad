// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace Sql
{
inline constexpr auto Folder_Name = u"select Cate_Name from Cate_Info where Cate_ID='%1'";
} // namespace Sql

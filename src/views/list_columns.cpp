// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/list_columns.h"

#include "core/language_pack.h"

namespace
{
constexpr Document_Column Columns[] = {
    {"", "_Col_Number", "", 46},
    {"Lsv_Code_Info_Star", "_Col_Star", "Code_Color", 80},
    {"Lsv_Code_Info_Done", "_Col_Done", "Code_Done", 80},
    {"Lsv_Code_Info_Title", "_Col_Title", "Code_Title", 280},
    {"Lsv_Code_Info_CateName", "_Col_CateName", "", 110},
    {"Lsv_Code_Info_KeyWord", "_Col_KeyWord", "Code_Keys", 110},
    {"Lsv_Code_Info_Author", "_Col_Author", "Code_Author", 80},
    {"Lsv_Code_Info_Create", "_Col_Create", "Code_Date", 90},
    {"Lsv_Code_Info_Update", "_Col_Update", "Code_Update", 140},
    {"Lsv_Code_Info_AddinNum", "_Col_AddinNum", "", 70},
    {"Lsv_Code_Info_Provenance", "_Col_Provenance", "Code_Provenance", 90},
    {"Lsv_Code_Info_Promulgator", "_Col_Promulgator", "Code_Promulgator", 90},
    {"Lsv_Code_Info_File", "_Col_File", "Code_File", 90},
    {"Lsv_Code_Info_FileType", "_Col_FileType", "Code_Type", 70},
    {"Lsv_Code_Info_Explain", "_Col_Explain", "Code_Explain", 110},
    {"Lsv_Code_Info_ReadNum", "_Col_ReadNum", "Code_Readnum", 60},
    {"Lsv_Code_Info_ReadDate", "_Col_ReadDate", "Code_ReadDate", 140},
    {"Lsv_Code_Info_ReadDateNext", "_Col_ReadDateNext", "Code_ReadDateNext", 140},
};
} // namespace

std::span<const Document_Column> Document_Columns()
{
    return Columns;
}

std::vector<List_Column> Captioned_Columns()
{
    std::vector<List_Column> captioned;
    for (const Document_Column &column : Columns)
        captioned.push_back({QLatin1String(column.key), Pack_Text("Frm_ListView", column.caption)});
    return captioned;
}

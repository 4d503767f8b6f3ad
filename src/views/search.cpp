// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search.h"

#include "core/language_pack.h"
#include "core/sql_text.h"
#include "views/search_sql.h"

namespace
{
constexpr Search_Field Fields[] = {
    {"Code_Title", "_Code_Title"},
    {"Code_Keys", "_Code_Keys"},
    {"Code_Provenance", "_Code_Provenance"},
    {"Code_Author", "_Code_Author"},
    {"Code_Promulgator", "_Code_Promulgator"},
    {"Code_Explain", "_Code_Explain"},
    {"Code_Content", "_Code_Content"},
    {"Code_Memo", "_Code_Memo"},
    {"Code_Sum", "_Code_Sum"},
};

Sql_Part Folder_Part(const Search_Request &request)
{
    if (request.everywhere)
        return Sql_Part_Of(Sql::Search_Everywhere);
    Sql_Part part;
    for (const QString &id : request.folders)
        part += Sql_Part_Of(part.Is_Empty() ? Sql::Search_First_Folder : Sql::Search_Next_Folder, id);
    return part + Sql_Part_Of(Sql::Search_Group_End);
}

Sql_Part Field_Part(const Search_Request &request)
{
    const QString key = Search_Key(request.key);
    if (request.fields.isEmpty())
        return Sql_Part_Of(Sql::Search_Only_Field, Sql_Name{QLatin1String(Fields[0].column)}, key);
    Sql_Part part;
    for (const QString &field : request.fields)
        part += Sql_Part_Of(part.Is_Empty() ? Sql::Search_First_Field : Sql::Search_Next_Field, Sql_Name{field}, key);
    return part + Sql_Part_Of(Sql::Search_Group_End);
}
} // namespace

QString Caption_Of(const Search_Field &field)
{
    return Pack_Text("Frm_Main", field.caption);
}

std::span<const Search_Field> Search_Fields()
{
    return Fields;
}

QString Search_Key(const QString &typed)
{
    return QString(typed).remove(QLatin1Char('\''));
}

QString Search_Where(const Search_Request &request)
{
    return (Folder_Part(request) + Field_Part(request) + Sql_Part_Of(Sql::Search_Order)).Text();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/virtual_folders.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_sql.h"
#include "tree/tree_loading.h"

Home_Folder Home_Of(const QString &codeId)
{
    Home_Folder home;
    Recordset document;
    document.Open(Sql_Text(Sql::Title_And_Folder, codeId), App().Conn_Str);
    if (document.Eof())
        return home;
    home.title = document[0].Text();
    home.id = document[1].Text();
    Recordset folder;
    folder.Open(Sql_Text(Sql::Name_Of_Folder, home.id), App().Conn_Str);
    home.name = folder.Eof() ? QString() : Shown_Folder_Name(home.id, folder[0].Text());
    return home;
}

std::vector<Membership> Memberships_Of(const QString &codeId)
{
    std::vector<Membership> memberships;
    Recordset rows;
    rows.Open(Sql_Text(Sql::Memberships, codeId), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        memberships.push_back({rows[0].Text(), Shown_Folder_Name(rows[0].Text(), rows[1].Text())});
    return memberships;
}

void Save_Memberships(const QString &codeId, const QString &homeId, const QStringList &folders)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Run_Statement(Sql_Text(Sql::Delete_Memberships, codeId), App().Conn_Str);
        for (const QString &folder : folders) {
            if (folder != homeId)
                Run_Statement(Sql_Text(Sql::Add_Membership, codeId, folder), App().Conn_Str);
        }
    });
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/document_places.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_sql.h"

namespace
{
bool Is_There(const QString &folder)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Folder_Exists, folder), App().Conn_Str);
    return !row.Eof();
}
} // namespace

QList<Document_Place> Places_Of(const QStringList &documents)
{
    return Trap(QStringLiteral("Mod_Cate\\Places_Of"), [&] {
        QList<Document_Place> places;
        for (const QString &id : documents) {
            Recordset row;
            row.Open(Sql_Text(Sql::Title_And_Folder, id), App().Conn_Str);
            if (!row.Eof())
                places.append({id, row[1].Text()});
        }
        return places;
    });
}

QStringList Put_Back(const QList<Document_Place> &places)
{
    return Trap(QStringLiteral("Mod_Cate\\Put_Back"), [&] {
        QStringList back;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (const Document_Place &place : places) {
                if (!Is_There(place.folder))
                    continue;
                Run_Statement(Sql_Text(Sql::Move_Document, place.folder, place.document), App().Conn_Str);
                back << place.document;
            }
        });
        return back;
    });
}

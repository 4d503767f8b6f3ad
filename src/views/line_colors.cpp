// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/line_colors.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "views/list_engine_sql.h"

QString Line_Color_Of(const QString &codeId)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Stored_Style, codeId), App().Conn_Str);
    return row.Eof() ? QString() : row[0].Text();
}

void Store_Line_Color(const QStringList &codeIds, const QString &style)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const QString &id : codeIds)
            Run_Statement(Sql_Text(Sql::New_Style, style, id), App().Conn_Str);
    });
}

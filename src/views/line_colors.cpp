// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/line_colors.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

namespace
{
constexpr const char16_t *Stored_Style = u"Select Code_LineColor From Code_Info where Code_ID='%1'";
constexpr const char16_t *New_Style = u"update Code_Info set Code_LineColor='%1' where Code_ID='%2'";
} // namespace

QString Line_Color_Of(const QString &codeId)
{
    Recordset row;
    row.Open(Sql_Text(Stored_Style, codeId), App().Conn_Str);
    return row.Eof() ? QString() : row[0].Text();
}

void Store_Line_Color(const QStringList &codeIds, const QString &style)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const QString &id : codeIds)
            Run_Statement(Sql_Text(New_Style, style, id), App().Conn_Str);
    });
}

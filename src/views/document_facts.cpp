// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/document_facts.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "views/list_engine_sql.h"

#include <QStringList>

namespace
{
/// The lines in the order of the columns of Sql::Document_Facts.
constexpr const char *Captions[] = {
    "_Col_Title",    "_Col_FileType",   "_Fact_Create", "_Fact_Creater", "_Fact_Update",
    "_Fact_Updater", "_Fact_UpdateNum", "_Col_ReadNum", "_Col_ReadDate", "_Col_ReadDateNext",
    "_Col_File",     "_Fact_Id",        "_Fact_Length",
};
} // namespace

QString Document_Facts(const QString &codeId)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Document_Facts, codeId), App().Conn_Str);
    QStringList lines;
    for (int i = 0; !row.Eof() && i < static_cast<int>(std::size(Captions)); ++i) {
        const QString value = row[i].Text();
        if (!value.isEmpty())
            lines << Pack_Text("Frm_ListView", Captions[i]) + QStringLiteral(": ") + value;
    }
    return lines.join(QLatin1Char('\n'));
}

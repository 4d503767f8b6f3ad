// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/document_facts.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"

#include <QStringList>

namespace
{
constexpr const char16_t *Facts =
    u"Select Code_Title,Code_Type,Code_Create,Code_Creater,Code_Update,Code_Updater,Code_UpdateNum,Code_ReadNum,"
    u"Code_ReadDate,Code_ReadDateNext,Code_File,Code_ID,len(Code_Content) From Code_Info where Code_ID='%1'";

/// The lines in the order of the statement's columns.
constexpr const char *Captions[] = {
    "_Col_Title",    "_Col_FileType",   "_Fact_Create", "_Fact_Creater", "_Fact_Update",
    "_Fact_Updater", "_Fact_UpdateNum", "_Col_ReadNum", "_Col_ReadDate", "_Col_ReadDateNext",
    "_Col_File",     "_Fact_Id",        "_Fact_Length",
};
} // namespace

QString Document_Facts(const QString &codeId)
{
    Recordset row;
    row.Open(Sql_Text(Facts, codeId), App().Conn_Str);
    QStringList lines;
    for (int i = 0; !row.Eof() && i < static_cast<int>(std::size(Captions)); ++i) {
        const QString value = row[i].Text();
        if (!value.isEmpty())
            lines << Pack_Text("Frm_ListView", Captions[i]) + QStringLiteral(": ") + value;
    }
    return lines.join(QLatin1Char('\n'));
}

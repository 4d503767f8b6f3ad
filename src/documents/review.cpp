// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/review.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/review_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "tree/folder_ids.h"

namespace
{
/// The item of the document's group, or of the default one for a document without a group.
void Fill_Groups(Gene_Chooser &chooser, qint64 own)
{
    chooser.items.clear();
    chooser.chosen = -1;
    Recordset groups;
    groups.Open(Sql_Text(Sql::Groups_By_Name), App().Conn_Str);
    for (; !groups.Eof(); groups.MoveNext()) {
        const qint64 id = groups[QStringLiteral("Gene_Id")].Number();
        const bool isDefault = groups[QStringLiteral("Gene_Default")].Text() == QLatin1String("X");
        if (chooser.chosen < 0 && (own == 0 ? isDefault : id == own))
            chooser.chosen = static_cast<int>(chooser.items.size());
        chooser.items << QString::number(id) + QLatin1Char('_') + groups[QStringLiteral("Gene_Name")].Text();
    }
}
} // namespace

int Gene_Chooser::Gene_Id() const
{
    return GetKeyPart(items.value(chosen), Key_Part::Before_Underscore).toInt();
}

void Get_Gene_List_Id(Gene_Chooser &chooser, const QString &code_id)
{
    Trap(QStringLiteral("Mod_DataBase\\Get_Gene_List_Id"), [&] {
        Recordset row;
        row.Open(Sql_Text(Sql::Review_Of_Document, code_id), App().Conn_Str);
        const bool stored = !row.Eof();
        const qint64 own = stored ? row[QStringLiteral("Code_ReadDate_Gene_Id")].Number() : 0;
        if (stored)
            chooser.last_read = row[QStringLiteral("Code_ReadDate")].Text();
        row.Close();
        Fill_Groups(chooser, own);
    });
}

bool Set_Gene_List_Id(const Gene_Chooser &chooser, const QString &code_id, const QString &next_date)
{
    if (next_date.isEmpty())
        return false;
    return Trap(QStringLiteral("Mod_DataBase\\Set_Gene_List_Id"), [&] {
        Recordset row;
        row.CursorType = Cursor_Type::Static;
        row.LockType = Lock_Type::Batch_Optimistic;
        row.Open(Sql_Text(Sql::Review_Of_Document, code_id), App().Conn_Str);
        if (row.Eof())
            return false;
        row[QStringLiteral("Code_ReadDate_Gene_Id")].Set(chooser.Gene_Id());
        row[QStringLiteral("Code_ReadDate_Sta")].Set(QString());
        row[QStringLiteral("Code_ReadDateNext")].Set(next_date);
        row.UpdateBatch();
        return true;
    });
}

Review_Dates Dates_Of_Choice(Gene_Chooser &chooser)
{
    return Trap(QStringLiteral("Frm_Doc_Standard\\Cob_Gene_Click"), [&] {
        if (chooser.last_read.isEmpty())
            chooser.last_read = Database_Engine::Short_Date(Machine::Now().date().startOfDay());
        Recordset group;
        group.Open(Sql_Text(Sql::Group_By_Id, chooser.Gene_Id()), App().Conn_Str);
        if (group.Eof())
            return Review_Dates();
        return Curve_Dates(group[QStringLiteral("Gene_Per")].Text(),
                           group[QStringLiteral("Gene_Num")].Value().toFloat(), chooser.last_read);
    });
}

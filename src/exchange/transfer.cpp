// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/transfer.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/sql_text.h"
#include "exchange/report.h"
#include "exchange/transfer_rows.h"
#include "exchange/transfer_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "storage/database_lifecycle.h"

using namespace Transfer_Rows;

namespace
{
/// One run of the transfer.
class Transfer
{
public:
    Transfer(const QString &target, const QString &source) : m_target(target), m_source(source) {}

    void Copy_Document(const Mod_DataBaseExport::Transfer_Row &row);
    void Copy_Closing_Tables();
    Mod_DataBaseExport::Transfer_Result result;

private:
    void Copy_What_Hangs_On(const Mod_DataBaseExport::Transfer_Row &row, QString folder);
    void Copy_If_None(const Table &table, const QString &key, const QString &title);
    /// Notes the pending error, or another reason, for a document.
    void Fail(const QString &title, const QString &reason = {})
    {
        result.failed.append({title, reason.isEmpty() ? Error_Text(Err()) : reason});
    }

    QString m_target;
    QString m_source;
};

/// Copies the rows of a table (those of one key, where it has one) into a target that has none.
void Transfer::Copy_If_None(const Table &table, const QString &key, const QString &title)
{
    const QString statement = key.isEmpty() ? Sql_Text(table.rows) : Sql_Text(table.rows, key);
    const bool read = Resume_Next([&] {
        Recordset from;
        Recordset to;
        from.Open(statement, m_source);
        Open_For_Adding(to, statement, m_target);
        if (!to.Eof())
            return;
        for (; !from.Eof(); from.MoveNext()) {
            if (!Copy_Row(from, to, table))
                Fail(title);
        }
    });
    if (!read)
        Fail(title);
}

void Transfer::Copy_What_Hangs_On(const Mod_DataBaseExport::Transfer_Row &row, QString folder)
{
    Copy_If_None(Files, row.code_id, row.title);
    Copy_If_None(Bookmarks, row.code_id, row.title);
    Copy_If_None(Tags, {}, row.title);
    Copy_If_None(Groups, {}, row.title);
    constexpr qsizetype Segment = 3;
    for (; !folder.isEmpty(); folder = folder.size() <= Segment ? QString() : folder.chopped(Segment))
        Copy_If_None(Folders, folder, row.title);
    Copy_If_None(Memberships, row.code_id, row.title);
}

void Transfer::Copy_Document(const Mod_DataBaseExport::Transfer_Row &row)
{
    const auto copy = [&] {
        const QString statement = Sql_Text(Sql::Transferred_Document, row.code_id);
        Recordset from;
        Recordset to;
        from.Open(statement, m_source);
        Open_For_Adding(to, statement, m_target);
        if (!to.Eof())
            return void(++result.present);
        if (from.Eof())
            return Fail(row.title, Pack_Text("Frm_DataExport_Ex", "_Gone"));
        if (!Copy_Row(from, to, Document))
            return Fail(row.title);
        ++result.done;
        Copy_What_Hangs_On(row, from[QStringLiteral("Cate_ID")].Text());
    };
    const qint64 copied = result.done;
    if (!Resume_Next([&] { Database_Engine::One_Action(m_target, copy); })) {
        result.done = copied;
        Fail(row.title);
    }
}

void Transfer::Copy_Closing_Tables()
{
    Database_Engine::One_Action(m_target, [&] {
        for (const Table &table : Closing)
            Copy_If_None(table, {}, {});
    });
}
} // namespace

namespace Mod_DataBaseExport
{
bool Test_Db_Path(const QString &path)
{
    return Test_Db_Conn(File_Conn_Str(path));
}

bool Test_Db_Conn(const QString &connection)
{
    return Opening_Test(connection);
}

Transfer_Result Transfer_Documents(const QString &target, const QString &source, const QList<Transfer_Row> &rows,
                                   Work &work)
{
    Transfer transfer(target, source);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (!work.Next(i, rows.size(), rows[i].title)) {
            transfer.result.stopped = true;
            break;
        }
        transfer.Copy_Document(rows[i]);
    }
    if (!transfer.result.stopped)
        Resume_Next([&] { transfer.Copy_Closing_Tables(); });
    Clear_Pending();
    return transfer.result;
}

QString Report_Of(const Transfer_Result &result)
{
    QString sum = Pack_Text("Frm_DataExport_Ex", "_Sum").arg(result.done).arg(result.present).arg(result.failed.size());
    Trap(QStringLiteral("Mod_DataBaseExport\\Report_Of"), [&] {
        const Report report(QStringLiteral("Transfer_"));
        report.Line(QStringLiteral("-------Zelqor--------"));
        for (const Failed_Item &item : result.failed)
            report.Line(item.name + Pack_Text("Frm_FileImport", "_Reason") +
                        QString(item.reason).replace(QLatin1Char('\n'), QLatin1Char(' ')));
        report.Line(sum);
        report.Line(QStringLiteral(" End：") + Report_Time());
        sum += QLatin1Char('\n') + report.Path();
        return true;
    });
    return sum;
}
} // namespace Mod_DataBaseExport

// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/ladder.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "storage/ladder_rungs.h"
#include "storage/ladder_sql.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>

namespace
{
/// The version that a database says it has; none when it says nothing.
std::optional<QString> Stored_Version(const QString &connStr)
{
    Recordset row;
    row.Open(Sql_Text(Ladder_Sql::Version_Row), connStr);
    return row.Eof() ? std::optional<QString>() : row[QStringLiteral("mess_name1")].Text();
}

QString Version_For_Name(const QString &connStr)
{
    std::optional<QString> version;
    Resume_Next([&] { version = Stored_Version(connStr); });
    Clear_Pending();
    const bool isNumber = version && version->toLongLong() > 0;
    return isNumber ? QString::number(version->toLongLong()) : QStringLiteral("unknown");
}

bool Holds_Rows(const Ladder_Run &run)
{
    return std::any_of(std::begin(Ladder_Sql::Rows_Of_Old_Databases), std::end(Ladder_Sql::Rows_Of_Old_Databases),
                       [&](const char16_t *statement) { return run.Has_Row(statement); });
}

void Keep_Copy(const Ladder_Run &run)
{
    const bool canChange = !run.File().isEmpty() && QFileInfo(run.File()).isWritable();
    if (!canChange || !Holds_Rows(run))
        return;
    const QString ownName = QFileInfo(run.File()).completeBaseName();
    const bool usual = ownName.compare(App().App_Title, Qt::CaseInsensitive) == 0;
    const QString name = usual ? QString() : ownName + QLatin1Char('_');
    const QString today = Machine::Now().date().toString(Qt::ISODate);
    run.Copy_To(Copies_Folder() + QStringLiteral("zelqor_") + name + Version_For_Name(run.Conn_Str()) +
                QLatin1Char('_') + today + QStringLiteral(".db"));
}

bool Reaches(const Rung &rung, const QString &dialect)
{
    switch (rung.reach) {
    case Reach::File:
        return dialect == QLatin1String("0");
    case Reach::File_And_Server:
        return dialect == QLatin1String("0") || dialect == QLatin1String("1");
    case Reach::Every:
        break;
    }
    return true;
}

void Update_DB_Ver(const Ladder_Run &run)
{
    Trap(QStringLiteral("Update_DB_Ver_Alter"), [&] {
        // After a failure of the machine the next start has to run the rungs again.
        if (run.Trouble().number != 0)
            throw Run_Time_Error(run.Trouble().number, run.Trouble().description, run.Trouble().failure);
        const std::optional<QString> version = Stored_Version(run.Conn_Str());
        // A run over another file may meet one of a later program, which stays one.
        if (version && version->toLongLong() >= Version_Digits().toLongLong())
            return;
        run.Execute(Sql_Text(version ? Ladder_Sql::Update_Version : Ladder_Sql::Insert_Version, Version_Digits()));
    });
    Log_Mark(QStringLiteral("Update_DB_Ver"));
}
} // namespace

bool Need_Update_Db(const QString &connStr)
{
    const std::optional<QString> version = Stored_Version(connStr);
    Log_Mark(QStringLiteral("Need_Update_Db"));
    return !version || version->toLongLong() < Version_Digits().toLongLong();
}

bool Run_Ladder(const QString &connStr, const QString &dialect, const Ladder_Callbacks &callbacks)
{
    Ladder_Run run(connStr, callbacks);
    Keep_Copy(run);
    for (const Rung &rung : Ladder_Rungs()) {
        if (!Reaches(rung, dialect))
            continue;
        if (!Run_Rung(rung, run))
            return false;
        if (rung.mark != nullptr)
            Log_Mark(QString::fromUtf16(rung.mark));
    }
    Update_DB_Ver(run);
    Log_Mark(QStringLiteral("Update_DB_Ver "));
    return true;
}

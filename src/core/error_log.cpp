// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"

#include <QFile>

Pending_Error &Err()
{
    static Pending_Error pending;
    return pending;
}

void Set_Pending(const Run_Time_Error &error)
{
    Err() = {error.number, error.description, error.failure};
}

void Clear_Pending()
{
    Err() = {};
}

void Error_Log(const QString &source)
{
    if (Err().number == 0)
        return;
    const QString record = QStringLiteral(" \r\n"
                                          "     Version = %1\r\n"
                                          "     Number = %2\r\n"
                                          "Description = %3\r\n"
                                          "     Source = %4\r\n"
                                          "       Time = %5\r\n"
                                          " \r\n"
                                          "----------------------------\r\n")
                               .arg(Version_Digits(), QString::number(Err().number), Err().description, source,
                                    Database_Engine::Short_Date(Machine::Now()));
    Clear_Pending();
    QFile file(App().App_Path + QStringLiteral("Error.log"));
    if (file.open(QIODevice::Append))
        file.write(record.toUtf8());
}

void Log_Mark(const QString &mark)
{
    Error_Log(mark);
}

void Log_Mark_Off(const QString & /*mark*/) {}

namespace
{
struct Failure_Text {
    Failure failure;
    const char16_t *key;
};

constexpr Failure_Text Failure_Texts[] = {
    {Failure::File_Not_Found, u"_File_Not_Found"},
    {Failure::Path_Access, u"_Path_Access"},
    {Failure::Disk_Full, u"_Disk_Full"},
    {Failure::Read_Only, u"_Read_Only"},
    {Failure::Locked, u"_Locked"},
    {Failure::Not_A_Database, u"_Not_A_Database"},
    {Failure::Damaged, u"_Damaged"},
    {Failure::Missing_Table, u"_Missing_Table"},
    {Failure::Too_Long, u"_Too_Long"},
    {Failure::Duplicate, u"_Duplicate"},
};
} // namespace

QString Error_Text(const Pending_Error &error)
{
    for (const Failure_Text &row : Failure_Texts) {
        if (row.failure != error.failure)
            continue;
        const QString text = Language().GetString(QStringLiteral("Error_Texts"), QString::fromUtf16(row.key));
        return text.isEmpty() ? error.description : text + QStringLiteral("\n") + error.description;
    }
    return error.description;
}

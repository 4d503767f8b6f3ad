// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"

#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/files/door.h"
#include "platform/machine/machine.h"

Pending_Error &Err()
{
    static thread_local Pending_Error pending;
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
    Resume_Next([&] { Files::Append_Bytes(App().App_Path + QStringLiteral("Error.log"), record.toUtf8()); });
    Clear_Pending();
}

void Log_Mark(const QString &mark)
{
    Error_Log(mark);
}

void Log_Mark_Off(const QString & /*mark*/) {}

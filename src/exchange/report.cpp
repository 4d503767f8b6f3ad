// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/report.h"

#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"

Report::Report(const QString &prefix)
{
    Files::Make_Directory(App().App_Path + QStringLiteral("report"));
    const QDateTime now = Machine::Now();
    const QDate day = now.date();
    const QTime time = now.time();
    m_path = App().App_Path + QStringLiteral("report\\") + prefix + QString::number(day.year()) +
             QString::number(day.month()) + QString::number(day.day()) + QString::number(time.hour()) +
             QString::number(time.minute() * time.second()) + QStringLiteral(".log");
}

void Report::Line(const QString &text) const
{
    Files::Append_Bytes(m_path, (QLatin1Char(' ') + text + QStringLiteral(" \r\n\r\n")).toUtf8());
}

QString Report_Time()
{
    return Database_Engine::Short_Date(Machine::Now());
}

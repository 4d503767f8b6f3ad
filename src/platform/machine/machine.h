// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>

/// What the machine and its user's locale answer.
namespace Machine
{
/// The present moment in local time, to the second; a test may fix it.
QDateTime Now();
void Fix_Clock(const QDateTime &moment);

/// The separator of the short date form: "-" on POSIX systems (ISO 8601); a test may set another.
QChar Date_Separator();
void Set_Date_Separator(QChar separator);

/// The default locale's id in the numbering of Windows language identifiers: 0x804 for simplified Chinese, 0x404
/// for traditional Chinese, else 0x409.
int Default_Locale_Id();

QString Computer_Name();
/// Hardware address of the first network interface that is no loopback, "" when there is none.
QString Network_Address();

/// Integer part of random() * `limit`, from a source seeded by the clock.
int Random_Below(int limit);
} // namespace Machine

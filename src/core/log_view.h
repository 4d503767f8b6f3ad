// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// One line of the system log, as the log window shows it.
struct Log_Line {
    QString type; ///< the type's name in the language in force
    QString text;
    QString user;
    QString date;
    QString network_address;
    QString computer;
};

/// The users whose lines can be asked for.
QStringList Log_Users();

/// The lines of the users whose name contains `user` (all with ""), of the days from `first` to `last`, both in the
/// short date form and both whole days; the latest line first.
/// @throws Run_Time_Error when the log cannot be read.
std::vector<Log_Line> Log_Lines(const QString &user, const QString &first, const QString &last);

/// Name of a log type as stored, "0" to "6"; "" for any other.
QString Log_Type_Text(const QString &typeId);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

/// Connection texts of data sources. One may come from anywhere: it names a driver or a data source that is set up on
/// this computer, and no file that the driver manager or a driver would load, run or write.
namespace Odbc_Text
{
using Parts = std::vector<std::pair<QString, QString>>;

/// The parts of an initialisation string, "name=value;name="quoted; value"", in their order.
Parts Parts_Of(const QString &text);
/// The ODBC connection string that the text of an .udl file means.
QString Connection_String(const QString &udlText);
/// The text of a data link file. @throws Run_Time_Error
QString Text_Of_File(const QString &name);
/// The parts of a connection string, each looked at. @throws Run_Time_Error, Failure::Missing_Component.
Parts Checked(const QString &connectionString, const QStringList &installedDrivers);
/// Parts as a connection string; a value that holds ";" stands in braces.
QString Joined(const Parts &parts);
} // namespace Odbc_Text

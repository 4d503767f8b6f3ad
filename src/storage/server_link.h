// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// The link to a library on a server, as the server dialog shows it and odbc.udl holds it.
struct Server_Link {
    QString server; ///< its name or address; several with "," between, the first one that can be written is taken
    QString port = QStringLiteral("5432");
    QString database;
    QString user;
    QString password;                              ///< "" to be asked for it at each start
    QString encryption = QStringLiteral("prefer"); ///< disable, prefer, require or verify-full
};

/// What stands behind a link.
enum class Server_State {
    Library,     ///< folders and documents
    Empty,       ///< no table: it becomes a library when it is chosen
    Other_Tables ///< tables of something else
};

/// The link that odbc.udl holds; what it does not say is as a new link has it.
Server_Link Present_Server_Link();
/// A value can stand in the file: it holds none of the signs that end one there.
bool Can_Be_Written(const Server_Link &link);
/// Writes odbc.udl, readable by its owner only. @throws Run_Time_Error
void Write_Server_Link(const Server_Link &link);
/// Looks what is behind a link that is not written yet. @throws Run_Time_Error when it cannot be reached.
Server_State Look_Behind(const Server_Link &link);

/// Makes the tables of a library in the server's database when it holds none; programs that come at once make them
/// once. @returns false for a file and where tables are. @throws Run_Time_Error
bool Make_Library_If_Empty(const QString &connStr);

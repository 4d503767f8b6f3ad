// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"
#include "platform/database/server_connection.h"

/// The kept connections, one per file and thread.
namespace Connection_Pool
{
/// What a connection string names.
struct Target {
    QString file;     ///< native path of a database file, or ""
    QString dataLink; ///< native path of an .udl file, or ""
};
/// @throws Run_Time_Error when it names neither.
Target Parse(const QString &connectionString);

/// The kept connection of a file, opened when there is none or when another file stands under the path now.
std::shared_ptr<Connection> Get(const QString &file);

/// The kept connection to the server that a data link names, made when there is none or when the link's text has
/// changed; null when another kind of data source is behind it. @throws Run_Time_Error
std::shared_ptr<Server_Connection> Get_Server(const QString &dataLink);

/// How long a statement waits for another program's lock, in milliseconds; tests make it short.
int Busy_Timeout();
void Set_Busy_Timeout(int milliseconds);
} // namespace Connection_Pool

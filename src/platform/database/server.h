// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

/// What a data source has that a database file has not. It is a server of the kind that the engine speaks with; other
/// data sources run statements as they stand.
namespace Database_Server
{
/// The connection string names a server that can be reached and that the engine speaks with. @throws Run_Time_Error
bool Is_Server(const QString &connectionString);
/// The installed driver for such servers. @throws Run_Time_Error, Failure::Missing_Component when there is none.
QString Driver();
/// The server's database holds no table of this kind yet. @throws Run_Time_Error
bool Is_Empty(const QString &connectionString);

/// The password that goes with a connection text which has none, for this run of the program; all threads know it.
void Set_Password(const QString &connectionString, const QString &password);
/// The data link holds a password itself.
bool Has_Password(const QString &connectionString);

/// Numbers of errors that only a server has (see Engine_Error).
inline constexpr qint32 Gone = static_cast<qint32>(0x800401FD);      ///< CO_E_OBJNOTCONNECTED
inline constexpr qint32 Denied = static_cast<qint32>(0x80040E4D);    ///< DB_SEC_E_AUTH_FAILED
inline constexpr qint32 Timed_Out = static_cast<qint32>(0x80040E31); ///< DB_E_ABORTLIMITREACHED

/// What this thread does while a statement is under way on a server: `told` gets the milliseconds that it takes so far,
/// some twenty times a second, and -1 at the end of one that was told of; false calls it off (Failure::Stopped).
void Set_Patience(std::function<bool(qint64 milliseconds)> told);

/// Queries that this thread will open in a moment: a server answers them together, in one round trip. Each answer waits
/// for its statement, letter for letter, until a table that it reads is written by this thread or a second has passed.
/// A file has nothing to wait for.
void Ask_Ahead(const QString &connectionString, const QStringList &statements);

/// Tables that others have changed since this was asked last through this connection string, by this thread; empty the
/// first time. One small statement. @throws Run_Time_Error
QStringList Changed_By_Others(const QString &connectionString);
/// Statements that went to servers so far, one round trip each.
qint64 Round_Trips();
} // namespace Database_Server

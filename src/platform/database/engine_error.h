// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

struct sqlite3;

/// The errors of the engine, one factory per kind: numbers, keys and sentences are chosen here only.
namespace Engine_Error
{
Run_Time_Error Syntax(const QString &detail);
Run_Time_Error Missing_Table(const QString &name);
Run_Time_Error Missing_Column(const QString &name);
Run_Time_Error Ambiguous_Column(const QString &name);
Run_Time_Error Type_Mismatch(const QString &detail);
Run_Time_Error Too_Long(const QString &column, int size);
Run_Time_Error File_Missing(const QString &path);
Run_Time_Error Not_A_Database(const QString &path, const QString &why);
Run_Time_Error Damaged(const QString &path);
Run_Time_Error Failed(const QString &what, Failure failure = Failure::Other);
Run_Time_Error Stopped();
Run_Time_Error Too_Large();
Run_Time_Error Duplicate(const QString &key);
Run_Time_Error No_Current_Row();
Run_Time_Error Row_Is_Gone();
Run_Time_Error Unknown_Field(const QString &name);
Run_Time_Error Closed();
Run_Time_Error Read_Only_Recordset();

/// The error for a server's SQLSTATE and message.
Run_Time_Error From_Server(const QString &state, const QString &message);
/// The error for a failed call on `db`, from its extended code.
Run_Time_Error From_Sqlite(sqlite3 *db, const QString &path);
} // namespace Engine_Error

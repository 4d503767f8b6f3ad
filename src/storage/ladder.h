// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

/// Brings a database of any earlier version up to the current schema. A rung does not know the version of the file:
/// it asks the file itself. So the ladder runs over a file of any age, one that was interrupted is finished by the
/// next run, and a run over a current file changes nothing.

struct Ladder_Callbacks {
    /// Shows the one-time upgrade window for a connection string; whether it finished.
    std::function<bool(const QString &connStr)> upgrade_window;
    /// Runs before each statement that changes the file, so that windows keep painting.
    std::function<void()> pause;
};

/// Whether a database is older than the program. One statement. A version above the program's is no reason to change
/// anything.
/// @throws Run_Time_Error 80040E37 when the table `Mess_Conf` is missing.
bool Need_Update_Db(const QString &connStr);

/// Runs the ladder over a database, which need not be the current one. `dialect` is that of Op_DB_Sql: "0" runs every
/// rung, "1" the recycle bin's and the common tail, anything else the tail.
/// A file that holds rows is copied to data\bak\ first, "zelqor_" + its version + "_" + today + ".db" (the file's name
/// stands before the version when it is another than Zelqor.db). A copy that exists is of before an interrupted run,
/// and stays.
/// @returns false when the user declined the one-time upgrade.
/// @throws Run_Time_Error when a copy cannot be made; the file is then as it was.
bool Run_Ladder(const QString &connStr, const QString &dialect, const Ladder_Callbacks &callbacks);

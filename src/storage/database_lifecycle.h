// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/settings.h"

#include <QString>

/// How the program finds, opens, makes, compacts, backs up and tidies its database.

/// The two steps of GetConfigInfo that belong here; Main() and the tests pass them on.
Database_Steps Database_Steps_For_Start();

/// Connection string of the file kind, and of the data source kind (odbc.udl in the program directory).
QString File_Conn_Str(const QString &path);
QString Source_Conn_Str();

/// Whether `Cate_Info` can be read through a connection string. Why it could not goes to App().Conn_Trouble.
bool Opening_Test(const QString &connStr);

/// Makes a new database file with all tables and no rows. A failed creation leaves no file.
/// @returns false after a failure, whose text is in App().Conn_Trouble.
bool CreateDataBase(const QString &path);

/// The full path that a database path stands for: the program directory is put before one that begins with "\\" or is
/// a plain name; one that stands by itself stays.
QString Full_Database_Path(const QString &path);

/// Full path of the database in the settings record: the program directory stands before one that has no drive and
/// no leading separator of its own root.
QString Database_Path();

/// Compacts a closed database. `path` and the answer ("Compact Ok" or "Compact No...") are the menu's; the second
/// argument "no" means that the target keeps the source's engine type.
/// @throws Run_Time_Error when the copy cannot be made or put in place; the database is then as it was.
QString Compact_Database(const QString &path, const QString &engineType);

/// The days since the last backup are enough and the database is a file.
bool Backup_Is_Due();
/// Copies the database to Backup_Path, "zelqor_" + today + ".db", and writes Backup_Date. A copy that fails is
/// recorded under "Frm_Main\BackUp" and the date moves on all the same.
void Back_Up();

/// Removes attachments without a document, then documents without a folder.
void Clean_Database();

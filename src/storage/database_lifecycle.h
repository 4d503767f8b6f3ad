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

/// The database of the settings is a file that is not there, and not the one that a new installation makes: whether
/// another one takes its place is for the user to say.
bool Database_Is_Gone();
/// Makes the database of a new installation the one in force, in the settings too; it is made when it is missing.
/// Whether it can be read goes to App().Conn_OK, why not to App().Conn_Trouble. @returns whether it was made
bool Use_Default_Database();

/// Native path of the database file in force, "" for a data source.
QString Database_Path();

/// Compacts the database at `path`. The answer ("Compact Ok" or "Compact No...") is the menu's; the second argument
/// "no" means that the target keeps the source's engine type.
/// @throws Run_Time_Error when it failed; the database is then as it was.
QString Compact_Database(const QString &path, const QString &engineType);

/// The days since the last backup are enough and the database is a file.
bool Backup_Is_Due();
/// Copies the database to Backup_Path, "zelqor_" + today + ".db", and writes Backup_Date.
/// @throws Run_Time_Error when there is no copy; the date is then as it was, so that the next exit tries again.
void Back_Up();

/// What a cleaning would remove.
struct Cleaning_Count {
    qint64 documents = 0;
    qint64 attachments = 0;
};
Cleaning_Count Count_For_Cleaning();
/// Copies the database to data\bak\. @returns the copy's path, "" for a data source. @throws Run_Time_Error
QString Copy_Before_Cleaning();
/// Removes attachments without a document, then documents without a folder.
void Clean_Database();

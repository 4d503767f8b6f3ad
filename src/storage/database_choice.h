// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Which database the program works with, as the database dialog shows and sets it.
struct Database_Choice {
    bool data_source = false;    ///< through odbc.udl, else a file
    bool server_dialect = false; ///< dates between "'", else between "#"
    QString path;                ///< as it is written to Config.ini; under the program directory when it is relative
    bool relative = true;        ///< relative names are looked for under the program directory at start
};

/// The choice that Config.ini holds.
Database_Choice Present_Database_Choice();

/// The path of the database that a new installation makes, relative or full.
QString Default_Database_Choice(bool relative);
/// The spelling of a path that fits the choice: below the program directory "\..." and the full path stand for each
/// other; any other path stays as it is.
QString Spelled_Path(const QString &path, bool relative);

/// Tests the chosen database. Why it cannot be read goes to App().Conn_Trouble.
bool Is_Usable(const Database_Choice &choice);
/// Tests the chosen database and, when it can be read, makes it the one in force: settings, date delimiter,
/// connection string and Config.ini. All statements from then on go to it. A relative path is written as a full one
/// when relative names are not looked for under the program directory, so that the next start finds the same file.
/// @returns false when it cannot be read, which is told in App().Conn_Trouble; nothing is changed then.
bool Apply_Database_Choice(const Database_Choice &choice);

/// Full path of odbc.udl, and the text in it ("" when there is none). Such files are UTF-16 with a byte order mark as
/// a rule.
QString Source_File_Path();
QString Source_File_Text();

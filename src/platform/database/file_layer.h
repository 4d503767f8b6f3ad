// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// How SQLite reaches the file system here: as it always does, but for what may lie beside a database.
///
/// A journal left by a killed program is played back by whoever opens the database next, so that one put there by
/// somebody else could have a file deleted that it names (the super-journal of sqlite.org/fileformat2.html, section
/// 3.1), or lead elsewhere by a link. This program writes no such journals; one that is found keeps the database from
/// being opened, and nothing is deleted.
namespace File_Layer
{
/// The name to give to sqlite3_open_v2().
const char *Name();
/// Why a database is not opened because of what lies beside it, "" when nothing speaks against it.
QString Trouble_Beside(const QString &database);
} // namespace File_Layer

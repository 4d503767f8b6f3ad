// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/long_rows.h"

#include <sqlite3.h>

namespace
{
/// What SQLite is built for where nothing else is said.
constexpr int Longest_Row = 1'000'000'000;
} // namespace

Long_Rows::Long_Rows(sqlite3 *db) : m_db(db), m_before(sqlite3_limit(db, SQLITE_LIMIT_LENGTH, Longest_Row)) {}

Long_Rows::~Long_Rows()
{
    sqlite3_limit(m_db, SQLITE_LIMIT_LENGTH, m_before);
}

qint64 Long_Rows::Longest()
{
    return Longest_Row;
}

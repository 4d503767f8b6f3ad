// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

struct sqlite3;

/// While it lives, rows may be written whose bytes are longer than a value that is read as a whole.
class Long_Rows
{
public:
    explicit Long_Rows(sqlite3 *db);
    ~Long_Rows();
    Long_Rows(const Long_Rows &) = delete;
    Long_Rows &operator=(const Long_Rows &) = delete;

    /// Bytes that a row can have at most.
    static qint64 Longest();

private:
    sqlite3 *m_db;
    int m_before;
};

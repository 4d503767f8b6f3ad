// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sqlite_cursor.h"

#include "platform/database/engine_error.h"
#include "platform/database/sqlite_cells.h"
#include "platform/database/watched_query.h"

#include <algorithm>
#include <sqlite3.h>

namespace
{
constexpr size_t Rows_At_Once = 64;
constexpr qint64 Bytes_At_Once = 1 << 20;
} // namespace

Sqlite_Cursor::Sqlite_Cursor(std::shared_ptr<Connection> connection, std::shared_ptr<Prepared_Statement> statement,
                             std::shared_ptr<const Plan> plan, std::optional<std::vector<qint64>> keys)
    : m_connection(std::move(connection)), m_statement(std::move(statement)), m_plan(std::move(plan)),
      m_keys(std::move(keys))
{
    m_connection->m_cursors.push_back(this);
}

Sqlite_Cursor::~Sqlite_Cursor()
{
    Finish();
    std::erase(m_connection->m_cursors, this);
}

bool Sqlite_Cursor::Reads(const QString &table) const
{
    return m_statement != nullptr &&
           std::any_of(m_plan->tables.begin(), m_plan->tables.end(),
                       [&table](const QString &one) { return one.compare(table, Qt::CaseInsensitive) == 0; });
}

void Sqlite_Cursor::Finish()
{
    if (m_statement != nullptr) {
        sqlite3_reset(m_statement->handle);
        m_statement->busy = false;
        m_statement.reset();
    }
}

void Sqlite_Cursor::Start()
{
    while (m_statement != nullptr && m_ahead.size() < Rows_At_Once && m_bytes < Bytes_At_Once) {
        Row row;
        if (Step(row)) {
            m_ahead.push_back(std::move(row));
        }
    }
}

void Sqlite_Cursor::Drain()
{
    try {
        Row row;
        while (m_statement != nullptr && Step(row)) {
            m_ahead.push_back(std::move(row));
        }
    } catch (const Run_Time_Error &error) {
        m_error = error;
    }
}

bool Sqlite_Cursor::Next(Row &row)
{
    if (!m_ahead.empty()) {
        row = std::move(m_ahead.front());
        m_ahead.pop_front();
        return true;
    }
    if (m_error) {
        throw *m_error;
    }
    return m_statement != nullptr && Step(row);
}

bool Sqlite_Cursor::Skip()
{
    if (!m_ahead.empty() || m_error) {
        Row row;
        return Next(row);
    }
    if (m_statement != nullptr && m_keys && m_nextKey < m_keys->size()) {
        ++m_nextKey;
        return true;
    }
    return m_statement != nullptr && Advance();
}

/// Goes to the row of the next number; a row that was deleted since is passed over.
bool Sqlite_Cursor::Advance_By_Key()
{
    while (m_nextKey < m_keys->size()) {
        Watched_Query::Between_Rows();
        sqlite3_reset(m_statement->handle);
        sqlite3_bind_int64(m_statement->handle, 1, (*m_keys)[m_nextKey++]);
        const int code = sqlite3_step(m_statement->handle);
        if (code == SQLITE_ROW) {
            return true;
        }
        if (code != SQLITE_DONE) {
            const Run_Time_Error error = m_connection->Error();
            Finish();
            throw error;
        }
    }
    Finish();
    return false;
}

bool Sqlite_Cursor::Advance()
{
    if (m_keys) {
        return Advance_By_Key();
    }
    const int code = sqlite3_step(m_statement->handle);
    if (code == SQLITE_DONE) {
        Finish();
        return false;
    }
    if (code != SQLITE_ROW) {
        const Run_Time_Error error = m_connection->Error();
        Finish();
        throw error;
    }
    return true;
}

bool Sqlite_Cursor::Step(Row &row)
try {
    if (!Advance()) {
        return false;
    }
    // Behind the outputs a row may carry its number, which a recordset that writes asks for.
    const int columns = static_cast<int>(m_plan->outputs.size()) + (m_plan->baseTable.isEmpty() ? 0 : 1);
    row.clear();
    row.reserve(static_cast<size_t>(columns));
    for (int i = 0; i < columns; ++i) {
        row.push_back(Sqlite_Cells::Column(m_statement->handle, i));
        m_bytes += sqlite3_column_bytes(m_statement->handle, i);
    }
    if (m_keys) {
        sqlite3_reset(m_statement->handle); // between its rows the file is free for others
    }
    return true;
} catch (const std::bad_alloc &) {
    Finish();
    throw Engine_Error::Too_Large();
}

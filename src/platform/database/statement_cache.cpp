// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/statement_cache.h"

#include "platform/database/sql_translator.h"

#include <sqlite3.h>

namespace
{
constexpr size_t Most_Statements = 128;
constexpr qsizetype Longest_Shape = 4096;
} // namespace

Prepared_Statement::~Prepared_Statement()
{
    sqlite3_finalize(handle);
}

std::shared_ptr<Prepared_Statement> Statement_Cache::Find(const QString &shape)
{
    const auto found = m_byShape.constFind(shape);
    if (found == m_byShape.constEnd())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return m_entries.front().second;
}

void Statement_Cache::Keep(const QString &shape, const std::shared_ptr<Prepared_Statement> &statement)
{
    if (!statement->plan->reusable || shape.size() > Longest_Shape)
        return;
    m_entries.emplace_front(shape, statement);
    m_byShape.insert(shape, m_entries.begin());
    if (m_entries.size() > Most_Statements) {
        m_byShape.remove(m_entries.back().first);
        m_entries.pop_back();
    }
}

void Statement_Cache::Clear()
{
    m_byShape.clear();
    m_entries.clear();
}

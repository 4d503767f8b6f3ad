// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/text_test.h"

#include "platform/database/key_query.h"
#include "platform/database/sql_tokens.h"
#include "platform/database/watched_query.h"

#include <algorithm>
#include <sqlite3.h>
#include <thread>

namespace
{
/// Few enough for a stop to be obeyed at once.
constexpr size_t Rows_At_Once = 64;
constexpr size_t Most_Threads = 8;
constexpr int Steps_Between_Looks = 1000;
constexpr qint64 Milliseconds_Between_News = 100;
/// More rows than a list shows of a search: what is found behind them is not told ahead.
constexpr size_t Enough_News = 500;
} // namespace

Text_Test::Text_Test(Connection &connection, const Plan &test, const std::vector<Token> &tokens,
                     std::vector<qint64> candidates)
    : m_connection(connection), m_test(test), m_tokens(tokens), m_candidates(std::move(candidates))
{
    const std::span<const qint64> all(m_candidates);
    for (size_t from = 0; from < all.size(); from += Rows_At_Once) {
        m_shares.push_back(all.subspan(from, std::min(Rows_At_Once, all.size() - from)));
    }
    std::reverse(m_shares.begin(), m_shares.end());
}

std::vector<qint64> Text_Test::Run()
{
    Watched_Query::Begin([done = m_done, all = static_cast<qint64>(m_candidates.size())] {
        return std::pair<qint64, qint64>(done->load(), all);
    });
    // What a transaction has written so far is seen by its own connection only.
    const size_t useful = m_connection.Has_Written() ? 1 : m_candidates.size() / Rows_At_Once;
    const size_t threads =
        std::clamp<size_t>(useful, 1, std::clamp<size_t>(std::thread::hardware_concurrency(), 1, Most_Threads));
    std::vector<std::thread> others;
    for (size_t i = 1; i < threads; ++i) {
        others.emplace_back([this] { Work_Beside(); });
    }
    std::optional<Run_Time_Error> error;
    const auto work = [this, &error] {
        try {
            Work(m_connection);
        } catch (const Run_Time_Error &own) {
            error = own;
            m_stop = true;
        }
    };
    work();
    for (std::thread &one : others) {
        one.join();
    }
    if (!m_stop) {
        work(); // what the others left
    }
    if (error || m_error) {
        throw error ? *error : *m_error;
    }
    return std::move(m_found);
}

/// A thread that can't open the file leaves everything to the others.
void Text_Test::Work_Beside()
{
    std::shared_ptr<Connection> connection;
    try {
        connection = Connection::Open_Beside(m_connection);
    } catch (const Run_Time_Error &) {
        return;
    }
    const auto isStopped = [](void *stop) {
        return static_cast<std::atomic<bool> *>(stop)->load() ? 1 : 0;
    };
    sqlite3_progress_handler(connection->Handle(), Steps_Between_Looks, isStopped, &m_stop);
    try {
        Work(*connection);
    } catch (const Run_Time_Error &error) {
        const std::lock_guard lock(m_mutex);
        if (error.failure != Failure::Locked && !m_stop.exchange(true)) {
            m_error = error;
        }
    }
}

void Text_Test::Work(Connection &connection)
{
    Prepared_Statement statement(std::make_shared<Plan>(m_test));
    connection.Make_Ready(statement, m_tokens);
    const int given = static_cast<int>(m_test.parameters.size()) + 1;
    while (!m_stop) {
        const std::span<const qint64> share = Take_Share();
        if (share.empty()) {
            break;
        }
        const QByteArray json = Key_Set::As_Json(share);
        sqlite3_bind_text64(statement.handle, given, json.constData(), static_cast<sqlite3_uint64>(json.size()),
                            SQLITE_STATIC, SQLITE_UTF8);
        std::vector<qint64> found;
        try {
            connection.Collect_Rows(statement, found);
        } catch (const Run_Time_Error &) {
            Leave_Share(share);
            throw;
        }
        m_done->fetch_add(static_cast<qint64>(share.size()));
        {
            const std::lock_guard lock(m_mutex);
            m_found.insert(m_found.end(), found.begin(), found.end());
        }
        if (m_early && &connection == &m_connection) {
            Tell();
        }
    }
}

void Text_Test::Tell()
{
    if (m_told >= Enough_News || (m_sinceTold.isValid() && !m_sinceTold.hasExpired(Milliseconds_Between_News))) {
        return;
    }
    std::vector<qint64> found;
    {
        const std::lock_guard lock(m_mutex);
        found.assign(m_found.begin(), m_found.begin() + static_cast<qsizetype>(std::min(m_found.size(), Enough_News)));
    }
    if (found.size() > m_told) {
        m_told = found.size();
        m_early(std::move(found));
        m_sinceTold.start();
    }
}

/// An empty one when there is none left.
std::span<const qint64> Text_Test::Take_Share()
{
    const std::lock_guard lock(m_mutex);
    std::span<const qint64> share;
    if (!m_shares.empty()) {
        share = m_shares.back();
        m_shares.pop_back();
    }
    return share;
}

void Text_Test::Leave_Share(std::span<const qint64> share)
{
    const std::lock_guard lock(m_mutex);
    m_shares.push_back(share);
}

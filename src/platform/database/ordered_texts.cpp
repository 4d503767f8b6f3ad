// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/ordered_texts.h"

#include <sqlite3.h>
#include <thread>

Ordered_Texts::Ordered_Texts(Connection &connection, const Key_Plan &plan, const Key_Set &rows)
    : m_connection(connection), m_plan(plan), m_rows(rows)
{
    // What a transaction has written so far is seen by its own connection only.
    const std::vector<qint64> &keys = rows.Keys();
    const bool alone = connection.Has_Written() || plan.textsOfIndex;
    const size_t threads = alone ? 1 : Text_Order::Threads_For(keys.size());
    m_shares.resize(threads);
    for (size_t i = 0; i < threads; ++i) {
        m_shares[i].first = keys[keys.size() * i / threads];
        m_shares[i].last = keys[keys.size() * (i + 1) / threads - 1];
    }
}

std::vector<qint64> Ordered_Texts::Rows()
{
    {
        std::vector<std::jthread> others;
        for (size_t i = 1; i < m_shares.size(); ++i) {
            others.emplace_back([this, i] { Read_Beside(m_shares[i]); });
        }
        Read(m_connection, m_shares.front());
    }
    for (Share &share : m_shares) {
        if (!share.done) {
            share.sorter = {};
            Read(m_connection, share);
        }
        if (&share != &m_shares.front()) {
            m_shares.front().sorter.Take(std::move(share.sorter));
        }
    }
    return m_shares.front().sorter.Rows(m_plan.descending);
}

void Ordered_Texts::Read_Beside(Share &share) const
{
    try {
        Read(*Connection::Open_Beside(m_connection), share);
    } catch (const Run_Time_Error &) {
        return; // the calling thread reads it, or fails in its turn
    }
}

void Ordered_Texts::Read(Connection &connection, Share &share) const
{
    auto plan = std::make_shared<Plan>();
    plan->sql = m_plan.texts;
    Prepared_Statement statement(plan);
    connection.Make_Ready(statement, {});
    if (!m_plan.textsOfIndex) {
        sqlite3_bind_int64(statement.handle, 1, share.first);
        sqlite3_bind_int64(statement.handle, 2, share.last);
    }
    connection.For_Each_Row(statement, [&](sqlite3_stmt *at) {
        const qint64 row = sqlite3_column_int64(at, 0);
        if (!m_rows.Has(row)) {
            return;
        }
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(at, 1));
        if (text == nullptr) {
            share.sorter.Add_Null(row);
        } else {
            share.sorter.Add(row, {text, static_cast<size_t>(sqlite3_column_bytes(at, 1))});
        }
    });
    share.sorter.Sort(m_shares.size() == 1 ? Text_Order::Threads_For(m_rows.Keys().size()) : 1);
    share.done = true;
}

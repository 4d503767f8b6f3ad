// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"

#include <QElapsedTimer>
#include <atomic>
#include <functional>
#include <mutex>
#include <span>

struct Token;

/// Which of many rows pass a test that reads their texts, found by as many threads as there are processors. The
/// calling thread is one of them and holds the file as it is; the others have connections of their own. A writer that
/// waits for the calling thread keeps them out: then they leave their share to it instead of waiting for the writer.
class Text_Test
{
public:
    /// @param candidates  row numbers, ascending
    Text_Test(Connection &connection, const Plan &test, const std::vector<Token> &tokens,
              std::vector<qint64> candidates);
    /// The calling thread is to hand over what was found so far: soon, and from time to time, until it is enough to
    /// fill a list.
    void Tell_Ahead(std::function<void(std::vector<qint64>)> early) { m_early = std::move(early); }
    /// @throws Run_Time_Error, Failure::Stopped from a watch among them.
    std::vector<qint64> Run();

private:
    void Work(Connection &connection);
    void Work_Beside();
    void Tell();
    [[nodiscard]] std::span<const qint64> Take_Share();
    void Leave_Share(std::span<const qint64> share);

    Connection &m_connection;
    const Plan &m_test;
    const std::vector<Token> &m_tokens;
    const std::vector<qint64> m_candidates;
    std::function<void(std::vector<qint64>)> m_early;
    size_t m_told = 0; ///< rows handed over so far
    QElapsedTimer m_sinceTold;
    std::atomic<bool> m_stop{false};
    const std::shared_ptr<std::atomic<qint64>> m_done = std::make_shared<std::atomic<qint64>>(0);
    std::mutex m_mutex;                            // of what follows
    std::vector<std::span<const qint64>> m_shares; ///< still to be tested, the next one at the end
    std::vector<qint64> m_found;
    std::optional<Run_Time_Error> m_error;
};

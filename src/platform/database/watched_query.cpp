// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/watched_query.h"

#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/engine_error.h"

#include <QThread>
#include <atomic>
#include <chrono>
#include <sqlite3.h>

namespace
{
/// Steps of SQLite's machine between two looks: well under a millisecond unless single values are huge.
constexpr int Steps_Between_Looks = 1000;
constexpr int Wait_Milliseconds = 1;
/// How long a writer's wish stands: longer than the pause between two of its tries.
constexpr qint64 Wish_Stands_Milliseconds = 10;

std::atomic<qint64> Last_Wish{0};

qint64 Clock()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
}

Database_Engine::Watch *&Current_Watch()
{
    static thread_local Database_Engine::Watch *watch = nullptr;
    return watch;
}
} // namespace

void Watched_Query::Follow(sqlite3 *db)
{
    sqlite3_progress_handler(db, Steps_Between_Looks, Step, nullptr);
}

void Watched_Query::Begin(Progress progress)
{
    Database_Engine::Watch *watch = Current_Watch();
    if (watch != nullptr && !watch->m_progress)
        watch->m_progress = std::move(progress);
}

Watched_Query::Progress Watched_Query::Of_Statement(const std::shared_ptr<Prepared_Statement> &statement)
{
    sqlite3_stmt_status(statement->handle, SQLITE_STMTSTATUS_FULLSCAN_STEP, 1);
    return [statement] {
        return std::pair<qint64, qint64>(sqlite3_stmt_status(statement->handle, SQLITE_STMTSTATUS_FULLSCAN_STEP, 0), 0);
    };
}

bool Watched_Query::Is_Watched()
{
    return Current_Watch() != nullptr;
}

bool Watched_Query::Goes_On()
{
    const Database_Engine::Watch *watch = Current_Watch();
    if (watch == nullptr)
        return true;
    const auto [rows, all] = watch->m_progress ? watch->m_progress() : std::pair<qint64, qint64>(0, 0);
    return watch->m_step(rows, all);
}

void Watched_Query::Between_Rows()
{
    if (!Goes_On())
        throw Engine_Error::Stopped();
}

int Watched_Query::Step(void * /*unused*/)
{
    const bool wished = Clock() - Last_Wish.load(std::memory_order_relaxed) < Wish_Stands_Milliseconds;
    return (wished && Current_Watch() != nullptr) || !Goes_On() ? 1 : 0;
}

int Watched_Query::Wait_For_Lock(void * /*unused*/, int times)
{
    if (times * Wait_Milliseconds >= Connection_Pool::Busy_Timeout() || !Goes_On())
        return 0;
    if (Current_Watch() == nullptr)
        Last_Wish.store(Clock(), std::memory_order_relaxed);
    QThread::msleep(Wait_Milliseconds);
    return 1;
}

namespace Database_Engine
{
Watch::Watch(std::function<bool(qint64 rows, qint64 all)> step) : m_step(std::move(step))
{
    Current_Watch() = this;
}

Watch::~Watch()
{
    Current_Watch() = nullptr;
}
} // namespace Database_Engine

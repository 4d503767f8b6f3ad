// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/patience.h"

#include "platform/database/server.h"
#include "platform/database/watched_query.h"

#include <QElapsedTimer>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace
{
constexpr std::chrono::milliseconds Between_Looks{50};
constexpr int Looks_Between_Calls = 10; ///< one that comes before the work has begun in earnest is lost
constexpr qint64 Ended = -1;

using Told = std::function<bool(qint64 milliseconds)>;

Told &Told_Of_This_Thread()
{
    static thread_local Told told;
    return told;
}

/// Who is told may run statements; those wait without telling.
bool &Is_Telling()
{
    static thread_local bool telling = false;
    return telling;
}

bool Tell(qint64 milliseconds)
{
    const Told &told = Told_Of_This_Thread();
    if (!told) {
        return true;
    }
    Is_Telling() = true;
    const bool goesOn = told(milliseconds);
    Is_Telling() = false;
    return goesOn;
}
} // namespace

bool Patience::Wait_For(const std::function<void()> &work, const std::function<void()> &callOff)
{
    if (!Watched_Query::Is_Watched() && (!Told_Of_This_Thread() || Is_Telling())) {
        work();
        return true;
    }
    std::mutex mutex;
    std::condition_variable ended;
    bool done = false;
    std::thread worker([&] {
        work();
        const std::scoped_lock lock(mutex);
        done = true;
        ended.notify_one();
    });
    QElapsedTimer since;
    since.start();
    bool goesOn = true;
    bool told = false;
    int looksSinceCall = 0;
    std::unique_lock lock(mutex);
    while (!ended.wait_for(lock, Between_Looks, [&] { return done; })) {
        lock.unlock();
        told = true;
        goesOn = goesOn && Watched_Query::Goes_On() && Tell(since.elapsed());
        if (!goesOn && looksSinceCall++ % Looks_Between_Calls == 0) {
            callOff();
        }
        lock.lock();
    }
    lock.unlock();
    worker.join();
    if (told) {
        Tell(Ended);
    }
    return goesOn;
}

void Database_Server::Set_Patience(std::function<bool(qint64)> told)
{
    Told_Of_This_Thread() = std::move(told);
}

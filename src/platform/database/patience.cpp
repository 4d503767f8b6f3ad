// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/patience.h"

#include "platform/database/server.h"
#include "platform/database/watched_query.h"

namespace
{
using Told = std::function<bool(qint64 milliseconds)>;

Told &Told_Of_This_Thread()
{
    static thread_local Told told;
    return told;
}

/// What is told may run statements of its own; those wait without telling.
bool &Is_Telling()
{
    static thread_local bool telling = false;
    return telling;
}
} // namespace

bool Patience::Is_Asked()
{
    return Watched_Query::Is_Watched() || (Told_Of_This_Thread() && !Is_Telling());
}

bool Patience::Goes_On() const
{
    if (!Watched_Query::Goes_On()) {
        return false;
    }
    const Told &told = Told_Of_This_Thread();
    if (!told) {
        return true;
    }
    Is_Telling() = true;
    const bool goesOn = told(m_since.elapsed());
    Is_Telling() = false;
    return goesOn;
}

void Database_Server::Set_Patience(std::function<bool(qint64)> told)
{
    Told_Of_This_Thread() = std::move(told);
}

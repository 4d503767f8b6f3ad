// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"

/// What stands between a watch, the queries of its thread and the writers of other threads.
struct Watched_Query {
    /// To be called before a query's first step: the first one under a watch is the one that is watched.
    static void Begin(sqlite3 *db, const std::shared_ptr<Prepared_Statement> &statement);
    /// Waits a little for the lock of another program or thread, asking this program's watched queries to give way.
    /// SQLite's busy handler: 0 gives up.
    static int Wait_For_Lock(void *unused, int times);

private:
    static int Step(void *unused);
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"

#include <functional>
#include <utility>

/// What stands between a watch, the queries of its thread and the writers of other threads.
struct Watched_Query {
    /// Rows that were looked at, and how many there are (0 while that is not known).
    using Progress = std::function<std::pair<qint64, qint64>()>;
    /// Puts the queries of a connection under the watches of its thread.
    static void Follow(sqlite3 *db);
    /// To be called before a query's first step: the first one under a watch is the one that says how far it is.
    static void Begin(Progress progress);
    /// The progress of a compiled statement that walks over a table.
    static Progress Of_Statement(const std::shared_ptr<Prepared_Statement> &statement);
    /// To be called between rows that cost few steps each. @throws Failure::Stopped when the watch was stopped.
    static void Between_Rows();
    /// Waits a little for the lock of another program or thread, asking this program's watched queries to give way
    /// (a watched one asks nobody). SQLite's busy handler: 0 gives up.
    static int Wait_For_Lock(void *unused, int times);
    /// This thread has a watch.
    static bool Is_Watched();
    /// The watch of this thread, if there is one, has not stopped its queries.
    static bool Goes_On();

private:
    static int Step(void *unused);
};

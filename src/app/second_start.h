// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QFileSystemWatcher>
#include <functional>

/// What a second start of the program leaves to the first one before it ends: it writes a file that the first one
/// watches, so that this one's window comes forward. No socket is needed, and where nothing can be written the second
/// start just ends.
class Second_Start
{
public:
    /// For the first: `told` runs each time the program was started once more.
    explicit Second_Start(const std::function<void()> &told);
    /// For the second.
    static void Tell();

private:
    QFileSystemWatcher m_watcher;
};

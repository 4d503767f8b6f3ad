// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QThread>
#include <condition_variable>
#include <memory>
#include <mutex>

/// Makes the engine's own indexes on a file that came without them, unseen and after a while: in a thread with a
/// connection of its own, one index after the other, each whole or not at all. It gives way to whoever else wants the
/// file, at once, and begins that index anew when there is rest. Statements are right without the indexes, only slower.
class Index_Worker
{
public:
    /// Does nothing where another worker of this program has the file.
    explicit Index_Worker(const QString &path);
    /// Stops in the middle of an index and waits until the file is free.
    ~Index_Worker();
    Index_Worker(const Index_Worker &) = delete;
    Index_Worker &operator=(const Index_Worker &) = delete;

private:
    void Work();
    /// False when the worker is to end.
    bool Rest();
    [[nodiscard]] bool Is_Stopped();

    QString m_path;
    std::mutex m_mutex;
    std::condition_variable m_woken;
    bool m_stop = false;
    std::unique_ptr<QThread> m_thread;
};

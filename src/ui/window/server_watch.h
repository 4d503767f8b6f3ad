// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QStringList>
#include <QThread>
#include <QTimer>
#include <atomic>

/// Asks a library on a server from time to time what others have changed, in a thread of its own, so that the window
/// never waits for the answer. A database in a file is not asked.
class Server_Watch : public QObject
{
    Q_OBJECT

public:
    explicit Server_Watch(QObject *parent);
    ~Server_Watch() override;

signals:
    /// Others have changed these tables; told when nobody is dragging, choosing from a menu or answering a box.
    void Changed(const QStringList &tables);
    /// The server is there again after it was not: whatever is shown may be old.
    void Back();
    /// The server cannot be reached.
    void Lost();

private:
    struct Answer {
        bool reached = true;
        QStringList tables;
    };
    void Ask();
    void Take(const Answer &answer);
    void Tell();

    QThread m_thread;
    QObject m_there; ///< lives in the thread
    QTimer m_clock;
    QStringList m_news; ///< not told yet
    bool m_asking = false;
    bool m_lost = false;
    bool m_back = false; ///< not told yet
    std::atomic<bool> m_ends{false};
};

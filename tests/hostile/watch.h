// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>

#include <sys/inotify.h>
#include <unistd.h>

/// Tells whether a file of a folder is opened while it lives.
class Watch
{
public:
    explicit Watch(const QString &folder) : m_watch(inotify_init1(IN_NONBLOCK))
    {
        for (const QString &name : QDir(folder).entryList(QDir::Files | QDir::System))
            inotify_add_watch(m_watch, qPrintable(folder + QLatin1Char('/') + name), IN_OPEN);
    }
    ~Watch() { close(m_watch); }
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

    [[nodiscard]] bool Has_Seen_One() const
    {
        inotify_event event{};
        return read(m_watch, &event, sizeof event) > 0;
    }

private:
    int m_watch;
};

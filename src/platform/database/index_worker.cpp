// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/index_worker.h"

#include "platform/database/connection.h"
#include "platform/database/database.h"
#include "platform/database/ddl.h"

#include <chrono>
#include <set>

namespace
{
/// The first window comes before; and a writer who was let through has done what he wanted.
constexpr std::chrono::milliseconds Rest_Between_Tries{1500};

/// The files at which this program is working.
class Files_At_Work
{
public:
    bool Take(const QString &path)
    {
        const std::lock_guard lock(m_mutex);
        return m_paths.insert(path).second;
    }
    void Leave(const QString &path)
    {
        const std::lock_guard lock(m_mutex);
        m_paths.erase(path);
    }

private:
    std::mutex m_mutex;
    std::set<QString> m_paths;
};

Files_At_Work &At_Work()
{
    static Files_At_Work files;
    return files;
}
} // namespace

Index_Worker::Index_Worker(const QString &path) : m_path(path)
{
    if (At_Work().Take(path)) {
        m_thread.reset(QThread::create([this] { Work(); }));
        m_thread->start(); // no lower in rank: it could not give way in time
    }
}

Index_Worker::~Index_Worker()
{
    if (m_thread == nullptr) {
        return;
    }
    {
        const std::lock_guard lock(m_mutex);
        m_stop = true;
    }
    m_woken.notify_all();
    m_thread->wait();
    At_Work().Leave(m_path);
}

bool Index_Worker::Rest()
{
    std::unique_lock lock(m_mutex);
    return !m_woken.wait_for(lock, Rest_Between_Tries, [this] { return m_stop; });
}

bool Index_Worker::Is_Stopped()
{
    const std::lock_guard lock(m_mutex);
    return m_stop;
}

void Index_Worker::Work()
{
    const Database_Engine::Watch watch([this](qint64, qint64) { return !Is_Stopped(); });
    while (Rest()) {
        try {
            const std::shared_ptr<Connection> connection = Connection::Open_For_Indexes(m_path);
            while (Ddl::Make_Next_Index(*connection)) {
            }
            return;
        } catch (const Run_Time_Error &error) {
            if (error.failure != Failure::Stopped && error.failure != Failure::Locked) {
                return; // a file that takes no index is none the worse for it
            }
        }
    }
}

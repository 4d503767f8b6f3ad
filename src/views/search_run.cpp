// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search_run.h"

#include "core/error_log.h"
#include "platform/database/database.h"

#include <QElapsedTimer>

namespace
{
constexpr qint64 Milliseconds_Between_Reports = 60;
constexpr unsigned long Pause_For_Writer = 20;
/// A search that was stopped so often by writers takes its turn at last.
constexpr int Most_Times_Given_Way = 50;
} // namespace

Search_Run::~Search_Run()
{
    Forget();
}

void Search_Run::Start(const QString &where, const QString &searchKey, int limit)
{
    Forget();
    m_stop = false;
    auto outcome = std::make_shared<Search_Outcome>();
    m_thread.reset(QThread::create([this, where, searchKey, limit, setting = List_Setting::Now(), outcome] {
        Run(where, searchKey, limit, setting, *outcome);
    }));
    connect(m_thread.get(), &QThread::finished, this, [this, outcome] {
        m_thread->wait();
        m_thread.reset();
        if (m_stop) {
            // A stop that came when the rows were already found counts too.
            outcome->stopped = true;
            outcome->found = {};
        }
        emit Finished(outcome);
    });
    m_thread->start();
}

void Search_Run::Forget()
{
    if (m_thread == nullptr)
        return;
    disconnect(m_thread.get(), nullptr, this, nullptr);
    m_stop = true;
    m_thread->wait();
    m_thread.reset();
}

void Search_Run::Run(const QString &where, const QString &searchKey, int limit, const List_Setting &setting,
                     Search_Outcome &outcome)
{
    for (int tries = 1;; ++tries) {
        try {
            Search_Once(where, searchKey, limit, setting, outcome);
            return;
        } catch (const Run_Time_Error &error) {
            outcome.found = {};
            outcome.stopped = error.failure == Failure::Stopped && m_stop;
            if (outcome.stopped)
                return;
            if (error.failure != Failure::Stopped || tries > Most_Times_Given_Way) {
                outcome.error = {error.number, error.description, error.failure};
                return;
            }
            QThread::msleep(Pause_For_Writer);
        }
    }
}

void Search_Run::Search_Once(const QString &where, const QString &searchKey, int limit, const List_Setting &setting,
                             Search_Outcome &outcome)
{
    QElapsedTimer sinceReport;
    sinceReport.start();
    const Database_Engine::Watch watch([&](qint64 rows, qint64 all) {
        if (sinceReport.elapsed() >= Milliseconds_Between_Reports) {
            sinceReport.restart();
            emit Progressed(rows, all);
        }
        return !m_stop;
    });
    outcome.found = Rows_By_Condition(where, searchKey, limit, setting);
}

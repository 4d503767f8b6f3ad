// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search_run.h"

#include "core/error_log.h"
#include "platform/database/database.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <utility>

namespace
{
constexpr qint64 Milliseconds_Between_Reports = 60;
constexpr unsigned long Pause_For_Writer = 20;
} // namespace

Search_Run::~Search_Run()
{
    Forget();
}

void Search_Run::Start(const QString &where, const QString &searchKey, int limit)
{
    const Request request{where, searchKey, limit, List_Setting::Now()};
    if (m_thread == nullptr)
        return Begin(request);
    m_stop = true;
    m_next = request;
}

void Search_Run::Stop()
{
    m_stop = true;
    m_next.reset();
}

void Search_Run::Forget()
{
    Stop();
    if (m_thread == nullptr)
        return;
    m_thread->wait();
    m_thread.reset();
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall); // its news on their way, that of its end among them
}

void Search_Run::Begin(const Request &request)
{
    m_stop = false;
    auto outcome = std::make_shared<Search_Outcome>();
    m_thread.reset(QThread::create([this, request, outcome] {
        Run(request, *outcome);
        Database_Engine::Let_Go();
    }));
    connect(m_thread.get(), &QThread::finished, this, [this, outcome] { End(outcome); });
    m_thread->start();
}

void Search_Run::End(const std::shared_ptr<Search_Outcome> &outcome)
{
    m_thread->wait();
    m_thread.reset();
    if (m_next)
        return Begin(*std::exchange(m_next, std::nullopt));
    if (m_stop) {
        // A stop that came when the rows were already found counts too.
        outcome->stopped = true;
        outcome->found = {};
    }
    emit Finished(outcome);
}

void Search_Run::Run(const Request &request, Search_Outcome &outcome)
{
    for (;;) {
        try {
            Search_Once(request, outcome);
            return;
        } catch (const Run_Time_Error &error) {
            outcome.found = {};
            if (m_stop)
                return;
            if (error.failure != Failure::Stopped) {
                outcome.error = {error.number, error.description, error.failure};
                return;
            }
            QThread::msleep(Pause_For_Writer);
        }
    }
}

/// From the thread to the window, by way of this object, which can take it back.
template <class News>
void Search_Run::Tell(News &&news)
{
    QMetaObject::invokeMethod(
        this,
        [this, news = std::forward<News>(news)] {
            if (!m_stop)
                news();
        },
        Qt::QueuedConnection);
}

void Search_Run::Search_Once(const Request &request, Search_Outcome &outcome)
{
    QElapsedTimer sinceReport;
    sinceReport.start();
    const Database_Engine::Watch watch([&](qint64 rows, qint64 all) {
        if (sinceReport.elapsed() >= Milliseconds_Between_Reports) {
            sinceReport.restart();
            Tell([this, rows, all] { emit Progressed(rows, all); });
        }
        return !m_stop;
    });
    outcome.found = Rows_By_Condition(
        request.where, request.searchKey, request.limit, request.setting, [this](Condition_Rows found) {
            Tell([this, early = std::make_shared<Condition_Rows>(std::move(found))] { emit Found_Early(early); });
        });
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/server_watch.h"

#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/database/server.h"
#include "platform/errors/run_time_error.h"

#include <QApplication>

namespace
{
constexpr int Between_Questions = 2000; // milliseconds

/// A menu, a box or a drag is not to be disturbed.
bool Is_User_Busy()
{
    return QApplication::activePopupWidget() != nullptr || QApplication::activeModalWidget() != nullptr ||
           QApplication::mouseButtons() != Qt::NoButton;
}
} // namespace

Server_Watch::Server_Watch(QObject *parent) : QObject(parent)
{
    m_there.moveToThread(&m_thread);
    connect(&m_clock, &QTimer::timeout, this, &Server_Watch::Ask);
    m_clock.start(Between_Questions);
}

Server_Watch::~Server_Watch()
{
    m_ends = true;
    m_thread.quit();
    m_thread.wait();
}

void Server_Watch::Ask()
{
    Tell();
    const QString connection = App().Conn_Str;
    if (m_asking || connection.isEmpty() || !Database_Engine::File_Of(connection).isEmpty())
        return;
    if (!m_thread.isRunning())
        m_thread.start();
    m_asking = true;
    QMetaObject::invokeMethod(&m_there, [this, connection] {
        Answer answer;
        Database_Server::Set_Patience([this](qint64 /*milliseconds*/) { return !m_ends; });
        try {
            answer.tables = Database_Server::Changed_By_Others(connection);
        } catch (const Run_Time_Error &error) {
            answer.reached = error.number != Database_Server::Gone;
        }
        QMetaObject::invokeMethod(this, [this, answer] { Take(answer); });
    });
}

void Server_Watch::Take(const Answer &answer)
{
    m_asking = false;
    if (!answer.reached && !m_lost)
        emit Lost();
    m_back = m_back || (answer.reached && m_lost);
    m_lost = !answer.reached;
    for (const QString &table : answer.tables) {
        if (!m_news.contains(table))
            m_news << table;
    }
    Tell();
}

void Server_Watch::Tell()
{
    if ((m_news.isEmpty() && !m_back) || Is_User_Busy())
        return;
    if (std::exchange(m_back, false))
        emit Back();
    const QStringList news = std::exchange(m_news, {});
    if (!news.isEmpty())
        emit Changed(news);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/server_wait.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/database/server.h"

#include <QApplication>
#include <QEvent>
#include <QProgressDialog>
#include <QScopedValueRollback>

namespace
{
constexpr qint64 Said_After = 500; // milliseconds
} // namespace

Server_Wait::Server_Wait(QObject *parent) : QObject(parent)
{
    Database_Server::Set_Patience([this](qint64 milliseconds) { return Waits(milliseconds); });
}

Server_Wait::~Server_Wait()
{
    Database_Server::Set_Patience({});
}

bool Server_Wait::Waits(qint64 milliseconds)
{
    if (milliseconds < Said_After) {
        m_box.reset(); // of a statement that has ended
        return true;
    }
    if (m_box == nullptr) {
        m_box = std::make_unique<QProgressDialog>(Pack_Text("Main", "_Server_Waits"), Pack_Text("Main", "_Server_Stop"),
                                                  0, 0, QApplication::activeWindow());
        m_box->setWindowTitle(App().App_Title);
        m_box->setWindowModality(Qt::ApplicationModal);
        m_box->setMinimumDuration(0);
        m_box->show();
    }
    const QScopedValueRollback waiting(m_waiting, true);
    qApp->installEventFilter(this);
    QApplication::processEvents();
    qApp->removeEventFilter(this);
    return !m_box->wasCanceled();
}

/// What a timer would do might begin another statement; it comes again when the wait is over.
bool Server_Wait::eventFilter(QObject *watched, QEvent *event)
{
    const bool ofBox =
        m_box != nullptr && (watched == m_box.get() || m_box->isAncestorOf(qobject_cast<QWidget *>(watched)));
    return (m_waiting && event->type() == QEvent::Timer && !ofBox) || QObject::eventFilter(watched, event);
}

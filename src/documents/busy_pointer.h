// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCursor>
#include <QGuiApplication>
#include <QThread>

/// The busy mouse pointer for as long as it lives. Work in a thread of its own leaves the pointer alone.
class Busy_Pointer
{
public:
    Busy_Pointer()
    {
        if (m_shown)
            QGuiApplication::setOverrideCursor(QCursor(Qt::WaitCursor));
    }
    ~Busy_Pointer()
    {
        if (m_shown)
            QGuiApplication::restoreOverrideCursor();
    }
    Busy_Pointer(const Busy_Pointer &) = delete;
    Busy_Pointer &operator=(const Busy_Pointer &) = delete;

private:
    const bool m_shown = QThread::currentThread() == QCoreApplication::instance()->thread();
};

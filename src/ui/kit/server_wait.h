// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <memory>

class QProgressDialog;

/// While a statement of the window's thread is under way on a server the window goes on painting, and after half a
/// second it says that it waits and lets the user call it off. Nothing else happens meanwhile: input goes to that box
/// alone, and timers wait.
class Server_Wait : public QObject
{
public:
    explicit Server_Wait(QObject *parent);
    ~Server_Wait() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// @returns false when it is to be called off
    bool Waits(qint64 milliseconds);

    std::unique_ptr<QProgressDialog> m_box;
    bool m_waiting = false;
};

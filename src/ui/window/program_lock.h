// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>

class QAction;
class QWidget;
class frmLogin;

/// Hides every window of the program until a user logs in. It asks nothing, saves nothing and gives nothing up: windows
/// keep what is typed in them, and a question that waits for its answer goes on waiting. What opens meanwhile is kept
/// back too. It locks by command, by a key that is heard in every window, and after the idle minutes of the settings.
class Program_Lock : public QObject
{
    Q_OBJECT

public:
    /// @param command  whose keys lock from every window
    Program_Lock(QWidget &main, const QAction &command);
    ~Program_Lock() override;

    /// Nothing happens when the current user has no row any more: nobody could come back.
    void Lock();
    [[nodiscard]] bool Is_Locked() const { return m_locked; }
    /// What other programs show and the lock cannot hide; asked when it locks.
    std::function<QStringList()> Left_Outside;
    /// Shows the login in front.
    void Bring_Back();

signals:
    void About_To_Lock();
    void Unlocked();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Hide_Windows();
    void Hide(QWidget &window);
    void Keep_Back(QWidget &window);
    void Show_Login();
    void Unlock();
    [[nodiscard]] bool Is_Foreign(const QWidget &window) const;
    void Count_Idle_Time();

    QWidget &m_main;
    const QAction &m_command;
    QTimer m_idle;
    std::unique_ptr<frmLogin> m_login;
    QList<QPointer<QWidget>> m_hidden; ///< the one on top first
    bool m_locked = false;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <QThread>
#include <memory>

/// A virtual X server with a window manager.
class Desktop
{
public:
    Desktop();
    ~Desktop();
    Desktop(const Desktop &) = delete;
    Desktop &operator=(const Desktop &) = delete;

    [[nodiscard]] bool Is_Up() const { return !m_display.isEmpty(); }
    [[nodiscard]] QProcessEnvironment Environment() const;
    /// Runs xdotool with these arguments. @returns what it prints
    QString Do(const QStringList &arguments) const;
    /// Presses keys, as "ctrl+s".
    void Key(const QString &keys) const { Do({QStringLiteral("key"), keys}); }
    void Type(const QString &text) const
    {
        Do({QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("2"), text});
    }
    /// Saves a picture of the screen.
    void Shoot(const QString &path) const;

private:
    QProcess m_server;
    QProcess m_manager;
    QString m_display;
};

/// One program directory with a copy of the built program, and the process that runs in it.
class Program
{
public:
    explicit Program(const Desktop &desktop);
    ~Program();
    Program(const Program &) = delete;
    Program &operator=(const Program &) = delete;

    [[nodiscard]] QString Directory() const { return m_directory.path(); }
    [[nodiscard]] QString Path(const QString &name) const { return m_directory.filePath(name); }
    void Start(const QStringList &extraEnvironment = {});
    /// The main window as it is on screen, "" when it is not.
    [[nodiscard]] QString Visible_Window() const;
    /// Waits for the visible main window, brings it to the front. @returns its id, "" when it did not come
    QString Wait_For_Window(int milliseconds = 20000) const;
    [[nodiscard]] bool Is_Running() const { return m_process != nullptr && m_process->state() != QProcess::NotRunning; }
    [[nodiscard]] qint64 Process_Id() const { return m_process->processId(); }
    void Kill();
    /// Asks the program to leave by its shortcut. @returns whether it ended by itself in time
    bool Leave(int milliseconds = 15000);

    /// Puts settings, as "Tree_LastKey=001", into the section [Col] of the settings file of a program that has ended.
    void Set(const QStringList &settings) const;
    /// What the sqlite3 shell answers for the database of the directory.
    QString Sql(const QString &statement) const;

private:
    const Desktop &m_desktop;
    QTemporaryDir m_directory;
    std::unique_ptr<QProcess> m_process;
};

/// Waits until `condition` holds. @returns whether it came to hold
template <class Condition>
bool Wait_Until(Condition &&condition, int milliseconds = 10000)
{
    for (int waited = 0; waited < milliseconds; waited += 50) {
        if (condition())
            return true;
        QThread::msleep(50);
    }
    return condition();
}

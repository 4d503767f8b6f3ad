// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <memory>

class Frm_About;
class Frm_Main;
class Second_Start;

/// Brings the program up in its fixed order, and holds its windows while it runs.
class Start_Up
{
public:
    Start_Up();
    ~Start_Up();

    /// Runs the order; any run-time error in it takes the failure path.
    /// @returns whether the program lives on in a window; false ends the process.
    bool Main();
    /// After Main() was false: the user chose another database, and the program is to start anew.
    [[nodiscard]] bool Wants_Restart() const { return m_restart; }

private:
    /// @returns false when the user declined the one-time upgrade or cancelled the login
    bool Bring_Up();
    /// @returns whether start-up goes on with a database that was made instead
    bool Replace_Lost_Database();
    void Show_Splash();
    bool Log_In();
    void Show_Main();
    bool Fail(qint32 number, const QString &description);
    bool Choose_Other_Database();

    bool m_restart = false;
    std::unique_ptr<Frm_About> m_about;
    std::unique_ptr<Frm_Main> m_main;
    std::unique_ptr<Second_Start> m_second;
};

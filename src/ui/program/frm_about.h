// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <QTimer>
#include <memory>

namespace Ui
{
class Frm_About;
}

/// The window that greets while the program starts, and the one behind the menu's "about".
class Frm_About : public QDialog
{
    Q_OBJECT

public:
    enum class Role { Splash, About };

    /// Applies the language and proves that what the interface is made of is there.
    /// @throws Run_Time_Error 339 naming what is missing.
    explicit Frm_About(Role role = Role::Splash, QWidget *parent = nullptr);
    ~Frm_About() override;

    /// Off at first; started, it lets the state line show that the start goes on, with a pulse of dots behind it.
    QTimer Tmr_State;

    /// The hidden control that start-up passes the last login's name through.
    void Set_Login_Uname(const QString &name);
    [[nodiscard]] QString Login_Uname() const;

private:
    void Set_State(const QString &state);
    void Load_Lang();
    void Show_Title();
    void Tmr_State_Timer();

    std::unique_ptr<Ui::Frm_About> m_ui;
    QString m_state;
    int m_ticks = 0;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_About")};
};

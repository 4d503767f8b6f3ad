// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <cstddef>
#include <memory>

namespace Ui
{
class frmLogin;
}
enum class Login_Result;

/// Asks for a user's name and password, at start and after a lock. Accepted: the user is the current one. There is no
/// other way back: cancelling ends the program, after a question.
class frmLogin : public QDialog
{
    Q_OBJECT

public:
    /// @param userName  the name in the box at first; a null one is replaced by the last login's
    explicit frmLogin(QWidget *parent = nullptr, const QString &userName = {});
    ~frmLogin() override;

    void reject() override;
    /// A sentence below the boxes, "" for none.
    void Tell(const QString &text);
    /// True once for each box that this window is about to open, so that one of its own can be told from others.
    [[nodiscard]] bool Opens_Box();

    /// What a cancelled login does: closes the database and ends the process. A test may put its own in place.
    static void (*End_Program)();

private:
    void Load_Lang();
    void Offer_Names(const QString &userName);
    void cmdOK_Click();
    void Try();
    void Answer(Login_Result result);
    void Refuse(const char *key);
    void Let_Type(bool on);

    std::unique_ptr<Ui::frmLogin> m_ui;
    std::size_t m_wrong = 0; ///< tries so far
    bool m_opensBox = false;
    ctrlLanguage Lang{*this, QStringLiteral("frmLogin")};
};

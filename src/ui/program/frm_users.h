// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

namespace Ui
{
class Frm_Users;
}
class QLineEdit;
enum class User_Refusal;
struct User;

/// Shows the users of the database and changes them. It views one user, or takes in a new one between the two clicks of
/// Cmd_New.
class Frm_Users : public QDialog
{
    Q_OBJECT

public:
    explicit Frm_Users(QWidget *parent = nullptr);
    ~Frm_Users() override;

private:
    enum class Mode { Viewing, Adding };
    struct Field {
        QLineEdit *box;
        QString User::*text;
    };
    void Load_List();
    void Show_Chosen();
    void Cmd_New_Click();
    void Cmd_Apply_Click();
    void Cmd_Delete_Click();
    void Save_New();
    void Enter(Mode mode);
    void Show_User(const User &user);
    [[nodiscard]] User Typed() const;
    void Run(const char *source, const std::function<void()> &body);
    bool Refuse(User_Refusal refusal, const QString &name);
    void Tell_And_Log(const QString &text);

    std::unique_ptr<Ui::Frm_Users> m_ui;
    ctrlLanguage Lang{*this, QStringLiteral("Frm_Users")};
    std::vector<Field> m_fields;
    Mode m_mode = Mode::Viewing;
};

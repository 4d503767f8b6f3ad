// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_user_change_pwd.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/system_log.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_user_change_pwd.h"
#include "users/user_list.h"

namespace
{
const char *Refusal_Key(User_Refusal refusal)
{
    switch (refusal) {
    case User_Refusal::Special_Character:
        return "_SpecChar";
    case User_Refusal::Passwords_Differ:
        return "_PassChk";
    default:
        return "_PassOld";
    }
}
} // namespace

Frm_User_Change_PWD::Frm_User_Change_PWD(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_User_Change_PWD>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_User_Change_PWD::Cmd_Apply_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_User_Change_PWD::reject);
}

Frm_User_Change_PWD::~Frm_User_Change_PWD() = default;

void Frm_User_Change_PWD::Cmd_Apply_Click()
{
    Trap(
        QStringLiteral("Frm_User_Change_PWD\\Cmd_Apply_Click"), [this] { Change(); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Critical); });
}

void Frm_User_Change_PWD::Change()
{
    const User_Refusal refusal =
        Change_Password(m_ui->Txt_Old_PWD->text(), m_ui->Txt_New_PWD->text(), m_ui->Txt_New_PWD2->text());
    if (refusal == User_Refusal::None) {
        const QString done = Lang.GetString("_PassOk");
        Prompts::Message(done, App().App_Title);
        Add_Log(Log_Type::Changed, done);
        return accept();
    }
    Prompts::Message(Lang.GetString(Refusal_Key(refusal)), App().App_Title, Prompts::Icon::Exclamation);
    if (refusal == User_Refusal::Wrong_Old_Password) { // the new one, not the old one
        m_ui->Txt_New_PWD->selectAll();
        m_ui->Txt_New_PWD->setFocus();
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/frm_login.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_login.h"
#include "users/login.h"

#include <cstdlib>

namespace
{
void Close_Database_And_Exit()
{
    Database_Engine::Let_Go();
    std::exit(0);
}

void Show_Error()
{
    Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Critical);
}
} // namespace

void (*frmLogin::End_Program)() = Close_Database_And_Exit;

frmLogin::frmLogin(QWidget *parent, const QString &userName) : QDialog(parent), m_ui(std::make_unique<Ui::frmLogin>())
{
    m_ui->setupUi(this);
    Load_Lang();
    Offer_Names(userName.isNull() ? Last_Login_Name() : userName);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmLogin::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmLogin::reject);
}

frmLogin::~frmLogin() = default;

void frmLogin::Load_Lang()
{
    Lang.LoadControlsCaption();
}

void frmLogin::Offer_Names(const QString &userName)
{
    Trap(QStringLiteral("frmLogin\\Form_Load"), [&] { m_ui->txtUserName->addItems(Login_Names()); });
    m_ui->txtUserName->setCurrentIndex(m_ui->txtUserName->findText(userName, Qt::MatchFixedString));
    m_ui->txtUserName->setEditText(userName);
    QWidget *first = userName.isEmpty() ? static_cast<QWidget *>(m_ui->txtUserName) : m_ui->txtPassword;
    first->setFocus();
}

void frmLogin::cmdOK_Click()
{
    Trap(
        QStringLiteral("frmLogin\\cmdOK_Click"),
        [&] { Answer(Try_Login(m_ui->txtUserName->currentText(), m_ui->txtPassword->text())); }, Show_Error);
}

void frmLogin::Answer(Login_Result result)
{
    const auto refuse = [&](const char *key) {
        Prompts::Message(Lang.GetString(key), App().App_Title, Prompts::Icon::Exclamation);
    };
    switch (result) {
    case Login_Result::Success:
        accept();
        break;
    case Login_Result::Special_Character:
        refuse("_SpecChar");
        break;
    case Login_Result::Unknown_User:
        refuse("_ErrorPass");
        break;
    case Login_Result::Wrong_Password:
        refuse("_ErrorPass");
        m_ui->txtPassword->selectAll();
        m_ui->txtPassword->setFocus();
        break;
    case Login_Result::Locked:
        refuse("_ErrorLock");
        break;
    }
}

void frmLogin::reject()
{
    const Prompts::Answer answer = Prompts::Ask(Lang.GetString("_IsExit"), App().App_Title, Prompts::Choice::Yes_No);
    if (answer == Prompts::Answer::Yes)
        End_Program();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_login.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_login.h"
#include "users/login.h"

#include <QTimer>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace
{
void Close_Database_And_Exit()
{
    Database_Engine::Let_Go();
    std::exit(0);
}

/// Milliseconds from a try to its answer, by the wrong tries before it.
constexpr int Waits[] = {0, 500, 1000, 2000, 4000};
} // namespace

void (*frmLogin::End_Program)() = Close_Database_And_Exit;

frmLogin::frmLogin(QWidget *parent, const QString &userName) : QDialog(parent), m_ui(std::make_unique<Ui::frmLogin>())
{
    m_ui->setupUi(this);
    Load_Lang();
    Tell({});
    Offer_Names(userName.isNull() ? Last_Login.Read() : userName);
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

void frmLogin::Tell(const QString &text)
{
    m_ui->Lab_Note->setText(text);
    m_ui->Lab_Note->setVisible(!text.isEmpty());
}

void frmLogin::cmdOK_Click()
{
    const int wait = Waits[std::min(m_wrong, std::size(Waits) - 1)];
    if (wait == 0)
        return Try();
    Let_Type(false);
    QTimer::singleShot(wait, this, [this] {
        Let_Type(true);
        Try();
    });
}

/// The keyboard stays in the password, where Enter does nothing meanwhile.
void frmLogin::Let_Type(bool on)
{
    m_ui->txtPassword->setFocus();
    m_ui->txtPassword->setReadOnly(!on);
    m_ui->txtUserName->setEnabled(on);
    m_ui->cmdOK->setEnabled(on);
}

void frmLogin::Try()
{
    Trap(
        QStringLiteral("frmLogin\\cmdOK_Click"),
        [&] { Answer(Try_Login(m_ui->txtUserName->currentText(), m_ui->txtPassword->text())); },
        [&] {
            m_opensBox = true;
            Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Critical);
        });
}

void frmLogin::Answer(Login_Result result)
{
    switch (result) {
    case Login_Result::Success:
        accept();
        break;
    case Login_Result::Special_Character:
        Refuse("_SpecChar");
        break;
    case Login_Result::Unknown_User: // nothing tells which of the two was wrong
    case Login_Result::Wrong_Password:
        ++m_wrong;
        m_ui->txtPassword->selectAll();
        m_ui->txtPassword->setFocus();
        Refuse("_ErrorPass");
        break;
    case Login_Result::Locked:
        Refuse("_ErrorLock");
        break;
    }
}

void frmLogin::Refuse(const char *key)
{
    m_opensBox = true;
    Prompts::Message(Lang.GetString(key), App().App_Title, Prompts::Icon::Exclamation);
}

bool frmLogin::Opens_Box()
{
    return std::exchange(m_opensBox, false);
}

void frmLogin::reject()
{
    m_opensBox = true;
    const Prompts::Answer answer = Prompts::Ask(Lang.GetString("_IsExit"), App().App_Title, Prompts::Choice::Yes_No);
    if (answer == Prompts::Answer::Yes)
        End_Program();
}

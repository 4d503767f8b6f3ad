// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_server.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "storage/server_link.h"
#include "ui_frm_server.h"

#include <QGuiApplication>

namespace
{
/// The ways of encryption, in the order of the box.
const QStringList Encryptions{QStringLiteral("prefer"), QStringLiteral("require"), QStringLiteral("verify-full"),
                              QStringLiteral("disable")};
} // namespace

Frm_Server::Frm_Server(QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Server>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    for (int i = 0; i < Encryptions.size(); ++i)
        m_ui->Cob_Encryption->addItem(Lang.GetString(QByteArray("_Encryption" + QByteArray::number(i)).constData()));
    m_ui->Txt_Server->setMinimumWidth(fontMetrics().averageCharWidth() * 44);
    m_ui->Lab_Result->setMinimumHeight(fontMetrics().lineSpacing() * 3);
    Show_Link(Present_Server_Link());
    connect(m_ui->Cmd_Test, &QPushButton::clicked, this, &Frm_Server::Cmd_Test_Click);
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_Server::Cmd_OK_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Server::reject);
}

Frm_Server::~Frm_Server() = default;

void Frm_Server::Show_Link(const Server_Link &link)
{
    m_ui->Txt_Server->setText(link.server);
    m_ui->Txt_Port->setText(link.port);
    m_ui->Txt_Database->setText(link.database);
    m_ui->Txt_User->setText(link.user);
    m_ui->Txt_Password->setText(link.password);
    m_ui->Cob_Encryption->setCurrentIndex(
        static_cast<int>(std::max<qsizetype>(Encryptions.indexOf(link.encryption), 0)));
}

Server_Link Frm_Server::Typed_Link() const
{
    return {m_ui->Txt_Server->text().trimmed(),   m_ui->Txt_Port->text().trimmed(),
            m_ui->Txt_Database->text().trimmed(), m_ui->Txt_User->text().trimmed(),
            m_ui->Txt_Password->text(),           Encryptions.value(m_ui->Cob_Encryption->currentIndex())};
}

bool Frm_Server::Check_Link(const Server_Link &link)
{
    const bool complete = !link.server.isEmpty() && !link.database.isEmpty() && !link.user.isEmpty();
    const QString trouble = !complete               ? Lang.GetString("_Incomplete")
                            : !Can_Be_Written(link) ? Lang.GetString("_Signs")
                                                    : QString();
    m_ui->Lab_Result->setText(trouble);
    return trouble.isEmpty();
}

void Frm_Server::Cmd_Test_Click()
{
    const Server_Link link = Typed_Link();
    if (!Check_Link(link))
        return;
    m_ui->Lab_Result->setText(Lang.GetString("_Testing"));
    m_ui->Lab_Result->repaint();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    Server_State state = Server_State::Library;
    const bool reached = Resume_Next([&] { state = Look_Behind(link); });
    QGuiApplication::restoreOverrideCursor();
    m_ui->Lab_Result->setText(!reached                         ? Error_Text(Err())
                              : state == Server_State::Empty   ? Lang.GetString("_Empty")
                              : state == Server_State::Library ? Lang.GetString("_Library")
                                                               : Lang.GetString("_Other"));
    Clear_Pending();
    adjustSize();
}

void Frm_Server::Cmd_OK_Click()
{
    const Server_Link link = Typed_Link();
    if (!Check_Link(link))
        return;
    if (Resume_Next([&] { Write_Server_Link(link); })) {
        accept();
        return;
    }
    Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation);
    Clear_Pending();
}

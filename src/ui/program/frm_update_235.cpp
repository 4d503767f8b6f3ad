// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/frm_update_235.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/yield.h"
#include "platform/prompts/prompts.h"
#include "storage/update_235.h"
#include "ui_frm_update_235.h"

Frm_Update_235::Frm_Update_235(QWidget *parent, const QString &connStr)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Update_235>()),
      m_connStr(connStr.isEmpty() ? App().Conn_Str : connStr)
{
    m_ui->setupUi(this);
    Load_Lang();
    Show_Total();
    connect(m_ui->Cmd_UpDate, &QPushButton::clicked, this, &Frm_Update_235::Cmd_UpDate_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Update_235::reject);
}

Frm_Update_235::~Frm_Update_235() = default;

void Frm_Update_235::Load_Lang()
{
    Lang.LoadControlsCaption();
}

void Frm_Update_235::Show_Total()
{
    App().Update_235_Done = false;
    Trap(QStringLiteral("Frm_Update_235\\Form_Load"), [&] { m_total = Update_235_Count(m_connStr); });
    m_ui->Lab_Total->setText(Lang.GetString("_Total") + QString::number(m_total) + QLatin1Char(']'));
}

void Frm_Update_235::Cmd_UpDate_Click()
{
    Set_Running(true);
    Trap(
        QStringLiteral("Frm_Update_235\\Cmd_UpDate_Click"),
        [&] {
            Update_235(m_connStr, [&](qint64 done) {
                m_ui->Lab_Wait->setText(Lang.GetString("_Wait") + QStringLiteral(" %1/%2").arg(done).arg(m_total));
                Yield();
            });
            App().Update_235_Done = true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Critical); });
    Set_Running(false);
    if (App().Update_235_Done)
        accept();
}

void Frm_Update_235::Set_Running(bool running)
{
    m_running = running;
    m_ui->Cmd_UpDate->setEnabled(!running);
    m_ui->Cmd_Exit->setEnabled(!running);
    m_ui->Lab_Wait->setText(running ? Lang.GetString("_Wait") : QString());
    Yield();
}

void Frm_Update_235::reject()
{
    if (!m_running)
        QDialog::reject();
}

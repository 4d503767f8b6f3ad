// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/frm_transfer_conflicts.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_transfer_conflicts.h"

Frm_Transfer_Conflicts::Frm_Transfer_Conflicts(const QStringList &lines, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Transfer_Conflicts>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Txt_Conflicts->setAccessibleName(windowTitle());
    m_ui->Txt_Conflicts->setPlainText(lines.join(QLatin1Char('\n')));
    connect(m_ui->Cmd_Save, &QPushButton::clicked, this, &Frm_Transfer_Conflicts::Cmd_Save_Click);
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_Transfer_Conflicts::accept);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Transfer_Conflicts::reject);
}

Frm_Transfer_Conflicts::~Frm_Transfer_Conflicts() = default;

void Frm_Transfer_Conflicts::Cmd_Save_Click()
{
    const QString path = Prompts::Save_File(windowTitle(), QString(), Lang.GetString("_TextFilter"));
    if (path.isEmpty())
        return;
    Trap(
        QStringLiteral("Frm_Transfer_Conflicts\\Cmd_Save"),
        [&] {
            Files::Write_Bytes(path, m_ui->Txt_Conflicts->toPlainText().toUtf8() + "\n");
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_nodes_pass.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_passwords.h"
#include "ui_frm_nodes_pass.h"

Frm_Nodes_Pass::Frm_Nodes_Pass(QString id, const QString &name, QWidget *parent)
    : QDialog(parent), m_id(std::move(id)), m_ui(std::make_unique<Ui::Frm_Nodes_Pass>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Lab_Node->setText(name + QStringLiteral(" (%1)").arg(m_id));
    connect(m_ui->Cmd_Save, &QPushButton::clicked, this, &Frm_Nodes_Pass::Cmd_Save_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Nodes_Pass::reject);
}

Frm_Nodes_Pass::~Frm_Nodes_Pass() = default;

void Frm_Nodes_Pass::Cmd_Save_Click()
{
    Trap(
        QStringLiteral("Frm_Nodes_Pass\\Cmd_Save_Click"), [&] { Save(); },
        [&] { Prompts::Message(Lang.GetString("_Error") + Error_Text(Err()), App().App_Title); });
}

void Frm_Nodes_Pass::Save()
{
    const auto tell = [&](const char *key, QLineEdit *field) {
        Prompts::Message(Lang.GetString(key, "Frm_Nodes_Pass"), App().App_Title);
        field->setFocus();
        field->selectAll();
    };
    if (m_ui->Txt_Pass_New->text().trimmed() != m_ui->Txt_Pass_New_Chk->text().trimmed())
        return tell("_ChkPass", m_ui->Txt_Pass_New_Chk);
    switch (Set_Folder_Password(m_id, m_ui->Txt_Pass_Old->text(), m_ui->Txt_Pass_New->text(),
                                m_ui->Chk_AsSame->isChecked())) {
    case Password_Change::Done:
        return accept();
    case Password_Change::No_Folder:
        return tell("_NoNode", m_ui->Txt_Pass_New);
    case Password_Change::Wrong_Old:
        return tell("_OldPass", m_ui->Txt_Pass_Old);
    case Password_Change::Not_Storable:
        return tell("_NotStorable", m_ui->Txt_Pass_New);
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/frm_goto.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "editor/text_editor.h"
#include "platform/prompts/prompts.h"
#include "ui_frm_goto.h"

frm_GoTo::frm_GoTo(Text_Editor &editor, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frm_GoTo>()), m_editor(editor)
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Lab_Total->setText(Filled(m_lang.GetString("_Total"), {QString::number(editor.Line_Count())}));
    m_ui->Txt_Line->setText(QString::number(editor.Line_Number()));
    m_ui->Txt_Line->selectAll();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frm_GoTo::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frm_GoTo::~frm_GoTo() = default;

void frm_GoTo::cmdOK_Click()
{
    if (!m_editor.Go_To_Line(m_ui->Txt_Line->text().trimmed().toInt())) {
        Prompts::Message(m_lang.GetString("_LineNo", "Frm_Main"), App().App_Title, Prompts::Icon::Exclamation);
        m_ui->Txt_Line->setFocus();
        m_ui->Txt_Line->selectAll();
        return;
    }
    accept();
    m_editor.setFocus();
}

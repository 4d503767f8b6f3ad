// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/writing/frm_insert_table.h"

#include "editor/table_commands.h"
#include "editor/text_editor.h"
#include "ui_frm_insert_table.h"

Frm_Insert_Table::Frm_Insert_Table(Text_Editor &editor, QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_Insert_Table>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    const Table_Commands::Shape usual;
    m_ui->Spn_Rows->setMaximum(Table_Commands::Most_Rows);
    m_ui->Spn_Columns->setMaximum(Table_Commands::Most_Columns);
    m_ui->Spn_Rows->setValue(usual.rows);
    m_ui->Spn_Columns->setValue(usual.columns);
    m_ui->Chk_Header->setChecked(usual.header);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, [this, &editor] {
        Table_Commands::Insert(editor,
                               {m_ui->Spn_Rows->value(), m_ui->Spn_Columns->value(), m_ui->Chk_Header->isChecked()});
        accept();
        editor.setFocus();
    });
}

Frm_Insert_Table::~Frm_Insert_Table() = default;

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_tag_add.h"

#include "core/trouble.h"
#include "ui_frm_tag_add.h"
#include "views/tags.h"

Frm_TagAdd::Frm_TagAdd(QWidget *parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::Frm_TagAdd>()), m_lang(*this, QStringLiteral("Frm_TagAdd"))
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    m_ui->Lab_Trouble->hide();
    m_ui->Lsv_Tags->Show(m_tags);
    m_ui->Lsv_Tags->setAccessibleName(windowTitle());
    m_ui->Lsv_Tags->setAcceptDrops(false);
    Load_Tags(m_tags);
    connect(m_ui->Cmd_New, &QPushButton::clicked, this, &Frm_TagAdd::Cmd_New_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_TagAdd::reject);
}

Frm_TagAdd::~Frm_TagAdd() = default;

void Frm_TagAdd::Cmd_New_Click()
{
    const QList<int> ids = Add_Tag_Words(m_ui->Txt_Tag->text(), m_tags);
    const QString trouble = Last_Trouble();
    m_ui->Lab_Trouble->setText(trouble);
    m_ui->Lab_Trouble->setVisible(!trouble.isEmpty());
    if (trouble.isEmpty())
        m_ui->Txt_Tag->clear();
    m_ui->Txt_Tag->setFocus();
    if (ids.isEmpty())
        return;
    m_ui->Lsv_Tags->Select(Tag_Key(ids.last()));
    emit Tags_Added();
}

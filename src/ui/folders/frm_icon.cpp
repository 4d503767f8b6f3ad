// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_icon.h"

#include "ui_icon_form.h"

Frm_icon::Frm_icon(const QString &icon, QWidget *parent) : QDialog(parent), m_ui(std::make_unique<Ui::Icon_Form>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->LV_Icon->setAccessibleName(windowTitle());
    m_ui->Lab_Trouble->hide();
    m_ui->LV_Icon->Fill();
    m_ui->LV_Icon->Select(icon);
    const auto enable = [this] {
        m_ui->Cmd_Apply->setEnabled(!m_ui->LV_Icon->Selected().isEmpty());
    };
    enable();
    connect(m_ui->LV_Icon, &QListWidget::currentRowChanged, this, enable);
    connect(m_ui->LV_Icon, &QListWidget::itemDoubleClicked, this, &Frm_icon::accept);
    connect(m_ui->Cmd_Add, &QPushButton::clicked, this, &Frm_icon::Cmd_Add_Click);
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_icon::accept);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_icon::reject);
}

Frm_icon::~Frm_icon() = default;

QString Frm_icon::Icon() const
{
    return m_ui->LV_Icon->Selected();
}

void Frm_icon::Cmd_Add_Click()
{
    const QString trouble = m_ui->LV_Icon->Add_Picture(Lang.GetString("_AddTitle"), Lang.GetString("_AddFilter"));
    m_ui->Lab_Trouble->setText(trouble);
    m_ui->Lab_Trouble->setVisible(!trouble.isEmpty());
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_node_icon.h"

#include "tree/folder_editing.h"
#include "tree/folder_trouble.h"
#include "ui_icon_form.h"

Frm_Node_Icon::Frm_Node_Icon(Tree_Model &tree, int node, QWidget *parent)
    : QDialog(parent), m_tree(tree), m_node(node), m_ui(std::make_unique<Ui::Icon_Form>())
{
    m_ui->setupUi(this);
    setWindowTitle(QStringLiteral("更换图标"));
    Lang.LoadControlsCaption();
    m_ui->LV_Icon->setAccessibleName(windowTitle());
    m_ui->Lab_Trouble->hide();
    m_ui->LV_Icon->Fill();
    m_ui->LV_Icon->Select(tree.Node(node).image);
    const auto enable = [this] {
        m_ui->Cmd_Apply->setEnabled(!m_ui->LV_Icon->Selected().isEmpty());
    };
    enable();
    connect(m_ui->LV_Icon, &QListWidget::currentRowChanged, this, enable);
    connect(m_ui->LV_Icon, &QListWidget::itemDoubleClicked, this, &Frm_Node_Icon::Cmd_Apply_Click);
    connect(m_ui->Cmd_Add, &QPushButton::clicked, this, &Frm_Node_Icon::Cmd_Add_Click);
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_Node_Icon::Cmd_Apply_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_Node_Icon::reject);
}

Frm_Node_Icon::~Frm_Node_Icon() = default;

void Frm_Node_Icon::Cmd_Add_Click()
{
    Show_Trouble(
        m_ui->LV_Icon->Add_Picture(Lang.GetString("_AddTitle", "Frm_icon"), Lang.GetString("_AddFilter", "Frm_icon")));
}

void Frm_Node_Icon::Cmd_Apply_Click()
{
    const QString icon = m_ui->LV_Icon->Selected();
    if (!icon.isEmpty() && Set_Node_Icon(m_tree, m_node, icon))
        return accept();
    Show_Trouble(Folder_Trouble());
    emit Failed();
}

void Frm_Node_Icon::Show_Trouble(const QString &trouble)
{
    m_ui->Lab_Trouble->setText(trouble);
    m_ui->Lab_Trouble->setVisible(!trouble.isEmpty());
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_re_name_ex.h"

#include "core/process_state.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "tree/folder_trouble.h"
#include "ui/folders/folder_icon_button.h"
#include "ui_folder_form.h"

Frm_ReName_Ex::Frm_ReName_Ex(Tree_Model &tree, int node, QWidget *parent)
    : QDialog(parent), m_tree(tree), m_node(node), m_id(GetKeyPart(tree.Node(node).key, Key_Part::After_Underscore)),
      m_oldName(Caption_Name(tree.Node(node).caption)), m_ui(std::make_unique<Ui::Folder_Form>())
{
    m_ui->setupUi(this);
    setWindowTitle(QStringLiteral("修改文件夹"));
    Lang.LoadControlsCaption();
    m_ui->Lab_Trouble->hide();
    Show_Folder();
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_ReName_Ex::Cmd_OK_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_ReName_Ex::reject);
}

Frm_ReName_Ex::~Frm_ReName_Ex() = default;

QString Frm_ReName_Ex::New_Name() const
{
    return m_ui->Txt_Name->text();
}

void Frm_ReName_Ex::Show_Folder()
{
    const int parent = std::max(m_tree.Node(m_node).parent, 0);
    m_ui->Lab_Cate->setText(Caption_Name(m_tree.Node(parent).caption));
    const auto facts = Read_Folder(m_id);
    const Folder_Facts shown = facts.value_or(Folder_Facts{m_oldName, m_tree.Node(m_node).image, {}, true});
    m_ui->Txt_Name->setText(shown.name);
    m_ui->Txt_Memo->setText(shown.memo);
    m_ui->Chk_Exp->setChecked(shown.expanded);
    // The root is no row: it has no remark to write and is always open.
    m_ui->Txt_Memo->setReadOnly(m_id.isEmpty());
    m_ui->Chk_Exp->setEnabled(!m_id.isEmpty());
    Folder_Icon_Button::Set_Up(*m_ui->Cmd_Icon, shown.icon);
    m_ui->Txt_Name->selectAll();
    m_ui->Txt_Name->setFocus();
}

void Frm_ReName_Ex::Cmd_OK_Click()
{
    const QString icon = Folder_Icon_Button::Icon(*m_ui->Cmd_Icon);
    if (icon.isEmpty())
        return Refuse(Lang.GetString("_LostIcon"));
    const QString name = Clean_Name(m_ui->Txt_Name->text());
    m_ui->Txt_Name->setText(name);
    if (name.contains(u'['))
        return Refuse(name + Lang.GetString("_SpecChar") + QStringLiteral("[ "));
    if (name.isEmpty())
        return Refuse(Lang.GetString("_LostName"));
    if (ReNameClass_Ex(m_id, m_oldName, name, m_ui->Txt_Memo->text(), m_tree, m_node, icon, m_ui->Chk_Exp->isChecked()))
        return accept();
    m_ui->Lab_Trouble->setText(Folder_Trouble());
    m_ui->Lab_Trouble->show();
    emit Failed();
    m_ui->Txt_Name->setFocus();
}

void Frm_ReName_Ex::Refuse(const QString &text)
{
    Prompts::Message(text, App().App_Title);
    m_ui->Txt_Name->setFocus();
}

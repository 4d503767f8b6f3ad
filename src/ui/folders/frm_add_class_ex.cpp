// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/frm_add_class_ex.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "tree/folder_trouble.h"
#include "ui/folders/folder_icon_button.h"
#include "ui_folder_form.h"

namespace
{
const QString First_Icon = QStringLiteral("BOOK.ICO");

/// The node that the new folder will lie below, for display.
int Parent_Of_New(const Tree_Model &tree, int node, bool asSibling)
{
    const bool folder = node >= 0 && Is_Folder_Key(tree.Node(node).key);
    return asSibling && folder ? tree.Node(node).parent : std::max(node, 0);
}
} // namespace

Frm_AddClass_Ex::Frm_AddClass_Ex(Tree_Model &tree, int node, bool asSibling, QWidget *parent)
    : QDialog(parent), m_tree(tree), m_node(node), m_asSibling(asSibling), m_ui(std::make_unique<Ui::Folder_Form>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Lab_Trouble->hide();
    if (tree.Node_Count() > 0)
        m_ui->Lab_Cate->setText(Caption_Name(tree.Node(Parent_Of_New(tree, node, asSibling)).caption));
    m_ui->Chk_Exp->setChecked(Is_On(&Settings_Record::CH_Exp_Node));
    Folder_Icon_Button::Set_Up(*m_ui->Cmd_Icon, First_Icon);
    m_ui->Txt_Name->setFocus();
    connect(m_ui->Cmd_OK, &QPushButton::clicked, this, &Frm_AddClass_Ex::Cmd_OK_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_AddClass_Ex::reject);
}

Frm_AddClass_Ex::~Frm_AddClass_Ex() = default;

QString Frm_AddClass_Ex::New_Name() const
{
    return m_ui->Txt_Name->text();
}

void Frm_AddClass_Ex::Cmd_OK_Click()
{
    const QString name = Clean_Name(m_ui->Txt_Name->text());
    m_ui->Txt_Name->setText(name);
    if (name.isEmpty())
        return Refuse(Lang.GetString("_ErrorName"));
    if (name.contains(u'['))
        return Refuse(name + Lang.GetString("_ErrorChar") + QStringLiteral(" [ "));
    const QString icon = Folder_Icon_Button::Icon(*m_ui->Cmd_Icon);
    if (icon.isEmpty())
        return Refuse(Lang.GetString("_ErrorPic"));
    const QString selected = m_node < 0 ? QString() : GetKeyPart(m_tree.Node(m_node).key, Key_Part::After_Underscore);
    m_newId = AddClass_Ex(selected, name, m_tree, icon, m_asSibling, m_ui->Txt_Memo->text(),
                          m_ui->Chk_Exp->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    if (!m_newId.isEmpty())
        return accept();
    m_ui->Lab_Trouble->setText(Folder_Trouble());
    m_ui->Lab_Trouble->show();
    emit Failed();
    m_ui->Txt_Name->setFocus();
}

void Frm_AddClass_Ex::Refuse(const QString &text)
{
    Prompts::Message(text, App().App_Title);
    m_ui->Txt_Name->setFocus();
}

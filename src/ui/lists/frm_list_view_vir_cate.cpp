// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/frm_list_view_vir_cate.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "tree/virtual_folders.h"
#include "ui/kit/node_delegate.h"
#include "ui_frm_list_view_vir_cate.h"

namespace
{
constexpr int Key_Role = Qt::UserRole;

/// Items are known by "A" and the folder's id.
QString Item_Key(const QString &id)
{
    return QLatin1Char('A') + id;
}
} // namespace

Frm_ListView_VirCate::Frm_ListView_VirCate(QString codeId, QWidget *parent)
    : QDialog(parent), m_codeId(std::move(codeId)), m_ui(std::make_unique<Ui::Frm_ListView_VirCate>())
{
    m_ui->setupUi(this);
    Lang.LoadControlsCaption();
    m_ui->Lab_Trouble->hide();
    m_ui->Trv_Cate->setModel(&m_tree);
    m_ui->Trv_Cate->setItemDelegate(new Node_Delegate(this));
    m_ui->Trv_Cate->setFocus();
    m_ui->Trv_Cate->setAccessibleName(Lang.GetString("_AllFolders"));
    m_ui->Lsv_Cate->setAccessibleName(windowTitle());
    Form_Load();
    connect(m_ui->Cmd_ToRight, &QPushButton::clicked, this, &Frm_ListView_VirCate::Cmd_ToRight_Click);
    connect(m_ui->Trv_Cate, &QTreeView::doubleClicked, this, &Frm_ListView_VirCate::Cmd_ToRight_Click);
    connect(m_ui->Cmd_ToLeft, &QPushButton::clicked, this, &Frm_ListView_VirCate::Cmd_ToLeft_Click);
    connect(m_ui->Cmd_Apply, &QPushButton::clicked, this, &Frm_ListView_VirCate::Cmd_Apply_Click);
    connect(m_ui->Cmd_Exit, &QPushButton::clicked, this, &Frm_ListView_VirCate::reject);
}

Frm_ListView_VirCate::~Frm_ListView_VirCate() = default;

void Frm_ListView_VirCate::Form_Load()
{
    GetClassInfo_Ex(m_tree, App().Conn_Str, QStringLiteral("Zelqor"));
    for (int i = 0; i < m_tree.Node_Count(); ++i)
        m_ui->Trv_Cate->setExpanded(m_tree.Index_Of(i), m_tree.Node(i).expanded);
    m_ui->Trv_Cate->setCurrentIndex(m_tree.Index_Of(0));
    Trap(
        QStringLiteral("Frm_ListView_VirCate\\Form_Load"),
        [&] {
            const Home_Folder home = Home_Of(m_codeId);
            m_homeId = home.id;
            m_ui->Lab_Title->setText(home.title);
            m_ui->Lab_CateName->setText(home.name);
            for (const Membership &one : Memberships_Of(m_codeId))
                Add_Item(Item_Key(one.id), one.name);
        },
        [this] { Show_Trouble(); });
}

void Frm_ListView_VirCate::Add_Item(const QString &key, const QString &name)
{
    for (int i = 0; i < m_ui->Lsv_Cate->topLevelItemCount(); ++i) {
        if (m_ui->Lsv_Cate->topLevelItem(i)->data(0, Key_Role).toString() == key)
            return;
    }
    auto *item = new QTreeWidgetItem(m_ui->Lsv_Cate, QStringList(name));
    item->setData(0, Key_Role, key);
}

void Frm_ListView_VirCate::Cmd_ToRight_Click()
{
    const int node = m_tree.Node_Of(m_ui->Trv_Cate->currentIndex());
    if (node < 0 || !Is_Folder_Key(m_tree.Node(node).key))
        return;
    Add_Item(Item_Key(GetKeyPart(m_tree.Node(node).key, Key_Part::After_Underscore)),
             Caption_Name(m_tree.Node(node).caption));
}

void Frm_ListView_VirCate::Cmd_ToLeft_Click()
{
    for (int i = m_ui->Lsv_Cate->topLevelItemCount() - 1; i >= 0; --i) {
        if (m_ui->Lsv_Cate->topLevelItem(i)->isSelected())
            delete m_ui->Lsv_Cate->takeTopLevelItem(i);
    }
}

void Frm_ListView_VirCate::Cmd_Apply_Click()
{
    QStringList folders;
    for (int i = 0; i < m_ui->Lsv_Cate->topLevelItemCount(); ++i)
        folders << m_ui->Lsv_Cate->topLevelItem(i)->data(0, Key_Role).toString().mid(1);
    const bool saved = Trap(
        QStringLiteral("Frm_ListView_VirCate\\Cmd_Apply_Click"),
        [&] {
            Save_Memberships(m_codeId, m_homeId, folders);
            return true;
        },
        [this] { Show_Trouble(); });
    if (saved)
        accept();
}

void Frm_ListView_VirCate::Show_Trouble()
{
    m_ui->Lab_Trouble->setText(Error_Text(Err()));
    m_ui->Lab_Trouble->show();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/tree_commands.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "documents/busy_pointer.h"
#include "platform/prompts/prompts.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "tree/folder_moving.h"
#include "tree/folder_order.h"
#include "tree/folder_removal.h"
#include "tree/folder_trouble.h"
#include "ui/folders/frm_add_class_ex.h"
#include "ui/folders/frm_node_choice.h"
#include "ui/folders/frm_node_icon.h"
#include "ui/folders/frm_nodes_pass.h"
#include "ui/folders/frm_nodes_search.h"
#include "ui/folders/frm_re_name_ex.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"

#include <QAction>
#include <QMap>
#include <QMenu>

/// One action: its name, design-time word, icon, key and handler; where its group ends a separator follows.
struct Tree_Commands::Command {
    const char *name;
    const char16_t *text;
    const char *icon;
    const char *shortcut;
    void (Tree_Commands::*run)();
    bool inMenu;
    bool endsGroup;
};

const Tree_Commands::Command Tree_Commands::Command_Table[] = {
    {"Mnu_Node_Add_Cur", u"新建同级文件夹(&A)...", "folder_beside", "Ctrl+Insert",
     &Tree_Commands::Cmd_Tree_Add_Cur_Call, true, false},
    {"Mnu_Node_Add_Next", u"新建下级文件夹(&S)...", "folder_below", "Insert", &Tree_Commands::Cmd_Tree_Add_Next_Call,
     true, false},
    {"Mnu_Node_LookUp", u"查找文件夹(&F)...", "find", "Ctrl+Alt+F", &Tree_Commands::Mnu_Node_LookUp_Click, true, true},
    {"Mnu_Node_Rename", u"重命名(&R)", "rename", "F2", &Tree_Commands::Cmd_Tree_Rename_Call, true, false},
    {"Mnu_Node_Modify", u"修改文件夹(&E)...", "folder_edit", "Shift+F2", &Tree_Commands::Cmd_Tree_Modi_Call, true,
     false},
    {"Mnu_Node_Icon", u"更换图标(&I)...", "picture", "", &Tree_Commands::Mnu_Node_Icon_Call, true, false},
    {"Mnu_Node_Pass", u"文件夹密码(&P)...", "lock", "", &Tree_Commands::Cmd_Mnu_Node_Pass_Click, true, true},
    {"Mnu_Node_Up", u"上移(&U)", "up", "F11", &Tree_Commands::Cmd_Node_Up_Call, true, false},
    {"Mnu_Node_Down", u"下移(&N)", "down", "F12", &Tree_Commands::Mnu_Node_Down_Click, true, false},
    {"Mnu_Node_Move", u"移动到(&M)...", "folder_move", "Ctrl+Shift+M", &Tree_Commands::Mnu_Node_Move_Click, true, true},
    {"Mnu_Node_Del", u"删除文件夹(&D)", "delete", "Delete", &Tree_Commands::Cmd_Tree_Del_Call, true, false},
    {"Mnu_Node_Clean", u"清空回收站(&C)", "clean", "", &Tree_Commands::Mnu_Node_Clean_Click, true, false},
    {"Cmd_Node_Down", u"下移", "down", "", &Tree_Commands::Cmd_Node_Down_Call, false, false},
};

Tree_Commands::Tree_Commands(Tree_Pane &pane, Shell &shell) : QObject(&pane), m_pane(pane), m_shell(shell)
{
    for (const Command &row : Command_Table) {
        auto *action = new QAction(Line_Icon(QLatin1String(row.icon)), QString::fromUtf16(row.text), &pane);
        action->setObjectName(QLatin1String(row.name));
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        action->setShortcutContext(Qt::WidgetShortcut);
        connect(action, &QAction::triggered, this, row.run);
        pane.addAction(action);
        if (row.inMenu)
            Command_Keys::Of_Program().Give(*action, Command_Keys::Place::Tree);
    }
}

void Tree_Commands::Fill_Menu(QMenu &menu) const
{
    for (const Command &row : Command_Table) {
        if (row.inMenu)
            menu.addAction(Action(row.name));
        if (row.endsGroup)
            menu.addSeparator();
    }
}

bool Tree_Commands::Popup(const QPoint &at)
{
    QMenu menu(&m_pane);
    Fill_Menu(menu);
    return menu.exec(at) != nullptr;
}

void Tree_Commands::Say(const QString &text, Log_Type type)
{
    m_shell.Set_Status(text);
    Add_Log(type, text);
}

void Tree_Commands::Say_Undoable(const QString &text, const std::function<void()> &undo)
{
    m_shell.Offer_Undo(text, undo);
    Add_Log(Log_Type::Changed, text);
}

void Tree_Commands::Take_Back(const QList<Document_Place> &places)
{
    const QStringList back = Put_Back(places);
    QMap<QString, QStringList> byFolder;
    for (const Document_Place &place : places) {
        if (back.contains(place.document))
            byFolder[place.folder] << place.document;
    }
    for (auto folder = byFolder.cbegin(); folder != byFolder.cend(); ++folder)
        m_shell.Documents_Moved(folder.value(), folder.key());
    m_pane.Update_Tree();
    Add_Log(Log_Type::Changed, Pack_Text("Frm_Main", "_Undone"));
}

bool Tree_Commands::Say_Trouble()
{
    const QString trouble = Folder_Trouble();
    if (!trouble.isEmpty())
        m_shell.Set_Status(trouble);
    return !trouble.isEmpty();
}

void Tree_Commands::Add(bool asSibling)
{
    Frm_AddClass_Ex form(m_pane.Model(), m_pane.Selected_Node(), asSibling, m_pane.window());
    connect(&form, &Frm_AddClass_Ex::Failed, this, &Tree_Commands::Say_Trouble);
    if (form.exec() != QDialog::Accepted)
        return;
    if (!In_Recycle_Bin(form.New_Id()))
        m_pane.Update_Tree();
    m_pane.Select_Folder(form.New_Id());
    emit m_pane.Folders_Changed();
    Say(Pack_Text("Frm_AddClass_Ex", "_SuccAdd") + form.New_Name(), Log_Type::Created);
}

void Tree_Commands::Cmd_Tree_Modi_Call()
{
    if (!m_pane.Has_Selection() || Refuses_Bin("_RecycleMod"))
        return;
    const QString old = Selected_Name();
    Frm_ReName_Ex form(m_pane.Model(), m_pane.Selected_Node(), m_pane.window());
    connect(&form, &Frm_ReName_Ex::Failed, this, &Tree_Commands::Say_Trouble);
    if (form.exec() != QDialog::Accepted)
        return;
    m_pane.setExpanded(m_pane.currentIndex(), m_pane.Tree().Node(m_pane.Selected_Node()).expanded);
    emit m_pane.Folders_Changed();
    Say(Pack_Text("Frm_ReName_Ex", "_ModNode") + form.New_Name() + Pack_Text("Frm_ReName_Ex", "_OldNode") + old);
}

void Tree_Commands::Cmd_Tree_Rename_Call()
{
    m_pane.Edit_Label();
}

void Tree_Commands::Cmd_Tree_Del_Call()
{
    if (!m_pane.Has_Selection() || Refuses_Bin("_RecycleDel"))
        return;
    const QString id = m_pane.Selected_Id();
    const QString name = Selected_Name();
    QString newId;
    if (!DelClass_Ex(id, m_pane.Selected_Node(), m_pane.Model(), &newId)) {
        Say_Trouble();
        return;
    }
    if (In_Recycle_Bin(id))
        m_pane.Recount(Parent_Id(id));
    else
        m_pane.Update_Tree();
    m_pane.Settle_On(Parent_Id(id));
    if (!newId.isEmpty())
        m_shell.Folder_Renumbered(id, newId);
    emit m_pane.Folders_Changed();
    Say(name + Pack_Text("Frm_Main", "_NodeDel"), Log_Type::Deleted);
}

void Tree_Commands::Mnu_Node_Clean_Click()
{
    const QString selected = m_pane.Selected_Id();
    if (!Clean_RecycleBin_Ex(m_pane.Model())) {
        Say_Trouble();
        return;
    }
    if (In_Recycle_Bin(selected))
        m_pane.Settle_On(Recycle_Bin_Id);
    else
        m_pane.Mark_Folder(selected);
    emit m_pane.Folders_Changed();
    Say(Pack_Text("Frm_Main", "_BinEmptied"), Log_Type::Deleted);
}

void Tree_Commands::Mnu_Node_Icon_Call()
{
    if (!m_pane.Has_Selection() || Refuses_Bin("_RecycleMod"))
        return;
    Frm_Node_Icon form(m_pane.Model(), m_pane.Selected_Node(), m_pane.window());
    connect(&form, &Frm_Node_Icon::Failed, this, &Tree_Commands::Say_Trouble);
    if (form.exec() != QDialog::Accepted)
        return;
    emit m_pane.Folders_Changed();
    Say(Pack_Text("Frm_Node_Icon", "_NodeIcon") + Selected_Name());
}

void Tree_Commands::Cmd_Mnu_Node_Pass_Click()
{
    const QString id = m_pane.Selected_Id();
    if (id.isEmpty() || Refuses_Bin("_RecyclePass"))
        return;
    Frm_Nodes_Pass form(id, Selected_Name(), m_pane.window());
    if (form.exec() != QDialog::Accepted)
        return;
    m_pane.Show_Locks();
    Say(Pack_Text("Frm_Nodes_Pass", "_PassOk") + Selected_Name());
}

void Tree_Commands::Mnu_Node_LookUp_Click()
{
    if (m_search.isNull()) {
        m_search = new Frm_Nodes_Search(m_pane.Tree(), m_pane.window());
        m_search->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_search, &Frm_Nodes_Search::Folder_Picked, &m_pane,
                [this](const QString &key) { m_pane.Select_Folder(GetKeyPart(key, Key_Part::After_Underscore)); });
    }
    m_search->show();
    m_search->raise();
    m_search->activateWindow();
}

void Tree_Commands::Cmd_Node_Up_Call()
{
    if (m_pane.Selected_Id().isEmpty())
        return Tell("_ErrorRoot");
    const Busy_Pointer busy;
    After_Reorder(Move_Node_Up(m_pane.Selected_Id()));
}

void Tree_Commands::Move_Down(const char *questionKey)
{
    if (m_pane.Selected_Id().isEmpty())
        return Tell("_ErrorRoot");
    const Busy_Pointer busy;
    After_Reorder(Move_Node_Down(m_pane.Selected_Id(), questionKey));
}

void Tree_Commands::After_Reorder(bool moved)
{
    if (moved) {
        m_pane.Update_Tree();
        emit m_pane.Folders_Changed();
    } else {
        Say_Trouble();
    }
}

void Tree_Commands::Mnu_Node_Move_Click()
{
    if (m_pane.Selected_Id().isEmpty())
        return Tell("_ErrorRoot");
    if (Refuses_Bin("_RecycleMove"))
        return;
    const QString key = m_pane.Tree().Node(m_pane.Selected_Node()).key;
    Frm_Node_Choice form(m_pane.Tree(), key, Selected_Name(), m_pane.window());
    if (form.exec() == QDialog::Accepted)
        Drop_On_Folder(m_pane.Tree().Find(key), m_pane.Tree().Find(form.Chosen_Key()));
}

void Tree_Commands::Move_Documents(const QStringList &codeIds)
{
    if (codeIds.isEmpty())
        return;
    const QString what = Pack_Text("Frm_Main", "_DocumentsToMove").arg(codeIds.size());
    Frm_Node_Choice form(m_pane.Tree(), {}, what, m_pane.window());
    if (form.exec() == QDialog::Accepted)
        Drop_Documents_On(codeIds, m_pane.Tree().Find(form.Chosen_Key()));
}

void Tree_Commands::Take_Drop(const Drop &drop)
{
    Trap(
        QStringLiteral("Frm_Main\\Trv_Code_Class_OLEDragDrop"), [&] { Sort_Drop(drop); },
        [this] { Tell("_Error", Error_Text(Err())); });
}

void Tree_Commands::Sort_Drop(const Drop &drop)
{
    const int target = m_pane.Tree().Find(drop.target);
    if (!drop.onNode || target < 0)
        return m_shell.Set_Status(Pack_Text("Frm_Main", "_NodeSel"));
    if (!drop.files.isEmpty())
        return Drop_Files(drop.files, target);
    if (!drop.documents.isEmpty())
        return Drop_Documents_On(drop.documents, target);
    if (drop.text.startsWith(QLatin1String("LIST")))
        return Drop_Documents_On(drop.text.mid(4).split(u'/', Qt::SkipEmptyParts), target);
    if (drop.text == Folder_Key(Recycle_Bin_Id))
        return Tell("_RecycleMove");
    const int node = m_pane.Tree().Find(drop.text);
    if (node >= 0 && Is_Folder_Key(drop.text))
        Drop_On_Folder(node, target);
}

void Tree_Commands::Drop_Files(const QStringList &files, int target)
{
    const Tree_Node &node = m_pane.Tree().Node(target);
    if (!Is_Folder_Key(node.key))
        return Tell("_NotoRoot", node.caption);
    Import(files, GetKeyPart(node.key, Key_Part::After_Underscore));
}

void Tree_Commands::Import(const QStringList &files, const QString &folderId)
{
    // An import that failed or was called off has told so itself.
    const int node = m_shell.Import_Files(files, folderId) > 0 ? m_pane.Tree().Find(Folder_Key(folderId)) : -1;
    if (node >= 0)
        Say(Caption_Name(m_pane.Tree().Node(node).caption) + Pack_Text("Frm_Main", "_ImportFileOk"),
            Log_Type::Imported);
}

void Tree_Commands::Drop_Documents_On(const QStringList &codeIds, int target)
{
    const Tree_Node &node = m_pane.Tree().Node(target);
    if (!Is_Folder_Key(node.key))
        return Tell("_NotoRoot", node.caption);
    const QList<Document_Place> before = Places_Of(codeIds);
    const auto moved = Drop_Documents(codeIds, m_pane.Tree(), target);
    if (!moved) {
        Say_Trouble();
        return;
    }
    m_shell.Documents_Moved(codeIds, moved->newFolder);
    Say_Undoable(moved->text, [this, before] { Take_Back(before); });
    m_pane.Recount(moved->oldFolder);
    m_pane.Recount(moved->newFolder);
}

void Tree_Commands::Drop_On_Folder(int node, int target)
{
    const QString caption = m_pane.Tree().Node(node).caption;
    const auto moved = Drop_Folder(m_pane.Tree(), node, target);
    if (!moved) {
        Say_Trouble();
        return;
    }
    m_pane.Update_Tree();
    // Before anything reads the folders anew: an id that is gone would leave an open document without a folder.
    m_shell.Folder_Renumbered(moved->oldFolder, moved->newFolder);
    Select_By_Caption(caption);
    emit m_pane.Folders_Changed();
    Say(moved->text);
}

/// By caption, not by key: of twins with the same name and count the first one wins.
void Tree_Commands::Select_By_Caption(const QString &caption)
{
    const Tree_Model &tree = m_pane.Tree();
    for (int i = 0; i < tree.Node_Count(); ++i) {
        if (tree.Node(i).caption != caption)
            continue;
        m_pane.Settle_On(GetKeyPart(tree.Node(i).key, Key_Part::After_Underscore));
        m_pane.expand(tree.Index_Of(i));
        return;
    }
}

QString Tree_Commands::Selected_Name() const
{
    const int node = m_pane.Selected_Node();
    return node < 0 ? QString() : Caption_Name(m_pane.Tree().Node(node).caption);
}

bool Tree_Commands::Refuses_Bin(const char *key)
{
    if (m_pane.Selected_Id() != Recycle_Bin_Id)
        return false;
    Tell(key);
    return true;
}

void Tree_Commands::Tell(const char *key, const QString &more) const
{
    Prompts::Message(Pack_Text("Frm_Main", key) + more, App().App_Title);
}

QAction *Tree_Commands::Action(const char *name) const
{
    return m_pane.findChild<QAction *>(QLatin1String(name), Qt::FindDirectChildrenOnly);
}

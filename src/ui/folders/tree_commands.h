// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/system_log.h"
#include "tree/document_places.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <functional>

class Frm_Nodes_Search;
class QAction;
class QMenu;
class QWidget;
class Shell;
class Tree_Pane;

/// What was dropped on the tree, and where.
struct Drop {
    QString target; ///< key of the node under the pointer
    bool onNode = false;
    QStringList files;
    QStringList documents;
    QString text; ///< a node's key, or "LIST" and document ids with "/" behind each
};

/// The commands of the folder tree: one table of actions, their menus, tool bar and handlers.
class Tree_Commands : public QObject
{
    Q_OBJECT

public:
    Tree_Commands(Tree_Pane &pane, Shell &shell);

    /// Puts the commands into a menu, in their groups.
    void Fill_Menu(QMenu &menu) const;
    /// Shows the menu. @returns whether a command was chosen
    bool Popup(const QPoint &at);

    void Take_Drop(const Drop &drop);
    /// Asks for a folder and moves documents there, as a drop of their rows would.
    void Move_Documents(const QStringList &codeIds);
    /// Stores files as documents of a folder; status line and log tell of those that were stored.
    void Import(const QStringList &files, const QString &folderId);

    /// Shows a text on the status line and logs it.
    void Say(const QString &text, Log_Type type = Log_Type::Changed);
    /// The same, with a way back.
    void Say_Undoable(const QString &text, const std::function<void()> &undo);
    /// Puts documents back to where they were.
    void Take_Back(const QList<Document_Place> &places);
    /// Shows why the last editing procedure failed. @returns whether it did
    bool Say_Trouble();

    void Cmd_Tree_Add_Cur_Call() { Add(true); }
    void Cmd_Tree_Add_Next_Call() { Add(false); }
    void Cmd_Tree_Modi_Call();
    void Cmd_Tree_Rename_Call();
    void Cmd_Tree_Del_Call();
    void Cmd_Node_Up_Call();
    void Cmd_Node_Down_Call() { Move_Down("_NodeUpdate"); }
    void Mnu_Node_Down_Click() { Move_Down("_NoSave"); }
    void Mnu_Node_Move_Click();
    void Mnu_Node_Icon_Call();
    void Cmd_Mnu_Node_Pass_Click();
    void Mnu_Node_LookUp_Click();
    void Mnu_Node_Clean_Click();

private:
    struct Command;
    static const Command Command_Table[];

    void Add(bool asSibling);
    void Move_Down(const char *questionKey);
    void After_Reorder(bool moved);
    void Sort_Drop(const Drop &drop);
    void Drop_On_Folder(int node, int target);
    void Drop_Documents_On(const QStringList &codeIds, int target);
    void Drop_Files(const QStringList &files, int target);
    void Select_By_Caption(const QString &caption);
    [[nodiscard]] QString Selected_Name() const;
    [[nodiscard]] bool Refuses_Bin(const char *key);
    void Tell(const char *key, const QString &more = {}) const;
    [[nodiscard]] QAction *Action(const char *name) const;

    Tree_Pane &m_pane;
    Shell &m_shell;
    QPointer<Frm_Nodes_Search> m_search;
};

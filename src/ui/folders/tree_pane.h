// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/folders/folder_model.h"
#include "ui/kit/ctrl_language.h"
#include "ui/kit/folder_tree_view.h"

#include <QSet>
#include <QTimer>

class Folder_Delegate;
class Shell;
class Tree_Commands;

/// The folder tree of the main window.
class Tree_Pane : public Folder_Tree_View
{
    Q_OBJECT

public:
    Tree_Pane(Shell &shell, QWidget *parent);
    ~Tree_Pane() override;

    /// Gives the tree the font and the background of the settings.
    void Apply_Look();
    /// Loads the tree anew with the nodes open that were, keeping the selection where it can.
    void Update_Tree();
    /// Selects the folder with that id; an unknown one leaves nothing selected. @returns whether it was found
    bool Select_Folder(const QString &id);
    /// Selects it without showing its documents.
    bool Mark_Folder(const QString &id);
    /// The same after what was chosen went: it is the folder that was used last.
    void Settle_On(const QString &id);
    /// "" for the root and when nothing is selected.
    [[nodiscard]] QString Selected_Id() const;
    [[nodiscard]] bool Has_Selection() const;
    /// Node of the selection, -1 for none.
    [[nodiscard]] int Selected_Node() const { return m_tree.Node_Of(currentIndex()); }
    /// Counts a folder and its ancestors anew.
    void Recount(const QString &id);
    /// Reads anew which folders are locked.
    void Show_Locks();
    [[nodiscard]] bool Is_Locked(const QString &id) const;

    /// The password that was accepted for a folder.
    [[nodiscard]] QString Accepted_Password(const QString &id) const;
    void Set_Accepted_Password(const QString &id, const QString &password);

    [[nodiscard]] const Tree_Model &Tree() const { return m_tree; }
    [[nodiscard]] Folder_Model &Model() { return m_tree; }
    [[nodiscard]] Tree_Commands &Commands() { return *m_commands; }
    /// Edits the selected node's name in place.
    void Edit_Label();

signals:
    /// The user chose a folder, or the root ("").
    void Folder_Chosen(const QString &id);
    /// Folders were added, renamed, moved or removed: what lists folders reads them anew.
    void Folders_Changed();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Current_Changed(const QModelIndex &current, const QModelIndex &previous);
    void Choose(const QModelIndex &index);
    void Show_Expansion();
    void Save_Status(const QModelIndex &index, bool expanded);
    void Label_Edited(int node, const QString &text);
    void Show_Drop_Target(const QModelIndex &index);
    void Hover(const QModelIndex &index);
    bool Show_Whole_Name(const QHelpEvent &event);
    /// A press on a button of the row under the pointer. @returns whether there was one
    bool Press_Button(const QMouseEvent &event);
    /// Shows the menu for a node; without a command what was chosen before is chosen again.
    void Show_Menu(const QModelIndex &node, const QModelIndex &before, const QPoint &at);
    [[nodiscard]] bool Takes(const QMimeData &carried) const;
    [[nodiscard]] QString Id_At(const QModelIndex &index) const;

    Shell &m_shell;
    Folder_Model m_tree;
    ctrlLanguage m_lang;
    Folder_Delegate *m_delegate;
    Tree_Commands *m_commands;
    QSet<QString> m_locked;
    QTimer m_hover; ///< how long a drag rests on a node
    bool m_loading = false;
    bool m_pressing = false;             ///< a button goes down
    QPersistentModelIndex m_beforePress; ///< what was chosen then
    bool m_choiceWaits = false;          ///< a press may begin a drag, so the choice waits for the release
};

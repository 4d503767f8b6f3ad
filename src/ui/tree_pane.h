// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/tree_model.h"

#include <QTreeView>

class Shell;

/// The folder tree of the main window.
class Tree_Pane : public QTreeView
{
    Q_OBJECT

public:
    Tree_Pane(Shell &shell, QWidget *parent);

    /// Loads the tree anew with the nodes open that were, keeping the selection where it can.
    void Update_Tree();
    /// Selects the folder with that id; an unknown one leaves nothing selected. @returns whether it was found
    bool Select_Folder(const QString &id);
    /// "" for the root and when nothing is selected.
    [[nodiscard]] QString Selected_Id() const;
    [[nodiscard]] bool Has_Selection() const;
    /// Counts a folder and its ancestors anew.
    void Recount(const QString &id);

    /// The password that was accepted for the selected folder.
    [[nodiscard]] QString Accepted_Password() const;
    void Set_Accepted_Password(const QString &password);

    [[nodiscard]] const Tree_Model &Tree() const { return m_tree; }

signals:
    /// The user chose a folder, or the root ("").
    void Folder_Chosen(const QString &id);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Show_Expansion();
    void Save_Status(const QModelIndex &index, bool expanded);
    [[nodiscard]] QString Id_At(const QModelIndex &index) const;

    Shell &m_shell;
    Tree_Model m_tree;
    bool m_loading = false;
};

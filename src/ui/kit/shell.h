// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_deletion.h"

#include <QString>
#include <QStringList>
#include <functional>

/// What the main window offers to its panes. A pane knows no other pane: it asks here.
class Shell
{
public:
    virtual ~Shell() = default;

    /// Shows a text on the status line.
    virtual void Set_Status(const QString &text) = 0;
    /// The same for what was just done, with a button that takes it back, until something else is told.
    virtual void Offer_Undo(const QString &done, const std::function<void()> & /*undo*/) { Set_Status(done); }
    /// Id of the folder that is selected in the tree, "" for the root or none.
    [[nodiscard]] virtual QString Selected_Folder() const = 0;
    /// Counts a folder's caption and its ancestors' anew.
    virtual void Folder_Changed(const QString &id) = 0;
    /// Reads a document's row in the list anew.
    virtual void Document_Changed(const QString &code_id) = 0;
    /// Opens a document in a tab, or selects the tab that has it.
    virtual void Open_Document(const QString &code_id) = 0;
    /// The same, with every place of a key marked and one on screen: `place` counts them from 0; -1 is the first one
    /// too.
    virtual void Open_Document_At(const QString &code_id, const QString &key, qint64 place) = 0;
    /// Whether a tab holds the document.
    [[nodiscard]] virtual bool Is_Open(const QString &code_id) const = 0;
    /// Id of the document on screen, "" for the list and for a document that is not stored yet.
    [[nodiscard]] virtual QString Document_On_Screen() const = 0;
    /// Asks in the words of a place, and moves documents to the recycle bin or deletes those that are in it; list, tree
    /// and tabs follow.
    virtual void Delete_Documents(const QStringList &ids, Asked_In place) = 0;
    /// Begins a new document in the selected folder.
    virtual void New_Document() = 0;
    /// The document before (-1) or behind (1) another one in the list, "" at its ends or when the list has it not.
    [[nodiscard]] virtual QString Neighbour(const QString &code_id, int step) const = 0;
    /// Selects a document's row in the list.
    virtual void Select_In_List(const QString &code_id) = 0;
    /// The settings of a document's panes were changed: the menu and the other documents follow.
    virtual void Panes_Changed() = 0;
    /// Stores files as documents of a folder and shows them in the list. @returns how many were stored
    virtual int Import_Files(const QStringList &paths, const QString &folderId) = 0;
    /// Lists the documents of a ready-made condition.
    virtual void List_Documents(const QString &where) = 0;
    /// Puts the keyboard into the document list.
    virtual void Focus_List() = 0;
    /// Loads tree and list anew, after many documents came or another database was chosen.
    virtual void Reload_All() = 0;
    /// Documents live in another folder now: the list is filled anew, and open ones follow.
    virtual void Documents_Moved(const QStringList &codeIds, const QString &folderId) = 0;
    /// A folder with its subtree has other ids now: what keeps ids of folders follows.
    virtual void Folder_Renumbered(const QString &oldId, const QString &newId) = 0;
    /// The colours of documents were chosen: their rows and the titles of open ones follow.
    virtual void Colors_Chosen(const QStringList &codeIds) = 0;
    /// Asks for a folder and moves documents there.
    virtual void Move_Documents(const QStringList &codeIds) = 0;
    /// Hides the program until a user logs in.
    virtual void Lock() = 0;
};

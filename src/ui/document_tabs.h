// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_deletion.h"

#include <QTabWidget>

class Frm_Doc_Standard;
class Shell;

/// The right side of the main window: the list in the first tab, key "LSV", and one tab for each open document, key
/// "ID_" + its id.
class Document_Tabs : public QTabWidget
{
    Q_OBJECT

public:
    Document_Tabs(Shell &shell, QWidget *parent);

    /// Puts the list into the first tab.
    void Add_List(QWidget *list, const QString &caption);
    void Show_List();

    /// Opens a document, or selects the tab that has it.
    void Open(const QString &code_id);
    void Open_New(const QString &kind, const QString &folderId);
    /// Saves the document on screen. @returns false when there is none or it was not stored
    bool Save_Current();
    /// Closes a tab, asking when it is unsaved. @returns false when it stays
    bool Close(int index);
    /// Asks and deletes; the documents' tabs close, and one with unsaved text that would only be moved asks for it.
    Deletion Delete(const QStringList &ids, Asked_In place);
    /// Selects and saves every unsaved document, from the first to the last. @returns false when one stays unsaved
    bool Save_All();
    /// Open documents read the folders anew; a folder with its subtree may have other ids now.
    void Follow_Folders(const QString &oldId = {}, const QString &newId = {});
    /// Open documents of those ids live in that folder now.
    void Follow_Documents(const QStringList &ids, const QString &folderId);
    /// nullptr when the list is on screen.
    [[nodiscard]] Frm_Doc_Standard *Current_Document() const;
    /// Applies the settings of the panes to every document.
    void Adjust_Panes();

signals:
    void Document_On_Screen(bool is);

private:
    [[nodiscard]] Frm_Doc_Standard *Document_At(int index) const;
    [[nodiscard]] int Find(const QString &code_id) const;
    void Remove(Frm_Doc_Standard *document);
    int Add(Frm_Doc_Standard *document);
    void Show_Mark(Frm_Doc_Standard *document);

    Shell &m_shell;
};

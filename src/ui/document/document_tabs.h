// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_deletion.h"
#include "documents/drafts.h"
#include "ui/document/document_facts.h"

#include <QAction>
#include <QPointer>
#include <QTabWidget>
#include <QTimer>
#include <vector>

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
    /// What a program that died left of this database: what other programs saved is stored, and for drafts it asks
    /// whether they are wanted, and opens them.
    void Bring_Back_Unsaved();
    /// Saves the document on screen. @returns false when there is none or it was not stored
    bool Save_Current();
    /// Closes a tab, asking when it is unsaved. @returns false when it stays
    bool Close(int index);
    /// Asks and deletes; the documents' tabs close, and one with unsaved text that would only be moved asks for it.
    Deletion Delete(const QStringList &ids, Asked_In place);
    /// Closes every document, asking for each unsaved one. @returns false when one stays
    bool Close_All();
    /// Selects and saves every unsaved document, from the first to the last. One that cannot be stored without an
    /// answer keeps its draft for the next start, which is told. @returns false when one stays unsaved and has no draft
    bool Save_All();
    /// Puts every unsaved text into its draft; nothing is asked or stored.
    void Keep_Drafts();
    /// Documents and attachments that other programs were given.
    [[nodiscard]] QStringList Left_Outside() const;
    /// Open documents read the folders anew; a folder with its subtree may have other ids now. A document that went
    /// for good with its folder closes; one with unsaved text stays, and saving it stores it as a new one.
    void Follow_Folders(const QString &oldId = {}, const QString &newId = {});
    /// Open documents of those ids live in that folder now.
    void Follow_Documents(const QStringList &ids, const QString &folderId);
    /// The title of an open document takes the style that is stored for it.
    void Show_Style(const QString &code_id);
    /// The tab of a document, -1 for none.
    [[nodiscard]] int Find(const QString &code_id) const;
    /// nullptr when the list is on screen.
    [[nodiscard]] Frm_Doc_Standard *Current_Document() const;
    /// The document after (1) or before (-1) the current tab, round about.
    void Turn(int step);
    /// Deletes the document on screen, as the main window's command.
    void Delete_Current();
    /// One tick of the automatic saving, which counts while the document on screen is unsaved.
    void Auto_Save_Tick();

    /// A command of the documents by its object name; nullptr for one that there is not.
    [[nodiscard]] QAction *Action(const QString &name) const;
    /// Applies the settings of the panes to every document.
    void Adjust_Panes();

signals:
    void Document_On_Screen(bool is);
    /// The document on screen may be saved: it is in edit mode, or has unsaved changes.
    void Editing(bool is);
    /// The command of the main window has something to delete: the document on screen in edit mode, or rows of the
    /// list.
    void Deletable(bool is);
    /// What is told of the document on screen is another; `shown` is false when the list is there.
    /// An open document was scored for its review.
    void Scored(const QString &code_id);
    void Facts_Changed(const Document_Facts &facts);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Command;
    [[nodiscard]] static const std::vector<Command> &Commands();
    void Add_Commands();
    void Wake_Page();
    void Show_State();
    void Email();
    void New_From_Clipboard();
    void New_Outside(const QString &type);
    void New_From_Page();
    void Switch_Mode();
    void Offer_Drafts();
    void Restore(const QList<Left_Draft> &drafts);
    void Keep_List_First();
    void Tell_Facts();
    static void Fold_Facts_At_First_Start();

    [[nodiscard]] Frm_Doc_Standard *Document_At(int index) const;
    void Remove(Frm_Doc_Standard *document);
    int Add(Frm_Doc_Standard *document);
    void Show_Mark(Frm_Doc_Standard *document);

    Shell &m_shell;
    std::vector<QAction *> m_actions; ///< one for each command
    QTimer m_autoSave;
    QPointer<QWidget> m_awake; ///< the page on screen
};

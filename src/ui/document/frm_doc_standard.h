// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/data_update.h"
#include "documents/drafts.h"
#include "ui/kit/ctrl_language.h"

#include <QTimer>
#include <QWidget>
#include <array>
#include <memory>
#include <vector>

class Document_Page;
class Editor_Commands;
class Outside_File;
class QLineEdit;
class Shell;
namespace Ui
{
class Frm_Doc_Standard;
}

/// One open document: its fields, its three panes and the additional information.
class Frm_Doc_Standard : public QWidget
{
    Q_OBJECT

public:
    explicit Frm_Doc_Standard(Shell &shell, QWidget *parent = nullptr);
    ~Frm_Doc_Standard() override;

    void Load_Lang();
    /// Prepares the form for a new document in a folder; `kind` is "ADDCODE" or one of its variants.
    void AddCode_Office(const QString &kind, const QString &folderId);
    /// Puts a web page into a new document, which takes its title. @param folder  where its relative addresses begin
    void Take_Page(const QString &page, const QString &folder);
    /// Loads a stored document. @returns false when there is nothing to show: after a wrong password the form holds
    /// nothing, with a database that cannot be read it is as it was. A document of which only a part could be read is
    /// shown locked and is never stored.
    bool GetCode_ViaID(const QString &code_id);
    /// Validates and saves. @returns whether the document is stored now; else everything typed stays.
    bool Data_Update() { return Save(Asking::Freely); }
    /// The same at the program's own wish: what needs a consent is not stored, keeps its draft and is told in the
    /// status line.
    bool Save_Quietly() { return Save(Asking::Never); }
    /// The last save was not made because it needs a consent.
    [[nodiscard]] bool Needs_Consent() const { return m_needsConsent; }
    /// Lets the draft of an unsaved document outlive the form, for the next start to offer. @returns whether there is
    /// one
    bool Leave_Draft();
    /// Puts what is typed, and what is still composed, into the draft now.
    void Keep_Draft();

    /// Fills the form from a draft that a dead process left, and takes the draft over. The answer is that of
    /// Restore_Draft.
    Draft_Answer Take_Draft(const Left_Draft &draft, const QString &password);
    /// Shows the next (1) or the previous (-1) document of the list in this form, asking first when it is unsaved.
    void Step(int step);
    /// Reads the folders anew. A folder with its subtree may have other ids now: the chosen one follows.
    void Follow_Folders(const QString &oldId = {}, const QString &newId = {});
    /// The document lives in that folder now.
    void Choose_Folder(const QString &id);

    /// The title takes the colours, bold and italic that are stored for the document's row.
    void Show_Style();

    [[nodiscard]] bool Is_Changed() const;
    /// Something was typed into the body since the last load or save.
    [[nodiscard]] bool DataChanged() const;
    [[nodiscard]] bool Is_Editing() const { return m_editing; }
    /// Read mode locks the panes.
    void Set_Edit_Mode(bool on);
    [[nodiscard]] QString Code_Id() const { return m_form.code_id; }
    [[nodiscard]] QString Title() const;
    /// The fields and panes as they stand.
    const Document_Form &Form();
    /// The commands of the panes.
    [[nodiscard]] Editor_Commands &Commands() const;
    /// Takes over what input methods still compose in any pane.
    void Commit_Composition();
    /// Marks every place of a key in the text and goes to the one at `place`, as ::Mark_Key says.
    void Mark_Key(const QString &key, qint64 place);
    /// Another program writes the document's file: an office document, for instance.
    [[nodiscard]] bool Is_Foreign() const;
    /// Gives the document's file to the desktop's program for it; what is saved there comes back by itself.
    void Open_Outside();
    /// Takes back what another program has saved. @returns false when that program still has the file and the user
    /// wants to finish there first
    bool Leave_Outside();
    /// 0 shows everything, 1 only the text, 2 the text as on paper.
    void Use_View_Mode(int mode);
    /// Shows or hides the memo, summary and additional panes as the settings say.
    void Adjuest_Memo();

    int unsaved_ticks = 0; ///< of the automatic saving

signals:
    /// The unsaved mark, the title, the id or the mode changed.
    void Mark_Changed();
    /// The next document could not be shown in this form, which holds nothing now.
    void Emptied();

protected:
    void showEvent(QShowEvent *event) override;

private:
    enum class Asking { Freely, Never };
    bool Save(Asking asking);
    /// Settles with the user why a save has not been made. @returns whether to try again
    bool Settle(Save_Outcome outcome, Asking asking);
    bool Settle_Conflict();
    void Set_Up_Fields();
    void Set_Up_Panes();
    void Set_Up_Tools();
    void Set_Up_Pages();
    void Show_Pages();
    void Tell_Pages_Saved();
    void Use_Setting_Font();
    void Fill_Folders();
    void Show_Form();
    void Read_Form();
    void Clear_Changed();
    void Show_Modify();
    void Show_Mark();
    void Refuse(Save_Refusal refusal);
    void Lock_Boolean(bool locked);
    void Set_Editor();
    void Toggle_Pane(QString &setting, const char *section, const char *key, bool on, bool capitals);
    void Keep_Widths();
    [[nodiscard]] QString Selected_Text() const;
    void Take_Selection(QLineEdit *field);
    /// What seals the draft: the password that is typed twice, else the one that the stored document has.
    [[nodiscard]] QString Draft_Password() const;
    bool Write_Draft();
    bool Store_Draft();
    /// The panes as they are, to tell whether text came into them meanwhile.
    [[nodiscard]] std::array<int, 3> Revisions() const;
    [[nodiscard]] bool Store(Asking asking);
    [[nodiscard]] bool Store_Consented(Asking asking, QString &status);
    /// The texts of all fields but the folder.
    [[nodiscard]] QStringList Field_Texts() const;
    [[nodiscard]] bool Differs() const;
    void Limit_Fields();
    void Focus(QWidget *page, QWidget *field);
    void Show_Too_Long();
    void Select_Folder(const QString &id);
    void Follow_Outside();
    void Take_Back();

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_Doc_Standard> m_ui;
    ctrlLanguage m_lang;
    Document_Form m_form;
    Draft m_draft;
    QTimer m_draftTimer;
    QTimer m_widthTimer;
    std::vector<Document_Page *> m_pages;    ///< their tabs own them
    std::unique_ptr<Outside_File> m_outside; ///< while another program may write the document's file
    QTimer m_outsideTimer;
    QString m_storedPassword;
    QString m_storedFolder;
    QString m_cleanFolder;    ///< what the chooser showed when the form was last loaded or saved
    QStringList m_cleanTexts; ///< and the other fields
    Save_Consents m_consents; ///< what the user has agreed to for this document
    bool m_stored = false;    ///< the form holds a stored document
    bool m_changed = false;   ///< something is not as it was loaded or saved last
    int m_viewMode = 0;
    bool m_showing = false; ///< the form is being filled by the program
    bool m_editing = true;
    bool m_draftStays = false;
    bool m_needsConsent = false;
    bool m_saving = false;  ///< timers that fire meanwhile wait
    bool m_partial = false; ///< only a part of the document could be read: it is never stored
};

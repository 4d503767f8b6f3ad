// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_session.h"
#include "ui/document/document_facts.h"
#include "ui/kit/ctrl_language.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>
#include <memory>
#include <vector>

class Document_Page;
class Editor_Commands;
class Folder_Box;
class QLabel;
class QLineEdit;
class QShortcut;
class Shell;
class Star_Field;
struct Document_Field;
namespace Ui
{
class Frm_Doc_Standard;
}

/// One open document on screen: its fields, its three panes and the additional information. What the document is, and
/// what becomes of it, its session knows.
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
    [[nodiscard]] bool Needs_Consent() const { return m_session->Needs_Consent(); }
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

    [[nodiscard]] bool Is_Changed() const { return m_changed; }
    /// Something was typed into the body since the last load or save.
    [[nodiscard]] bool DataChanged() const;
    [[nodiscard]] bool Is_Editing() const { return m_editing; }
    /// Read mode locks the panes.
    void Set_Edit_Mode(bool on);
    [[nodiscard]] QString Code_Id() const { return m_session->Form().code_id; }
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
    [[nodiscard]] bool Is_Foreign() const { return m_session->Is_Foreign(); }
    /// The document stands for a file that can be opened.
    [[nodiscard]] bool Keeps_File() const { return m_session->Keeps_File(); }
    /// Gives the document's file to the desktop's program for it; what is saved there comes back by itself.
    void Open_Outside();
    /// Takes back what another program has saved. @returns false when that program still has the file and the user
    /// wants to finish there first
    bool Leave_Outside();
    /// What other programs were given of this document: its file and its attachments.
    [[nodiscard]] QStringList Left_Outside() const;
    /// 0 shows everything, 1 only the text, 2 the text as on paper.
    void Use_View_Mode(int mode);
    /// Shows the memo, summary and additional panes where the settings say, and the text as large.
    void Adjuest_Memo();
    /// What is to be told of the document as it stands.
    [[nodiscard]] Document_Facts Facts() const;

    int unsaved_ticks = 0; ///< of the automatic saving

signals:
    /// The unsaved mark, the title, the id or the mode changed.
    void Mark_Changed();
    /// The next document could not be shown in this form, which holds nothing now.
    void Emptied();
    void Facts_Changed(const Document_Facts &facts);
    void Scored(const QString &code_id);

protected:
    void showEvent(QShowEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    enum class Asking { Freely, Never };
    /// A field and the one control that shows it.
    struct Shown_Field {
        const Document_Field *field;
        QLineEdit *line = nullptr;
        Star_Field *stars = nullptr;
        Folder_Box *folder = nullptr;

        [[nodiscard]] QString Text() const;
        void Show(const QString &text) const;
    };

    bool Save(Asking asking);
    [[nodiscard]] bool Store(Asking asking);
    [[nodiscard]] bool Store_Consented(Asking asking, QString &status);
    /// Settles with the user why a save has not been made. @returns whether to try again
    bool Settle(Save_Outcome outcome, Asking asking);
    bool Settle_Conflict();
    void Tell_Stored(const QString &status);
    void Refuse(Save_Refusal refusal);
    void Show_Too_Long();
    void Focus(QWidget *page, QWidget *field);

    void Set_Up_Fields();
    void Show_Form();
    void Read_Form();
    void Limit_Fields();
    void Clear_Changed();
    void Show_Modify();
    void Show_Mark();
    bool Write_Draft();
    bool Store_Draft();
    void Draft_Is_Due();
    [[nodiscard]] bool Is_Long() const;

    void Set_Up_Panes();
    void Set_Up_Tools();
    void Set_Up_Look();
    void Set_Up_Facts();
    void Set_Up_Pages();
    void Show_Pages();
    void Tell_Pages_Saved();
    void Show_Card();
    void Use_Setting_Font();
    void Lock_Boolean(bool locked);
    void Set_Editor();
    void Toggle_Pane(const char *setting, bool on);
    void Place_Panes(bool below);
    void Size_Panes(bool beside, bool below);
    void Keep_Widths();
    void Zoom(int step);
    void Fit_Quiet_Line();
    void Count_Words_Now();
    void Tell_Facts();
    [[nodiscard]] QString Selected_Text() const;
    void Take_Selection(QLineEdit *field);
    void Follow_Outside();
    void Take_Back();

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_Doc_Standard> m_ui;
    ctrlLanguage m_lang;
    std::unique_ptr<Document_Session> m_session;
    std::vector<Shown_Field> m_fields;
    std::vector<Document_Page *> m_pages; ///< their tabs own them
    QShortcut *m_titleKey = nullptr;
    QTimer m_draftTimer;
    QElapsedTimer m_sinceChange;
    QElapsedTimer m_sinceDraft;
    QTimer m_widthTimer;
    QTimer m_factsTimer;
    QTimer m_outsideTimer;
    int m_words = 0;
    bool m_ofSelection = false;
    int m_viewMode = 0;
    bool m_changed = false; ///< something is not as it was loaded or saved last
    bool m_showing = false; ///< the form is being filled by the program
    bool m_editing = true;
    bool m_saving = false; ///< timers that fire meanwhile wait
};

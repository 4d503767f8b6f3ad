// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/data_update.h"
#include "ui/ctrl_language.h"

#include <QWidget>
#include <memory>

class Editor_Commands;
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
    /// Loads a stored document. @returns false when there is nothing to show (wrong password, unreadable); a
    /// document of which only a part could be read is shown locked and is never stored.
    bool GetCode_ViaID(const QString &code_id);
    /// Validates and saves. @returns whether the document is stored now; else everything typed stays.
    bool Data_Update();

    /// Reads the folders anew. A folder with its subtree may have other ids now: the chosen one follows.
    void Follow_Folders(const QString &oldId = {}, const QString &newId = {});
    /// The document lives in that folder now.
    void Choose_Folder(const QString &id);

    [[nodiscard]] bool Is_Changed() const;
    [[nodiscard]] QString Code_Id() const { return m_form.code_id; }
    [[nodiscard]] QString Title() const;
    /// The commands of the panes.
    [[nodiscard]] Editor_Commands &Commands() const;
    /// Takes over what input methods still compose in any pane.
    void Commit_Composition();
    /// 0 shows everything, 1 only the text, 2 the text as on paper.
    void Use_View_Mode(int mode);
    /// Shows or hides the memo, summary and additional panes as the settings say.
    void Adjuest_Memo();

signals:
    /// The unsaved mark, the title or the id changed.
    void Mark_Changed();

private:
    void Set_Up_Choices();
    void Use_Setting_Font();
    void Fill_Folders();
    void Show_Form();
    void Read_Form();
    void Clear_Changed();
    void Show_Modify();
    void Refuse(Save_Refusal refusal);
    void Lock_Boolean(bool locked);

    Shell &m_shell;
    std::unique_ptr<Ui::Frm_Doc_Standard> m_ui;
    ctrlLanguage m_lang;
    Document_Form m_form;
    bool m_stored = false;  ///< the form holds a stored document
    bool m_changed = false; ///< something was typed since the last load or save
    int m_viewMode = 0;
    bool m_showing = false; ///< the form is being filled by the program
};

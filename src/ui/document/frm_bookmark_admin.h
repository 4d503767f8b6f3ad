// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/bookmarks.h"
#include "platform/models/list_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <memory>
#include <optional>

namespace Ui
{
class Frm_BookMark_Admin;
}

/// The bookmarks of one document. All work is done on the list; closing writes it in the place of what is stored.
class Frm_BookMark_Admin : public QDialog
{
    Q_OBJECT

public:
    /// @param preset  what the edit boxes hold at first
    explicit Frm_BookMark_Admin(const Bookmark &preset, QWidget *parent = nullptr);
    ~Frm_BookMark_Admin() override;

    /// Reads a document's bookmarks. @returns false after an error, which was told: the form is not to be shown then
    bool Load(const QString &code_id);

    /// Every way of closing writes the list first; the user is asked when that fails or something typed would be lost.
    void done(int result) override;

private:
    void Set_Up_List();
    void Connect_Controls();
    void Cmd_Add_Click();
    void Cmd_Tag_Update_Click();
    void Cmd_Tag_Delete_Click();
    void Txt_LineNo_Change(const QString &text);

    void Show_Bookmark(const Bookmark &bookmark);
    /// The edit boxes; no value, and the user was told, when they make no bookmark.
    [[nodiscard]] std::optional<Bookmark> Typed();
    /// Whether a row of that name may be replaced; asks when there is one beside `except`.
    [[nodiscard]] bool May_Take(const QString &name, int except);
    [[nodiscard]] bool Settle_Typed();
    /// Shows the list, with that row selected.
    void Show_Rows(int row);
    [[nodiscard]] int Selected_Row() const;

    std::unique_ptr<Ui::Frm_BookMark_Admin> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_BookMark_Admin")};
    List_Model m_rows;
    Bookmark_List m_list;
    QString m_codeId;
    QString m_lineNo; ///< what the box of the line held last
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/attachments.h"
#include "ui/document/attachment_model.h"
#include "ui/document/document_page.h"
#include "ui/document/opened_attachments.h"
#include "ui/kit/ctrl_language.h"

namespace Ui
{
class Page_Attachments;
}

/// The files that the document carries, which can also be dragged in and out. What is done here is stored at once;
/// those of a new document go with its first save.
class Page_Attachments final : public Document_Page
{
    Q_OBJECT

public:
    Page_Attachments(Shell &shell, QWidget &form);
    ~Page_Attachments() override;

    void Show_Document(const QString &code_id, const QString &title) override;
    void Document_Saved(const QString &code_id, const QString &title) override;
    void Set_Changeable(bool changeable) override { m_changeable = changeable; }
    void Leave() override { m_opened.Look_After(); }
    [[nodiscard]] QStringList Left_Outside() const override { return m_opened.Names(); }
    [[nodiscard]] QString Caption() const override;
    void Load_Lang() override;

protected:
    void showEvent(QShowEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    struct Command;
    [[nodiscard]] static std::span<const Command> Commands();
    void Add_Commands();
    void Run(const Command &command);
    void Show_Menu(const QPoint &where);

    void Add_Chosen();
    void Add_Reference();
    void Add_Reduced();
    void Add_Folder();
    void Add_Page();
    void Paste();
    void Paste_Picture(const QByteArray &picture);
    void Copy();
    void Add_Dropped(const QStringList &paths, const QString &mode);
    [[nodiscard]] QStringList Wanted_Of_Folder(const QString &folder);
    void Add_Files(const QStringList &paths, const QString &mode);
    void Keep(const Saved_Attachment &saved, const QString &name);
    void Open();
    void Export();
    void Edit_Remark();
    void Delete();
    void Move_Up() { Move(-1); }
    void Move_Down() { Move(1); }
    void Move(int step);

    void Refresh(const QString &selected = {});
    void Fill();
    void Changed(const QString &selected = {});
    [[nodiscard]] QList<Attachment> Selected() const;
    /// Internal ones as copies, which stay until the next ones are made.
    [[nodiscard]] QList<QUrl> Laid_Out(const QList<Attachment> &files);

    Shell &m_shell;
    std::unique_ptr<Ui::Page_Attachments> m_ui;
    ctrlLanguage m_lang;
    Attachment_Model m_list;
    Opened_Attachments &m_opened; ///< the window's: what is open outside outlives the page
    QString m_laidOut;            ///< the folder of what was dragged away last
    QString m_id;
    int m_count = 0;
    bool m_filled = false; ///< the list shows the document's; it is filled when the page is first on screen
    bool m_changeable = false;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/all_attachments.h"
#include "ui/document/attachment_model.h"
#include "ui/kit/ctrl_language.h"

#include <QDialog>
#include <functional>
#include <memory>

class Opened_Attachments;
class Shell;
namespace Ui
{
class Frm_File_Admin;
}

/// The attachments of all documents: finds them, takes them out, and puts right what is lost, broken or there twice.
class Frm_File_Admin : public QDialog
{
    Q_OBJECT

public:
    /// @param shell  null where there is no main window
    explicit Frm_File_Admin(Shell *shell, QWidget *parent = nullptr);
    ~Frm_File_Admin() override;

    void done(int result) override;

signals:
    /// Attachments went, came to another document or were described anew.
    void Changed();

private:
    void Set_Up_List();
    void Set_Up_Buttons();
    void Load();
    void Show_Chosen();
    void Find();
    void Show_Found(Found_Attachments found);
    void Show_Sum();
    void Show_State();

    void Open();
    void Go_To();
    void Export();
    void Edit_Remark();
    void Delete();
    void Find_Place();
    void Give();
    void Select_Repeated();
    void Compact();

    [[nodiscard]] QList<Attachment> Selected() const;
    [[nodiscard]] QString Target_Document() const;
    void Read_Again(const Attachment &file);
    void Tell(const QList<Attachment> &files);

    Shell *m_shell;
    std::unique_ptr<Ui::Frm_File_Admin> m_ui;
    ctrlLanguage m_lang{*this, QStringLiteral("Frm_File_Admin")};
    Attachment_Model m_list;
    Opened_Attachments &m_opened;
    QList<Attachment> m_all;
    Found_Attachments m_found; ///< what is shown in the place of all
    QString m_searched;        ///< what a search found, in words; "" for none
    bool m_telling = false;
};

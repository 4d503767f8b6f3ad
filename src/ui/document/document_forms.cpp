// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/document_forms.h"

#include "core/language_pack.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/frm_file_admin.h"
#include "ui/kit/shell.h"

#include <QAction>

namespace
{
std::unique_ptr<QDialog> Make_File_Admin(const Forms::Opening &opening)
{
    auto form = std::make_unique<Frm_File_Admin>(opening.shell, opening.parent);
    if (opening.changed)
        QObject::connect(form.get(), &Frm_File_Admin::Changed, form.get(), opening.changed);
    return form;
}

constexpr Forms::Row Form_Rows[] = {
    {"Frm_File_Admin", Make_File_Admin},
};

void Open_File_Admin(Shell &shell, QWidget *parent)
{
    bool changed = false;
    Forms::Show_Modal(QStringLiteral("Frm_File_Admin"),
                      {.parent = parent, .changed = [&changed] { changed = true; }, .shell = &shell});
    if (changed)
        shell.Reload_All(); // the list counts attachments
}

/// Runs a command of the page of attachments of the document on screen.
void Run_On_Page(Shell &shell, const QWidget &window, const char *command)
{
    const auto *tabs = window.findChild<Document_Tabs *>();
    const Frm_Doc_Standard *document = tabs == nullptr ? nullptr : tabs->Current_Document();
    if (document == nullptr)
        return shell.Set_Status(Pack_Text("Page_Attachments", "_No_Page"));
    document->findChild<QAction *>(QLatin1String(command))->trigger();
}

constexpr Commands::Row Command_Rows[] = {
    {"Mnu_File_Add", "new", "Mnu_Attachment",
     [](Shell &shell, QWidget *parent) {
         Run_On_Page(shell, *parent, "Mnu_Add");
     }},
    {"mnuFile_Path", "link", "Mnu_Attachment",
     [](Shell &shell, QWidget *parent) {
         Run_On_Page(shell, *parent, "mnuFile_Path");
     }},
    {"mnuFile_Path_Curr", "", "Mnu_Attachment",
     [](Shell &shell, QWidget *parent) {
         Run_On_Page(shell, *parent, "mnuFile_Path_Curr");
     }},
    {"Mnu_Out_Direct", "folder", "Mnu_Attachment",
     [](Shell &shell, QWidget *parent) {
         Run_On_Page(shell, *parent, "Mnu_Out_Direct");
     }},
    {"Mnu_Out_Web", "", "Mnu_Attachment",
     [](Shell &shell, QWidget *parent) {
         Run_On_Page(shell, *parent, "Mnu_Out_Web");
     }},
    {"Mnu_File_Admin", "", "Mnu_Attachment", Open_File_Admin},
};
} // namespace

std::span<const Forms::Row> Document_Forms()
{
    return Form_Rows;
}

std::span<const Commands::Row> Document_Commands()
{
    return Command_Rows;
}

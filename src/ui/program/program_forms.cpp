// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_forms.h"

#include "ui/kit/shell.h"
#include "ui/program/frm_about.h"
#include "ui/program/frm_config.h"
#include "ui/program/frm_database.h"
#include "ui/program/frm_db_log.h"
#include "ui/program/frm_login.h"
#include "ui/program/frm_update_235.h"
#include "ui/program/frm_user_change_pwd.h"
#include "ui/program/frm_users.h"

namespace
{
using Forms::Opening;

std::unique_ptr<QDialog> Make_About(const Opening &opening)
{
    return std::make_unique<Frm_About>(Frm_About::Role::About, opening.parent);
}

std::unique_ptr<QDialog> Make_Login(const Opening &opening)
{
    return std::make_unique<frmLogin>(opening.parent, opening.user);
}

std::unique_ptr<QDialog> Make_Update_235(const Opening &opening)
{
    return std::make_unique<Frm_Update_235>(opening.parent, opening.connection);
}

std::unique_ptr<QDialog> Make_Database(const Opening &opening)
{
    auto form = std::make_unique<Frm_Database>(opening.parent);
    if (opening.changed)
        QObject::connect(form.get(), &Frm_Database::Database_Changed, form.get(), opening.changed);
    form->May_Change = opening.may_change;
    return form;
}

constexpr Forms::Row Rows[] = {
    {"Frm_About", Make_About},
    {"frmLogin", Make_Login},
    {"Frm_Database", Make_Database},
    {"Frm_Config", Forms::Make_Changing<Frm_Config, &Frm_Config::Settings_Changed>},
    {"Frm_DbLog", Forms::Make<Frm_DbLog>},
    {"Frm_Update_235", Make_Update_235},
    {"Frm_Users", Forms::Make<Frm_Users>},
    {"Frm_User_Change_PWD", Forms::Make<Frm_User_Change_PWD>},
};

void Open_Users(Shell & /*shell*/, QWidget *parent)
{
    Forms::Show_Modal(QStringLiteral("Frm_Users"), {.parent = parent});
}

void Open_Password(Shell & /*shell*/, QWidget *parent)
{
    Forms::Show_Modal(QStringLiteral("Frm_User_Change_PWD"), {.parent = parent});
}

void Lock(Shell &shell, QWidget * /*parent*/)
{
    shell.Lock();
}

constexpr Commands::Row Command_Rows[] = {
    {"Mnu_Users", "", "Mnu_Tools", Open_Users},
    {"Mnu_User_PWD", "", "Mnu_Tools", Open_Password},
    {"Mnu_OnLock", "lock", "Mnu_Tools", Lock, "Ctrl+Alt+L"},
};
} // namespace

std::span<const Forms::Row> Program_Forms()
{
    return Rows;
}

std::span<const Commands::Row> Program_Commands()
{
    return Command_Rows;
}

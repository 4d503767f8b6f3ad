// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/form_table.h"

#include "platform/errors/run_time_error.h"
#include "ui/frm_about.h"
#include "ui/frm_config.h"
#include "ui/frm_database.h"
#include "ui/frm_db_log.h"
#include "ui/frm_list_view_color.h"
#include "ui/frm_list_view_para.h"
#include "ui/frm_list_view_vir_cate.h"
#include "ui/frm_login.h"
#include "ui/frm_update_235.h"

#include <algorithm>

namespace
{
struct Opening {
    QWidget *parent;
    QString preset;
    std::function<void()> changed;
};

using Form = std::unique_ptr<QDialog>;

template <class Changing_Form>
Form Make_Changing(const Opening &opening, void (Changing_Form::*changed)())
{
    auto form = std::make_unique<Changing_Form>(opening.parent);
    if (opening.changed)
        QObject::connect(form.get(), changed, form.get(), opening.changed);
    return form;
}

Form Make_About(const Opening &opening)
{
    return std::make_unique<Frm_About>(Frm_About::Role::About, opening.parent);
}

Form Make_Login(const Opening &opening)
{
    return std::make_unique<frmLogin>(opening.parent, opening.preset);
}

Form Make_Database(const Opening &opening)
{
    return Make_Changing(opening, &Frm_Database::Database_Changed);
}

Form Make_Options(const Opening &opening)
{
    return Make_Changing(opening, &Frm_Config::Settings_Changed);
}

Form Make_List_Columns(const Opening &opening)
{
    return Make_Changing(opening, &Frm_ListView_Para::Columns_Changed);
}

Form Make_List_Colors(const Opening &opening)
{
    auto form = std::make_unique<Frm_ListView_Color>(opening.parent,
                                                     opening.preset.split(QLatin1Char('/'), Qt::SkipEmptyParts));
    if (opening.changed)
        QObject::connect(form.get(), &Frm_ListView_Color::Colors_Changed, form.get(), opening.changed);
    return form;
}

Form Make_Memberships(const Opening &opening)
{
    return std::make_unique<Frm_ListView_VirCate>(opening.preset, opening.parent);
}

Form Make_Update_235(const Opening &opening)
{
    return std::make_unique<Frm_Update_235>(opening.parent, opening.preset);
}

template <class Plain_Form>
Form Make(const Opening &opening)
{
    return std::make_unique<Plain_Form>(opening.parent);
}

struct Entry {
    const char *name;
    Form (*make)(const Opening &opening);
};

constexpr Entry Form_Table[] = {
    {"Frm_About", Make_About},
    {"frmLogin", Make_Login},
    {"Frm_Database", Make_Database},
    {"Frm_Config", Make_Options},
    {"Frm_DbLog", Make<Frm_DbLog>},
    {"Frm_Update_235", Make_Update_235},
    {"Frm_ListView_Para", Make_List_Columns},
    {"Frm_ListView_Color", Make_List_Colors},
    {"Frm_ListView_VirCate", Make_Memberships},
};
} // namespace

namespace Forms
{
Outcome Show_Modal(const QString &formName, QWidget *parent, const QString &preset,
                   const std::function<void()> &changed)
{
    const auto *entry = std::find_if(std::begin(Form_Table), std::end(Form_Table),
                                     [&](const Entry &row) { return formName == QLatin1String(row.name); });
    if (entry == std::end(Form_Table))
        throw Run_Time_Error(Error_Number::Missing_Component, QStringLiteral("No form ") + formName,
                             Failure::Missing_Component);
    const Form form = entry->make({parent, preset, changed});
    return form->exec() == QDialog::Accepted ? Outcome::Accepted : Outcome::Rejected;
}
} // namespace Forms

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/tools_forms.h"

#include "ui/tools/frm_date.h"

namespace
{
/// The calendar stands beside the main window, so that the list can be seen: one of it.
void Show_Calendar(Shell &shell, QWidget *parent)
{
    auto *calendar = parent->findChild<Frm_Date *>(QString(), Qt::FindDirectChildrenOnly);
    if (calendar == nullptr) {
        calendar = new Frm_Date(shell, parent);
        calendar->setAttribute(Qt::WA_DeleteOnClose);
    }
    calendar->show();
    calendar->raise();
    calendar->activateWindow();
}

constexpr Commands::Row Command_Rows[] = {
    {"Mnu_Calendar", "calendar", "Mnu_Tools", Show_Calendar},
};
} // namespace

std::span<const Commands::Row> Tools_Commands()
{
    return Command_Rows;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/tools_forms.h"

#include "ui/tools/at_hand.h"
#include "ui/tools/frm_date.h"
#include "ui/tools/page_hand.h"

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

void Open_Note(Shell & /*shell*/, QWidget *parent)
{
    parent->findChild<At_Hand *>()->Open_Note();
}

void Check_Versions(Shell & /*shell*/, QWidget *parent)
{
    parent->findChild<At_Hand *>()->Check_Versions();
}

constexpr Commands::Row Command_Rows[] = {
    {"Mnu_Calendar", "calendar", "Mnu_Tools", Show_Calendar},
    {"Mnu_Note", "note", "Mnu_Tools", Open_Note},
    {"Mnu_Update", "", "Mnu_Help", Check_Versions},
};

constexpr Config_Pages::Row Page_Rows[] = {
    {"Page_Hand", Config_Pages::Make<Page_Hand>},
};
} // namespace

std::span<const Commands::Row> Tools_Commands()
{
    return Command_Rows;
}

std::span<const Config_Pages::Row> Tools_Pages()
{
    return Page_Rows;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/wings.h"

#include "ui/document/document_forms.h"
#include "ui/exchange/exchange_forms.h"
#include "ui/lists/list_forms.h"
#include "ui/lists/list_pages.h"
#include "ui/program/program_forms.h"
#include "ui/tools/tools_forms.h"

void Join_Wings()
{
    Forms::Add(Document_Forms());
    Forms::Add(Exchange_Forms());
    Forms::Add(List_Forms());
    Forms::Add(Program_Forms());
    Config_Pages::Add(Tools_Pages());
}

std::vector<Commands::Row> All_Commands()
{
    std::vector<Commands::Row> all;
    for (const std::span<const Commands::Row> wing :
         {Exchange_Commands(), Document_Commands(), Program_Commands(), Tools_Commands()})
        all.insert(all.end(), wing.begin(), wing.end());
    return all;
}

std::vector<Left_Pages::Row> All_Pages()
{
    const std::span<const Left_Pages::Row> lists = List_Pages();
    return {lists.begin(), lists.end()};
}

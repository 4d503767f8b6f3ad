// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "ui/document/document_tabs.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/server_wait.h"
#include "ui/lists/frm_list_view.h"
#include "ui/window/frm_main.h"
#include "ui/window/left_tabs.h"
#include "ui/window/server_watch.h"

void Frm_Main::Add_Server_Watch()
{
    new Server_Wait(this);
    auto *watch = new Server_Watch(this);
    connect(watch, &Server_Watch::Changed, this, &Frm_Main::Follow_Others);
    connect(watch, &Server_Watch::Lost, this, [this] { Set_Status(Pack_Text("Main", "_Server_Lost")); });
    connect(watch, &Server_Watch::Back, this, [this] {
        Set_Status(Pack_Text("Main", "_Server_Back"));
        Follow_Others({QStringLiteral("Cate_Info"), QStringLiteral("Code_Info")});
    });
}

/// The tree and the list are read anew where they stand: what is chosen, and what is being typed, stays.
void Frm_Main::Follow_Others(const QStringList &tables)
{
    const auto changed = [&tables](const char *table) {
        return tables.contains(QLatin1String(table), Qt::CaseInsensitive);
    };
    const bool folders = changed("Cate_Info");
    const bool documents = changed("Code_Info") || changed("tab_VirCate");
    if (folders || documents)
        m_tree->Update_Tree();
    if (folders) {
        m_left->Follow_Folders();
        m_tabs->Follow_Folders();
    } else if (documents || changed("tab_tags")) {
        m_list->Reload();
        m_left->Dates_Changed();
    }
}

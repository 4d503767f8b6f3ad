// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/view_entries.h"

#include "core/settings_table.h"

#include <QAction>

namespace
{
bool Is_On(const char *key)
{
    const Setting &setting = Setting_Named(QLatin1String(key));
    return Is_On(setting, Text_Of(Config(), setting));
}
} // namespace

void View_Entries::Bind(QAction &entry, const char *setting, std::function<void(bool on)> shown)
{
    entry.setChecked(Is_On(setting));
    connect(&entry, &QAction::toggled, this, [setting, shown = std::move(shown)](bool on) {
        if (on != Is_On(setting)) {
            Keep_Switch(Setting_Named(QLatin1String(setting)).field, on);
        }
        shown(on);
    });
    m_rows.push_back({&entry, setting});
}

void View_Entries::Check_All()
{
    for (const Row &row : m_rows)
        row.entry->setChecked(Is_On(row.setting));
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/kept_setting.h"

#include "core/config_store.h"
#include "core/settings_table.h"

void Keep_Setting(const char *key, const QString &value)
{
    const Setting &setting = Setting_Named(QLatin1String(key));
    Store(Config(), setting, value);
    WriteIni(QLatin1String(setting.section), QLatin1String(setting.key), value);
}

void Keep_Switch(const char *key, bool on)
{
    Keep_Setting(key, Switch_Text(Setting_Named(QLatin1String(key)), on));
}

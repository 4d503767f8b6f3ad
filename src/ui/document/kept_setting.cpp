// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/kept_setting.h"

#include "core/settings_table.h"

void Keep_Setting(const char *key, const QString &value)
{
    Keep_Setting(Setting_Named(QLatin1String(key)).field, value);
}

void Keep_Switch(const char *key, bool on)
{
    Keep_Switch(Setting_Named(QLatin1String(key)).field, on);
}

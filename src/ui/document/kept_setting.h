// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Puts a text into a setting and writes it to Config.ini. @throws Run_Time_Error 75 for a name that is no setting
void Keep_Setting(const char *key, const QString &value);
/// The same of a switch.
void Keep_Switch(const char *key, bool on);

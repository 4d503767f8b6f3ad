// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Kinds of lines in the system log; the number is `tab_log.type_id` and the end of the key "_Type_Id" + n of the
/// section Frm_DbLog.
enum class Log_Type { General = 0, Created = 1, Changed = 2, Viewed = 3, Deleted = 4, Imported = 5, Exported = 6 };

/// Appends a row to tab_log. A line that cannot be written never stops the action that called.
void Add_Log(Log_Type type, const QString &text, const QString &var1 = {}, const QString &var2 = {});

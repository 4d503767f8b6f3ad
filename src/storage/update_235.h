// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

/// The one-time upgrade of a database whose contents are not compressed yet, behind the window Frm_Update_235.

/// Number of its documents.
qint64 Update_235_Count(const QString &connStr);

/// Does the upgrade, in one commit: a copy of the file to data\bak\zelqor.db unless there is one, the compressed
/// content of every document with its RTF as a file in data\bak\, the classes of the attachments, the tables and
/// columns that the ladder reads next. Documents that were packed already are left alone.
/// @param step  told the number of documents done
/// @throws Run_Time_Error when a step cannot be done; what was done until then is taken up by the next call.
void Update_235(const QString &connStr, const std::function<void(qint64 done)> &step);

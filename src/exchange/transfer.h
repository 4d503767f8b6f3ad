// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

/// Copies documents, with all that hangs on them, from one database into another: a merge by primary key. Nothing is
/// overwritten, deleted or renumbered, and nothing stored is unpacked.
namespace Mod_DataBaseExport
{
/// A ticked row of the transfer list.
struct Transfer_Row {
    QString code_id;
    QString title; ///< what the user sees of it
};

struct Transfer_Result : Work_Result {
    qint64 present = 0; ///< documents that the target had already: they were skipped whole
};

/// Whether a database can be opened and its folders read. The error is cleared.
bool Test_Db_Path(const QString &path);
bool Test_Db_Conn(const QString &connection);

/// Copies each document with its attachments, bookmarks, folders and memberships as one commit, so that a run that is
/// called off or killed leaves whole documents, and the same run again completes it. Tags, review groups, and at the
/// end users and facts of the database go along into tables that are empty.
/// A column or row that one side refuses is left out and the rest goes on; rows that were refused are among the
/// failures.
Transfer_Result Transfer_Documents(const QString &target, const QString &source, const QList<Transfer_Row> &rows,
                                   Work &work);

/// Writes the report of a run, with each failure and its reason. @returns its sum in words, and where the report is
QString Report_Of(const Transfer_Result &result);
} // namespace Mod_DataBaseExport

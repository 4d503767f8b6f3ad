// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

/// The directory beside the database ("<database>-drafts") for what is not stored yet. A name in it tells which process
/// made it, and a lock file whether that one still lives: what a killed process left is found by the next one of the
/// same user.
namespace Draft_Folder
{
/// A path that no file has, under this process's mark. @throws Run_Time_Error when the directory cannot be made
QString New_Path(const QString &suffix);

/// The files and directories with that suffix of processes that are no more, the newest first.
QStringList Left(const QString &suffix);
} // namespace Draft_Folder

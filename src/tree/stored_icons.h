// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Icons of folders are files in data\ico\. Those that a user adds are kept in the database too (tab_file rows of
/// type 3) and written out at each start, so that they travel with it.

/// Names of the pictures in data\ico\ that a folder's row can hold, sorted without regard to case.
QStringList Icon_Names();

/// Keeps a picture under a name that is made from `name`: its last 20 characters at most, the ending among them, and
/// free of what a file name may not hold; a number keeps it apart from those that are there.
/// @returns the name. @throws Run_Time_Error
QString Add_Stored_Icon(const QString &name, const QByteArray &picture);

/// Writes the icons of the database to data\ico\, those that folders use before the others, so that a start takes no
/// longer for a database with icons without end: the first 2,000, of at most 1 MB each and 64 MB together. A row that
/// cannot be written is skipped and recorded.
void Write_Stored_Icons();

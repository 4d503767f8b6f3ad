// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

/// Puts the files of an update in the place of the program's, as a list in an INI file says: section `Setup` with
/// `Source` (the update's folder, below the program's), and the sections `File 01`, `File 02`... with `Source`,
/// `Target` and `Sha256`.
namespace Update
{
struct Item {
    QString source; ///< absolute
    QString target; ///< absolute
    QString sha256; ///< lower case; a file without one is refused
};

/// Reads the list. @throws Run_Time_Error 53 or 75 for a list that cannot be read, 75 for a name that leads outside
/// its folder, or to something that the user has written.
QList<Item> Read_List(const QString &listFile, const QString &programDirectory);

/// Checks and stages every file before the first takes its place, and puts the old ones back when one cannot take its
/// own, so that a missing, damaged or unwritable one leaves the program as it was. @throws Run_Time_Error 53, 61, 70
/// or 75.
void Apply(const QList<Item> &items);
} // namespace Update

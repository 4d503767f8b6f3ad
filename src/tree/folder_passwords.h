// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QSet>
#include <QString>

/// Passwords of folders: a lock on the level of lists. The scrambled form may hold any character, so it goes in and
/// out through a recordset's field.

enum class Password_Change {
    Done,
    No_Folder,    ///< there is no folder of that id
    Wrong_Old,    ///< the old password is not the one in force
    Not_Storable, ///< its scrambled form is all blanks, which would read as no password
};

/// Sets a folder's password, or clears it with an empty one. Blanks around both passwords do not count.
/// @param wholeSubtree  every folder below gets it too, whatever password it had
/// @throws Run_Time_Error of the database.
Password_Change Set_Folder_Password(const QString &id, const QString &oldPassword, const QString &newPassword,
                                    bool wholeSubtree);

/// Ids of the folders that have a password. Errors go under "Mod_DataBase\Locked_Folders" and give none.
QSet<QString> Locked_Folders(const QString &connection);

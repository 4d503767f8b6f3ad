// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

class QFile;

/// The one door to files (its whole-file part stands in paths.h): nothing else in the program writes, makes, lists or
/// deletes one. It knows regular files and folders only: a device, a pipe or a socket is neither opened nor replaced.
///
/// What is written takes its place as a whole (atomic_file.h). What is new is for its owner only: 0600, folders 0700; a
/// file that takes an older one's place has the rights that this one had.
///
/// A link is never written through, emptied or replaced. Below a guarded folder none is followed at all, in no part of
/// the path; elsewhere the folders of a path, and a file that is read, may be links: there the user chose the path.
namespace Files
{
/// Guards a folder of the program's own: itself and everything below. What lies above may be links.
void Guard(const QString &folder);

/// What stands under a name.
struct Entry {
    QString name;
    bool is_folder = false;
    bool is_runnable = false;
    bool is_own = false; ///< it belongs to the user who runs this
    qint64 size = 0;
    QDateTime changed;
};

/// The file or folder at a path; none where nothing stands or what the door does not pass.
std::optional<Entry> Look(const QString &path);
bool Is_File(const QString &path);
/// The files and folders in a folder, in no order; none for a folder that the door does not pass.
QList<Entry> Entries(const QString &folder);

/// Opens a file for reading. @throws Run_Time_Error 53 when it is missing, 75 when it cannot be read.
void Open_To_Read(QFile &file, const QString &path);
/// Opens a file that is there for reading and writing where it is. @throws like Open_To_Read
void Open_To_Change(QFile &file, const QString &path);
/// Adds to the end of a file, which is made if it is missing. @throws like Write_Bytes
void Append_Bytes(const QString &path, const QByteArray &bytes);
/// Lets everybody who may read the file run it too. @throws like Open_To_Read
void Make_Runnable(const QString &path);
/// Gives a file that the coder wrote the rights that the user's own files have. @throws like Open_To_Read
void Give_Away(const QString &path);
/// Gives a file another name in its folder, in the place of what has that name. @throws like Write_Bytes
void Rename_File(const QString &path, const QString &name);

/// Makes sure that a folder which the user names can take files: it is made if it is missing, and may be written.
/// @throws Run_Time_Error 70 or 75 when it cannot
void Prepare_Folder(const QString &path);
/// Deletes a folder with everything in it; a link goes, what it points to stays. @returns whether it is gone
bool Delete_Folder(const QString &path);
/// Deletes the files of a folder whose names match. What cannot be deleted stays.
void Delete_Files(const QString &folder, const QString &pattern);
} // namespace Files

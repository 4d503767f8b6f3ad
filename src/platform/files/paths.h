// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

/// Paths as the system writes them ("\\" between names, drive letters) and as the machine has them.
namespace Files
{
/// The native path for a path in the system's spelling: "\\" becomes the separator, and each name that does not
/// exist as spelled is replaced by one that differs in case only, if there is one. Blanks at the end are dropped.
QString Native_Path(const QString &path);
/// Separators turned to "/", runs of them joined, blanks at the end dropped; names stay as spelled.
QString With_Slashes(const QString &path);
/// A path that stands by itself: it begins with "/" here, or has ":\\" at characters 2 and 3.
bool Is_Absolute(const QString &path);
/// `directory` with the separator "\\" or "/" at its end; "" stays "".
QString With_Final_Separator(const QString &directory);
/// The form of a path that programs without long names need: the path itself on POSIX systems.
QString Short_Path(const QString &path);
/// A plain file name: no separator, no drive, not "", "." or "..", no control character.
bool Is_Plain_Name(const QString &name);
/// A plain file name, without extension, for a text such as a title: on one line, "_" for what no system's names hold,
/// at most 80 characters. @returns `otherwise` for a text of blanks only
QString Name_For(const QString &text, const QString &otherwise);

/// Whether a written file must outlive a failure of the machine, or only one of the program: waiting for the disk
/// costs more than all else. What is given away is kept, and a new one is for whom the user lets read his files, not
/// for him alone. A scratch file need not outlive either: it is written where it is, which spares a new file each time.
enum class Durability { Kept, Given, Staging, Scratch };

/// Reads a whole file. @throws Run_Time_Error 53 when it is missing, 75 when it cannot be read.
QByteArray Read_Bytes(const QString &path);
/// Writes a whole file so that after a kill the old or the new content stands, never a part, but for a scratch file.
/// The name of a staging or scratch file is taken as spelled.
/// @throws Run_Time_Error 61 on a full disk, 70 without permission, 75 else.
void Write_Bytes(const QString &path, const QByteArray &bytes, Durability durability = Durability::Kept);
/// Copies a file over another, whole or not at all. @throws like Read_Bytes and Write_Bytes.
void Copy_File(const QString &from, const QString &to, Durability durability = Durability::Kept);
/// Deletes a file, or a link itself, if it exists. @throws Run_Time_Error 70 or 75 when it cannot be.
void Delete_If_Present(const QString &path);
/// Makes a directory with its parents if it is missing. A path that is not a full one here would be another place at
/// each start, and is refused. @throws Run_Time_Error 61, 70 or 75.
void Make_Directory(const QString &path);

/// Text of the system's own text files: UTF-16 by its mark, UTF-8, or GB18030 when the bytes are no valid UTF-8. A mark
/// is dropped.
QString Decode_Text(const QByteArray &bytes);
} // namespace Files

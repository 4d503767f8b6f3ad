// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <span>

/// When an existing file gives way to the one that the program carries.
enum class Removal {
    Never,
    Other_Length, ///< its length is not that of the carried one
    Old_Skin,     ///< it has the length of the skin that older versions brought
};

/// One file that the program carries inside itself and writes out where it is missing. Paths are below the program
/// directory, in the system's spelling.
struct Runtime_File {
    const char *target;
    const char *resource;
    Removal removal;
    const char *leftover; ///< file of older versions that is deleted with this row, or nullptr
    const char *mark;     ///< trace mark behind the row, or nullptr
    bool is_program = false;
};

/// In the order of writing.
std::span<const Runtime_File> Runtime_File_Table();
/// Where a carried file can be read, by its resource's key.
QString Resource_Path(const QString &resource);
/// Bytes of a carried file by its resource's key. @throws Run_Time_Error 53 when the program carries no such file.
QByteArray Runtime_File_Bytes(const QString &resource);

/// Writes out every carried file that is missing, so that a bare copy of the program in an empty directory becomes a
/// working installation, and replaces stale files of older versions.
/// @throws Run_Time_Error 70 or 75 for a file that can't be deleted or written, 61 on a full disk
void Load_Runtime_File();

/// Each makes its directory below the program directory if it is missing.
/// @returns its native path with a final separator. @throws Run_Time_Error 75.
QString Tools_Directory();
QString Skins_Directory();
QString Editor_Directory();
QString Temp_Directory();
QString Icon_Directory();
QString Keywords_Directory();

/// Deletes all that stands in data\temp\: the text of protected documents may be among it. What cannot be deleted
/// stays.
void Clear_Temp_Directory();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace Files
{
struct Found_File {
    QString path; ///< native
    qint64 size = 0;
};

/// An entry that a walk passed over, and why.
enum class Passed_Over {
    Link,
    Special,    ///< a pipe, a socket, a device
    Name,       ///< no path of the program can hold it
    Unreadable, ///< it went, or may not be looked at
};
struct Passed_Entry {
    QString path; ///< as far as it can be shown
    Passed_Over why;
};

struct Found_Files {
    std::vector<Found_File> files;
    std::vector<Passed_Entry> passed;
    qint16 file_count = 0;   ///< stays where it would no longer fit
    qint16 folder_count = 0; ///< of the folders that were gone into, likewise
    qint64 bytes = 0;
    bool overflown = false; ///< a counter was full; what is above it is found all the same
    bool stopped = false;
};

/// Asked before each folder with what was found so far; false ends the walk.
using Walk_Step = std::function<bool(const QString &folder, qint64 found)>;

/// Walks a directory: its files first, then each folder in it, in the order of their names. A folder whose name ends in
/// ".sys" is not gone into. Links are never followed, so that no walk goes round.
/// @param pattern  "*.*" takes every file, else those whose extension stands in the pattern, without regard to case
Found_Files Walk_Directory(const QString &path, const QString &pattern, bool subFolders, const Walk_Step &step);
} // namespace Files

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Where a linked attachment is, as `file_path` spells it:
///   a plain path    stands by itself
///   "<P>" + rest    below the program's folder
///   "<D>" + rest    on the program's drive: the first letter of the program's folder stands before the rest
///   "<F>" + path    a folder
///   "<W>" + address a page
/// The drive of a path that has no letter is its leading "/": "<D>" then means a path from the root.
namespace Attachment_Place
{
enum class Kind { File, Folder, Page };

struct Place {
    Kind kind = Kind::File;
    QString target; ///< a native path, or the address
};

Place Expanded(const QString &path);

/// The spelling that follows the program's folder, or its drive, when they move.
QString Reduced(const QString &path);
QString Folder_Link(const QString &folder);
QString Page_Link(const QString &address);

/// Whether an address may be given to the desktop: pages, mail and file transfer, nothing that runs or opens files.
bool Is_Safe_Address(const QString &address);
} // namespace Attachment_Place

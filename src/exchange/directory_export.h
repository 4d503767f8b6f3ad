// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QString>
#include <functional>

/// The bodies of all documents of a folder and of those below it become files in their own format, a directory for each
/// folder.

/// What becomes of a file that stands where a document goes; that of one that is not replaced gets another name.
enum class Replacing { Yes, No, All, None, Stop };

/// What only the user can say.
struct Export_Questions {
    /// The password of a locked folder, by the folder's name.
    std::function<QString(const QString &folder)> password;
    /// Whether a file that stands there is replaced, by the document's title. After "All" and "None" nothing more is
    /// asked, "Stop" ends the run.
    std::function<Replacing(const QString &title)> replace;
};

struct Export_Result : Work_Result {
    QString report;              ///< path of the report
    QString sum;                 ///< in words
    bool wrong_password = false; ///< a folder stayed closed, which ended the run
    bool disk_full = false;      ///< which ended the run
};

/// Exports a folder below a directory that exists, and writes the report. A document with a password, one whose title
/// no file can have, and one that cannot be read, fails alone. Nothing is written outside of the directory, and no
/// link in it is followed. A full disk ends the run.
/// @throws Run_Time_Error when the report cannot be begun, or the folders cannot be read.
Export_Result Export_Directory(const QString &folderId, const QString &directory, const Export_Questions &ask,
                               Work &work);

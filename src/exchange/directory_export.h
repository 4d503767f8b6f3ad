// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QString>
#include <functional>

/// The bodies of all documents of a folder and of those below it become files in their own format, a directory for each
/// folder.

/// What only the user can say.
struct Export_Questions {
    /// The password of a locked folder, by the folder's name.
    std::function<QString(const QString &folder)> password;
    /// Whether a file that stands there is replaced, by the document's title; else the file gets another name.
    std::function<bool(const QString &title)> replace;
};

struct Export_Result : Work_Result {
    QString report;              ///< path of the report
    QString sum;                 ///< in words
    bool wrong_password = false; ///< a folder stayed closed, which ended the run
};

/// Exports a folder below a directory that exists, and writes the report. A document with a password, one whose title
/// no file can have, and one that cannot be read, fails alone. Nothing is written outside of the directory, and no
/// link in it is followed. A full disk ends the run.
/// @throws Run_Time_Error when the report cannot be begun, or the folders cannot be read.
Export_Result Export_Directory(const QString &folderId, const QString &directory, const Export_Questions &ask,
                               Work &work);

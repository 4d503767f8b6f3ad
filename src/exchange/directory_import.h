// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"
#include "platform/files/directory_walk.h"

#include <QString>
#include <QStringList>
#include <functional>

/// Files below a directory become documents of a folder; the directory's folders become folders of the tree.

enum class Title_Rule {
    Whole_Name,           ///< the file's name
    Without_Last_Letters, ///< the name without its last four characters, whatever they are
};

/// A file of the list, with the texts of its row.
struct Import_Row {
    QString name;
    QString folder; ///< the path with every occurrence of the name taken out of it
    QString size;
    QString type;
    /// The path that is imported. It is built from the row, so that a directory whose name contains the file's gives
    /// one that is missing.
    [[nodiscard]] QString Path() const { return folder + name; }
};
Import_Row Row_Of(const Files::Found_File &file);

/// What the list of files says of a walk.
QString Found_Text(const Files::Found_Files &found);
/// What is said once when a walk found more than its counters hold.
QString Overflow_Text();
/// Why a walk passed over an entry.
QString Passed_Text(Files::Passed_Over why);

struct Directory_Import {
    QString directory; ///< as it stands in the path box
    QString folder;    ///< id of the target
    Title_Rule title = Title_Rule::Whole_Name;
    QStringList paths; ///< to be imported, in their order
    Files::Found_Files found;
};

/// Those of the paths whose document stands in its folder already, by title.
QStringList Known_Paths(const Directory_Import &plan);

struct Import_Result : Work_Result {
    QString report; ///< path of the report, "" where nothing was begun
};

/// Imports the plan's paths, each as a document of its own commit, and writes the report: a line for each file, then
/// the sum, in which what was found is what was imported, failed and left out together, with the reasons.
/// @param added  told of each new document, as its name and id
/// @throws Run_Time_Error when the report cannot be begun.
Import_Result Import_Directory(const Directory_Import &plan, Work &work,
                               const std::function<void(const QString &name, const QString &code_id)> &added);

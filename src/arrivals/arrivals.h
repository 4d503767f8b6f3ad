// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>

class QTextDocument;

/// What comes in from outside the windows: dropped files, messages of other programs, quick notes. It goes to the
/// folder of the setting Cob_K9.
namespace Arrivals
{
/// Id of that folder; the recycle bin where it is gone.
QString Folder();
/// Name of a folder, as trees show it; "" where there is none.
QString Folder_Name(const QString &id);

/// Stores a file: its name as title, its extension as type. A failure shows a box.
/// @returns the document's id, "" after an error
QString Take_File(const QString &path, const QString &folder);

/// Stores a note. @param title  "" for the first line of the text
/// @returns the document's id, "" after an error, which is recorded
QString Take_Note(const QTextDocument &note, const QString &title, const QString &folder);
QString Take_Text(const QString &text, const QString &title, const QString &folder);

/// The parts of a command string of the message link.
struct Command {
    QString title;
    QString text;
};
/// Its head of 14 characters is the title, what stands behind it the text; none where there is no text.
std::optional<Command> Read_Command(const QString &command);
} // namespace Arrivals

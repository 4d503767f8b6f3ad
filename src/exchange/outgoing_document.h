// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QString>
#include <memory>

class QTextDocument;
namespace Html
{
class Closed_Door;
}

/// A document on its way to somebody who does not have the program: what its pane shows, as a copy, and where its own
/// file is.
class Outgoing_Document
{
public:
    explicit Outgoing_Document(const QTextDocument &shown);
    ~Outgoing_Document();
    Outgoing_Document(const Outgoing_Document &) = delete;
    Outgoing_Document &operator=(const Outgoing_Document &) = delete;

    QString code_id; ///< "" for one that is not stored yet
    QString title;
    QString type; ///< upper-case; "" or "RTF" for one whose pane shows all of it
    QString file; ///< where it lies if it is kept outside of the database

    [[nodiscard]] QTextDocument &Text() const { return *m_text; }
    /// Lets the thread that calls this use the copy. Between two threads it belongs to none.
    void Take_To_This_Thread() const;
    void Leave_Thread() const;

private:
    std::unique_ptr<Html::Closed_Door> m_door; ///< owns the copy
    QTextDocument *m_text;
};

/// A folder below data\temp\ that goes, with all in it, when its work is done.
class Export_Room
{
public:
    /// @throws Run_Time_Error as Files::Make_Directory does
    Export_Room();
    ~Export_Room();
    Export_Room(const Export_Room &) = delete;
    Export_Room &operator=(const Export_Room &) = delete;

    [[nodiscard]] QString Path(const QString &name) const { return m_path + QLatin1Char('/') + name; }
    [[nodiscard]] const QString &Path() const { return m_path; }

private:
    QString m_path;
};

/// Texts of office programs, their tables and presentations as well, or whatever other programs write.
enum class File_Kind { Office_Text, Office, Any };
/// Puts the stored file of a document of another program into a room. @returns its path, "" for any other document
QString Stored_File_Of(const Outgoing_Document &document, const Export_Room &room, File_Kind kind);

/// Has the office engine convert a file in a room. @returns the path of what it wrote
/// @throws Run_Time_Error with Failure::Stopped when the work is called off; else one that says in words why not
QString Convert(const QString &source, const QString &suffix, const Export_Room &room, Work &work);

/// Puts all that an office program's document shows in place of the words that the pane has of it.
/// @returns false where the engine is missing: then there are only those words
bool Take_Whole_Text(Outgoing_Document &document, const Export_Room &room, Work &work);

/// @throws Run_Time_Error that says why in words
[[noreturn]] void Refuse_Export(const QString &reason);
/// @throws Run_Time_Error with Failure::Stopped
[[noreturn]] void Stop_Export();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/process_state.h"
#include "documents/document_form.h"

#include <QMap>
#include <QString>

class QTextDocument;
class Recordset;

/// What became of a save.
enum class Save_Outcome {
    Failed, ///< it has been shown and recorded; nothing was written
    Stored,
    Changed_Elsewhere, ///< the row is not what the form was filled from; nothing was written
    Lock_Stays_Open,   ///< the stream is too long for its password to be asked for; nothing was written
};

/// Stores the form's document as AddCodeContent_Ex_Standard does.
/// @param lockMayStayOpen  store a stream that is too long for its password to be asked for
Save_Outcome Save_Document(Document_Form &form, const QString &code_id, bool lockMayStayOpen);

/// A digest of what a save of the form writes over: two rows of one state hold the same text.
QString Stored_State(Recordset &row);
/// That of the row as it stands; "" when there is none. @throws Run_Time_Error
QString Stored_State_Of(const QString &code_id);

/// How many characters each bounded field's column takes. @throws Run_Time_Error
QMap<QString, int> Field_Rooms();

/// Stores the form's document. `code_id` "0" inserts a row and puts its new id in `form.code_id`; another id updates
/// that row. A failure shows a box, is recorded under "Mod_DataBase\AddCodeContent_Ex_Standard" and writes nothing.
/// @returns whether the document was stored.
bool AddCodeContent_Ex_Standard(Document_Form &form, const QString &code_id);

/// Stores rich text that was captured quickly, with no form. Nothing is shown when it fails: it is recorded under
/// "Mod_DataBase\AddCodeContent_Ex", and Last_Trouble tells it.
/// @param code_id  an existing id updates that document, "0" or an unknown one inserts
/// @param title    "" takes the first 30 characters of the text
/// @returns the document's id, "" after an error
QString AddCodeContent_Ex(const QTextDocument &source, const QString &folder_id, const QString &code_id,
                          const QString &title, const QString &type);

/// Stores a file from disk as a document of `type` (its extension, in any case).
/// @param code_id    an existing id updates that document, "0" or an unknown one inserts
/// @param title      "" takes the path
/// @param link_only  keep only the path; types that are always links turn it on themselves
/// @returns the document's id, "" after an error, which is shown and recorded under "AddCodeContent_File_Ex".
QString AddCodeContent_File_Ex(const QString &path, const QString &folder_id, const QString &code_id,
                               const QString &title, const QString &type, bool link_only);

/// A document that was made of a file, or why there is none.
struct Stored_File {
    QString id; ///< "" after an error
    Pending_Error trouble;
};
/// The same for one file of many: nothing is shown.
Stored_File Store_File(const QString &path, const QString &folder_id, const QString &code_id, const QString &title,
                       const QString &type, bool link_only);

/// Tells the user that a save failed, with the pending error.
void Report_Failed_Save();

/// Now as the store writes it: "YYYY-MM-DD HH:MM:SS".
QString Store_Time();
/// Whether there is a document of that id. @throws Run_Time_Error
bool Is_Stored(const QString &code_id);

/// Stores a file's bytes and its text as the content of a document that was a file's before; its other fields stay.
/// A failure shows a box, is recorded under "Mod_DataBase\Replace_File_Content" and changes nothing.
/// @param text  out: the text of the file
/// @returns whether the file was stored
bool Replace_File_Content(const QString &code_id, const QString &path, QString &text);

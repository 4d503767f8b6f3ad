// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextDocument;
class Work;

/// What stands in a document's body, for exports that show it.
namespace Document_Body
{
/// Fills `document` with what the document's pane shows: rich and plain text and web pages as they are, texts of office
/// programs as the office engine has them, for other types, and without the engine, the text that the list shows.
/// Nothing is fetched.
/// @param work  asked while the engine runs
/// @throws Run_Time_Error with a reason for the user: it is gone, empty, has a password, or cannot be decoded
void Load(const QString &code_id, QTextDocument &document, Work &work);
/// The text by which the document is listed and searched. @throws like Load, but knows no password
QString Listed_Text(const QString &code_id);
} // namespace Document_Body

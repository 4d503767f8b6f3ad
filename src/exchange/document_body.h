// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextDocument;

/// What stands in a document's body, for exports that show it.
namespace Document_Body
{
/// Fills `document` with what the document's pane shows: rich and plain text and web pages as they are, for other types
/// the text that the list shows. Nothing is fetched.
/// @throws Run_Time_Error with a reason for the user: it is gone, empty, has a password, or cannot be decoded
void Load(const QString &code_id, QTextDocument &document);
/// The text by which the document is listed and searched. @throws like Load, but knows no password
QString Listed_Text(const QString &code_id);
} // namespace Document_Body

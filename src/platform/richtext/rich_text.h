// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

class QTextDocument;

/// The rich-text control's ways in and out: RTF 1.9.1 and plain text, to and from QTextDocument.
namespace Rich_Text
{
enum class Format { Rtf = 0, Plain = 1 };

/// Fills `document` from RTF bytes. Damaged or hostile input gives as much text as can be had.
/// @returns false when the bytes do not begin as RTF does; `document` is then left as it was.
bool Read_Rtf(const QByteArray &bytes, QTextDocument &document);
/// The document as RTF: ASCII bytes, the final brace followed by line ends that may be damaged without harm.
QByteArray Write_Rtf(const QTextDocument &document);

/// Text of a plain file: UTF-8 (with or without mark), UTF-16 with mark, else GB18030; any line ends become "\n".
QString Decode_Plain(const QByteArray &bytes);

/// Loads a file into the document. @throws Run_Time_Error 53 for a missing file, 75 for an unreadable one.
/// A file that is asked for as RTF and is none is loaded as plain text.
void Load_File(const QString &path, Format format, QTextDocument &document);
/// Saves the document. @throws Run_Time_Error 61 for a full disk, 75 else; an existing file stays whole.
void Save_File(const QString &path, Format format, const QTextDocument &document);
} // namespace Rich_Text

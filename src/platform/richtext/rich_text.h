// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>

class QTextDocument;

/// The rich-text control's ways in and out: RTF 1.9.1 and plain text, to and from QTextDocument.
namespace Rich_Text
{
enum class Format { Rtf = 0, Plain = 1 };

/// Asked now and then by long work whether it is called off; empty where nobody can.
using Stop = std::function<bool()>;
/// @throws Run_Time_Error with Failure::Stopped when the work is called off
void Ask(const Stop &stop);

/// Fills `document` from RTF bytes. Damaged or hostile input gives as much text as can be had.
/// @returns false when the bytes do not begin as RTF does; `document` is then left as it was.
/// @throws Run_Time_Error with Failure::Stopped when `stop` calls it off, and 7 where memory ends; `document` is then
/// empty, or as it was.
bool Read_Rtf(const QByteArray &bytes, QTextDocument &document, const Stop &stop = {});
/// What RTF held that a text document cannot, so that saving it loses that: pictures of headers and footers, the pages
/// of further sections, the shapes and frames of drawings, embedded objects, and fields that make their text anew.
enum Loss : quint8 {
    Header_Pictures = 1,
    Section_Pages = 2,
    Drawings = 4,
    Objects = 8,
    Other_Fields = 16,
};
/// The flags of Loss that hold for a document since it was read.
int Losses(const QTextDocument &document);

/// The document as RTF: ASCII bytes, the final brace followed by line ends that may be damaged without harm.
QByteArray Write_Rtf(const QTextDocument &document);

/// The text that a reader sees: QTextDocument::toPlainText without the signs in place of pictures and hidden text, and
/// with long paragraphs whole.
QString Shown_Text(const QTextDocument &document);

/// How far one step of indentation goes in, and a tab where no other stop is said, in pixels: half an inch, as in RTF.
inline constexpr double Indent_Width = 48;
/// Makes a document measure as RTF does. @param tab distance of the usual tab stops
void Set_Measures(QTextDocument &document, double tab = Indent_Width);

/// How a plain file is written.
struct Plain_Form {
    enum class Coding { Utf8, Utf16_Little, Utf16_Big, Gb18030 };
    enum class Line_End { Feed, Return_Feed, Return };

    Coding coding = Coding::Utf8;
    Line_End lineEnd = Line_End::Feed;
    bool hasMark = false;  ///< a byte order mark stands before the text
    QByteArrayList unread; ///< the bytes for each U+FFFD of the text, in their order; "" for the sign itself
    bool operator==(const Plain_Form &) const = default;
};
/// Text of a plain file: UTF-8 or UTF-16, with or without mark, else GB18030; any line ends become "\n". Bytes that
/// cannot be read become U+FFFD.
/// @param form how the file is written; of several kinds of line ends the one that is met most
QString Decode_Plain(const QByteArray &bytes, Plain_Form *form = nullptr);
/// The bytes of a plain file. Text that the coding cannot hold is written in UTF-8 with mark; bytes that could not be
/// read are written as they were.
QByteArray Encode_Plain(const QString &text, const Plain_Form &form);

/// Loads a file into the document. @throws Run_Time_Error 53 for a missing file, 75 for an unreadable one, else as
/// Read_Rtf does.
/// A file that is asked for as RTF and is none is loaded as plain text.
void Load_File(const QString &path, Format format, QTextDocument &document, const Stop &stop = {});
/// Saves the document, as a plain file in the form that it was loaded from, else in UTF-8. @throws Run_Time_Error 61
/// for a full disk, 7 where memory ends, 75 else; an existing file stays whole.
void Save_File(const QString &path, Format format, const QTextDocument &document);
} // namespace Rich_Text

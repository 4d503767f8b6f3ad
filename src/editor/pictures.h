// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QStringList>
#include <functional>

class QImage;
class QSizeF;
class QTextCharFormat;
class QMimeData;
class QTextCursor;
class QTextDocument;

/// How pictures come into a document: as bytes that the document itself holds, under a name made of them.
namespace Pictures
{
/// The bytes that a document holds of a picture, or that its name is made of; none for one that lies elsewhere.
QByteArray Held(const QTextDocument &document, const QString &name);
QByteArray As_File(const QImage &image);
/// Puts a picture where the cursor is. @returns false when the bytes are no picture
bool Insert(QTextCursor &cursor, const QByteArray &bytes);
/// The format of the first character of a selection; an image format where that is a picture.
QTextCharFormat Format_Of(const QTextCursor &selection);
/// The size that the selected picture is shown at, in pixels.
QSizeF Size_Of(const QTextCursor &picture);
/// The size of the selected picture's file, in pixels.
QSizeF Own_Size_Of(const QTextCursor &picture);
/// Gives the selected picture a size in pixels; one undo step.
void Set_Size(QTextCursor picture, const QSizeF &size);
/// The bytes of the picture of a clipboard or a drag, none where there is none.
QByteArray In(const QMimeData &data);
/// Local picture files among what is dragged or pasted.
QStringList Files_In(const QMimeData &data);
/// The bytes of a picture by the name that a document gives it, or none.
using Source = std::function<QByteArray(const QString &name)>;
/// Lets `holder` keep the pictures that `document` names, under names made of their bytes. A picture without bytes
/// gives way to the words that stand for it, or stays as a frame that names nothing.
void Keep(QTextDocument &document, QTextDocument &holder, const Source &source);
/// Gives `to` the pictures that `from` holds, for text that is copied between them.
void Carry_Over(QTextDocument &from, QTextDocument &to);
} // namespace Pictures

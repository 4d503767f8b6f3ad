// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// What a file on disk becomes as a document.
struct File_Content {
    QString type;            ///< the document's type, upper-case, aliases folded
    QString text;            ///< the text that is searched and listed
    bool link_only = false;  ///< only the path is stored, not the bytes
    bool keeps_path = false; ///< the path stands in Code_File
};

/// Reads a file by its type (its extension). @throws Run_Time_Error 53 or 75 when it cannot be read.
File_Content Content_Of_File(const QString &path, const QString &type, bool link_only);
/// The text of any file, as far as there is one; a type without a reader of its own is read as plain text unless it
/// holds other bytes. @throws Run_Time_Error 53 or 75 when it cannot be read.
QString Text_In_File(const QString &path, const QString &type);
/// Whether Text_In_File needs to be asked: sounds, pictures, archives and programs have no text.
bool May_Hold_Text(const QString &type);
/// The picture file that a page stands for, "" for a page that is not one of those which Content_Of_File makes.
QString Wrapped_Picture(const QString &page);
/// The file that such a page stands for, be it shown or linked.
QString Wrapped_File(const QString &page);
/// Whether the desktop may be given a file of a type unasked: one of the documents that this program knows, and none
/// that another program could run.
bool Is_Shown_Outside(const QString &type);

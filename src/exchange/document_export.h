// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/outgoing_document.h"

#include <functional>

/// One document becomes a file that other programs read. What stands at the target is replaced when the new file is
/// whole, and stays otherwise.

struct Export_Order {
    QString target;
    /// Writes the text as PDF; who prints for the window does it for the export too.
    std::function<void(const QTextDocument &text, const QString &target, const QString &title)> print;
};

struct Export_Outcome {
    bool stopped = false; ///< called off; nothing was written
    QString remark;       ///< what the user should know of the file, in words
};

/// Writes a document in the format that the target's suffix says: txt, rtf, htm, html, mht, mhtml, doc, chm, docx, odt,
/// pdf, md, markdown, or the document's own type. It may run in any thread, which takes the document to itself
/// meanwhile.
/// @throws Run_Time_Error that says in words why nothing was written
Export_Outcome Export_Document(Outgoing_Document &document, const Export_Order &order, Work &work);

/// Web pages, in one file, and what the office engine writes: doc, docx and odt. The files that are stored with the
/// document are listed in a table at its end. Without the engine DOC becomes RTF in the target's place.
/// @throws Run_Time_Error, with Failure::Stopped when the work is called off
Export_Outcome Db_to_file(const QString &target, Outgoing_Document &document, Work &work);

/// The source of the error log's records for a target.
QString Export_Source(const QString &target);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

class QPagedPaintDevice;
class QTextDocument;

/// A document on paper.
namespace Printing
{
struct Pages {
    int from = 1;
    int to = 0; ///< 0 for the last one
};

/// Gives a device an A4 page with margins of 2 cm.
void Set_Up_Page(QPagedPaintDevice &device);
/// Paints the document in black on white, with the page's number below the text. The document is left alone.
/// @returns the count of all pages, 0 when the device cannot be painted on
int Print(const QTextDocument &document, QPagedPaintDevice &device, const Pages &pages = {});
/// The places in the text where the pages behind the first one begin.
QList<int> Page_Starts(const QTextDocument &document);
/// Writes the document as PDF. @throws Run_Time_Error 61 for a full disk, 75 else; an older file stays then.
void Write_Pdf(const QTextDocument &document, const QString &path, const QString &title);
} // namespace Printing

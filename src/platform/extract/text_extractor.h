// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Plain text out of office files and PDF.
namespace ExtractText
{
inline constexpr qint64 Most_Characters = 67108864;

class TextExtractor
{
public:
    /// The text of a file of the types PDF, DOC, XLS, PPT, DOCX, XLSX and PPTX, told by what the file holds more than
    /// by its name; at most `limit` characters. A file that is broken, encrypted, of another kind, hostile or too slow
    /// to read gives what could be had, or "". Time and memory are bounded; other programs are asked for PDF and the
    /// older office formats, and the window is painted meanwhile.
    [[nodiscard]] QString ExtractText(const QString &path, qint64 limit = Most_Characters) const;
};
} // namespace ExtractText

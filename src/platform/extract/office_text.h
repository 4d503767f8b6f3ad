// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
class Office_Parts;

/// Text of a DOCX, XLSX or PPTX package (ECMA-376 part 1), told by its main part; at most `limit` characters.
QString Office_Text(Office_Parts &parts, qint64 limit);

/// Text of a workbook by its main part.
QString Sheets_Text(Office_Parts &parts, const QString &workbook, qint64 limit);
} // namespace ExtractText

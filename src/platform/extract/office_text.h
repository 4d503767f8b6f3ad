// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
class Office_Parts;

/// Text of a DOCX, XLSX or PPTX package (ECMA-376 part 1), told by the parts that it has; at most `limit` characters.
QString Office_Text(Office_Parts &parts, qint64 limit);

QString Words_Text(Office_Parts &parts, qint64 limit);
QString Sheets_Text(Office_Parts &parts, qint64 limit);
QString Slides_Text(Office_Parts &parts, qint64 limit);
} // namespace ExtractText

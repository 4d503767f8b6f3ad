// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace ExtractText
{
/// Programs that turn one kind of file into text on their standard output.
enum class Tool { None, Pdf, Words, Sheets, Slides };

/// Runs a tool on a file with bounds on time and memory. @returns the text it wrote up to a bound, "" when it failed,
/// is not installed, or there is none
QString Text_By_Tool(Tool tool, const QString &path, qint64 limit);

/// Milliseconds that a tool may take; tests shorten it.
void Set_Tool_Time(int milliseconds);
} // namespace ExtractText

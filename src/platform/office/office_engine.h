// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/programs/outside_program.h"

/// The office engine: LibreOffice, where it is installed. It converts files without a window, a network, macros or
/// anything of the user's own settings.
namespace Office
{
/// The engine's program, "" where none is installed.
QString Engine();

struct Converted {
    Programs::End end = Programs::End::Not_Started;
    QString path; ///< of what was written; "" unless it went well
};

/// Converts a file. @param suffix  of what is wanted: "doc", "docx", "odt", "rtf" or "pdf"
/// @param room  a folder of the caller's that takes the engine's own files and what it writes
/// @param goOn  as Programs::Run asks it
/// @throws Run_Time_Error as Files::Write_Bytes does
Converted Convert(const QString &source, const QString &suffix, const QString &room, const std::function<bool()> &goOn);

/// Milliseconds that a conversion may take; tests shorten it.
void Set_Time(int milliseconds);
} // namespace Office

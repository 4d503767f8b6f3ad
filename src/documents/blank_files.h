// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Stores an empty document of an office program.
/// @param type  "DOCX", "XLSX" or "PPTX"
/// @returns the document's id, "" after an error, which was shown
QString Store_Blank_File(const QString &type, const QString &folder_id, const QString &title);

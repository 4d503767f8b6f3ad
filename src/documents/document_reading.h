// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "documents/document_form.h"

#include <QString>

/// Loads a document into the form's fields and panes, asks for its password when its stream carries one, and counts
/// the reading.
/// @returns true when the document was read whole. After false its id stands in the form when a part of it was read,
/// which must not be stored; a form that could not be read at all is as it was, and a wrong password leaves no id. A
/// failure has been shown and recorded under "Mod_DataBase\GetCodeContent_Ex".
bool GetCodeContent_Ex(const QString &code_id, Document_Form &form);

/// What the content held that a save does not keep, as a sentence; "" for nothing.
QString Not_Kept(const QTextDocument &content);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_model.h"

class QTextDocument;

namespace Rtf
{
inline constexpr double Twips_Per_Pixel = 15; ///< a document's pixel is 1/96 inch

/// Name under which the picture with these bytes is kept as a resource of a document.
QString Picture_Name(const QByteArray &bytes);

/// Replaces the document's content by the model's. Undo is off meanwhile; the document counts as not modified.
/// @throws Run_Time_Error when `stop` called it off; the document then holds a part
void Build_Document(const Model &model, QTextDocument &document, const Rich_Text::Stop &stop);
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

class QTextDocument;

namespace Rtf
{
inline constexpr double Twips_Per_Pixel = 15; ///< a document's pixel is 1/96 inch

/// Name under which the picture with these bytes is kept as a resource of a document.
QString Picture_Name(const QByteArray &bytes);

/// Replaces the document's content by the model's. Undo is off meanwhile; the document counts as not modified.
void Build_Document(const Model &model, QTextDocument &document);
} // namespace Rtf

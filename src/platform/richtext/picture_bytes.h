// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

class QTextDocument;
class QVariant;

namespace Rich_Text
{
/// The names of pictures that a document holds begin so; any other names something elsewhere.
inline constexpr const char *Held_Picture_Names = "picture:";

/// A picture as a document's resource, as the bytes of a file: a decoded one becomes PNG.
QByteArray Picture_Bytes(const QVariant &resource);
/// The bytes of a picture that the document holds; none for a name of anything elsewhere.
QByteArray Held_Picture(const QTextDocument &document, const QString &name);
} // namespace Rich_Text

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

class QTextBlock;
class QTextImageFormat;

/// The text of one paragraph as Markdown.
namespace Markdown_Line
{
/// Text in which no sign means anything but itself; what begins a line is another matter.
QString Escaped(const QString &text);

/// @param lineEnd  what stands for a line break in the paragraph
/// @param picture  what stands for a picture
QString Of(const QTextBlock &block, const QString &lineEnd,
           const std::function<QString(const QTextImageFormat &)> &picture);
} // namespace Markdown_Line

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QColor;
class QPainter;
class QRectF;
class QTextDocument;

namespace Rich_Text
{
/// Paints what a document keeps and QTextDocument doesn't draw: the borders of paragraphs and the labels of lists that
/// only RTF knows. The painter has the document's coordinates, and the document itself has been drawn.
/// @param clip what is to be painted, in the document's coordinates  @param text colour of text that has none
void Paint_Decorations(QPainter &painter, const QTextDocument &document, const QRectF &clip, const QColor &text);
} // namespace Rich_Text

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QTextDocument>

/// The distance that lines have on screen where their paragraph says none: a bit more than the font's own. It stands in
/// the formats of the paragraphs as a kind of line height that no stored text has; the writer of rich text passes it
/// by, and whatever else leaves a pane is freed of it.
namespace Line_Distance
{
/// Gives it to the paragraphs of a part of a document, as part of the edit that is going on. Cells of tables stay
/// close.
void Give(QTextDocument &document, int from, int to);
/// Gives it to a document that was just filled: this is no edit, nothing can be undone, and it is not modified by it.
void Give(QTextDocument &document);
/// Takes it away from a copy of a document.
void Take(QTextDocument &copy);
/// The page of a document's text, without it.
QString Without(QString html);
} // namespace Line_Distance

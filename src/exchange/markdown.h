// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTextDocument;

/// A document as Markdown: CommonMark with the tables, struck out text and ticked items of GitHub's dialect, and a few
/// tags of HTML for what it has no sign for. A table's first row becomes its head. Pictures are part of the text, their
/// bytes at its end.
QString Markdown_Of(const QTextDocument &document);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

#include <QStringView>

class QTextCharFormat;

/// Footnotes, endnotes and comments: they are read and edited where they stand, in brackets, as a document has no
/// other place for them. Their characters know to which note they belong, so that they are written as what they were.
namespace Rtf
{
/// Who wrote a comment, and when: the words for Note::origin.
inline constexpr const char *Note_Origin_Words[] = {"atnid", "atnauthor", "atndate"};

/// What stands before a note's text in the pane; behind it stands "]".
inline constexpr QStringView Note_Opening = u" [";

void Set_Note(const Note &note, int number, QTextCharFormat &format);
} // namespace Rtf

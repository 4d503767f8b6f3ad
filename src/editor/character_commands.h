// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class Text_Editor;

/// Commands on the characters of the selection, or on those that are typed next.
namespace Character_Commands
{
void Bold(Text_Editor &editor, bool on);
void Italic(Text_Editor &editor, bool on);
void Underline(Text_Editor &editor, bool on);
void Strike(Text_Editor &editor, bool on);
void Superscript(Text_Editor &editor, bool on);
void Subscript(Text_Editor &editor, bool on);

bool Is_Bold(const Text_Editor &editor);
bool Is_Italic(const Text_Editor &editor);
bool Is_Underlined(const Text_Editor &editor);
bool Is_Struck(const Text_Editor &editor);
bool Is_Superscript(const Text_Editor &editor);
bool Is_Subscript(const Text_Editor &editor);

void Set_Family(Text_Editor &editor, const QString &family);
/// A size that is no positive number changes nothing.
void Set_Size(Text_Editor &editor, const QString &pointSize);
} // namespace Character_Commands

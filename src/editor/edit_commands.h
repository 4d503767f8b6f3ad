// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class Text_Editor;

/// Commands of the menu Edit that need no form.
namespace Edit_Commands
{
void Undo(Text_Editor &editor, bool on);
void Redo(Text_Editor &editor, bool on);
void Cut(Text_Editor &editor, bool on);
void Copy(Text_Editor &editor, bool on);
void Paste(Text_Editor &editor, bool on);
void Paste_Plain(Text_Editor &editor, bool on);
void Select_All(Text_Editor &editor, bool on);
/// Tells how much text is selected, or how much there is.
void Word_Count_Box(Text_Editor &editor, bool on);
} // namespace Edit_Commands

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class Text_Editor;

/// Commands that put something at the cursor, in place of the selection.
namespace Insert_Commands
{
/// Asks for a picture file. One that cannot be shown is refused with a message.
void Picture(Text_Editor &editor, bool on);
/// Asks for a target and makes the selection a link to it; without a selection the target itself becomes the text. In
/// a link, its target is asked anew, and an empty one takes the link away.
void Link(Text_Editor &editor, bool on);
void Rule(Text_Editor &editor, bool on);
void Date(Text_Editor &editor, bool on);
void Date_And_Time(Text_Editor &editor, bool on);
void Text(Text_Editor &editor, const QString &text);
} // namespace Insert_Commands

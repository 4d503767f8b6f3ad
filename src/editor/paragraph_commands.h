// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTextCharFormat>

class QTextBlockFormat;
class QTextCursor;
class Text_Editor;

/// Commands on the paragraphs of the selection, or on the cursor's.
namespace Paragraph_Commands
{
inline constexpr int Highest_Heading = 6;

/// 0 makes plain text, 1 to 6 a heading of that level. Level 7 and more are taken as 6.
void Set_Heading(Text_Editor &editor, int level);
int Heading_Level(const Text_Editor &editor);

void Set_Alignment(Text_Editor &editor, Qt::Alignment alignment);
bool Has_Alignment(const Text_Editor &editor, Qt::Alignment alignment);

/// The distances that are offered, in percent of the usual one; a setting names one by its place.
inline constexpr int Line_Spacings[] = {100, 115, 150, 200, 250, 300};
void Set_Line_Spacing(Text_Editor &editor, int percent);
int Line_Spacing(const Text_Editor &editor);

void Bullets(Text_Editor &editor, bool on);
void Numbers(Text_Editor &editor, bool on);
bool Is_Bulleted(const Text_Editor &editor);
bool Is_Numbered(const Text_Editor &editor);
/// Makes the cursor's paragraph one without a list, at the same indent level as text.
void Leave_List(QTextCursor &cursor);

/// One step in or out; an item of a list goes to the level below or above.
void Indent(Text_Editor &editor, bool on);
void Outdent(Text_Editor &editor, bool on);

void Move_Up(Text_Editor &editor, bool on);
void Move_Down(Text_Editor &editor, bool on);
/// Puts the selected paragraphs into the order of the user's language. One undo step; what stands in a table or goes
/// over a table's border is left alone.
void Sort(Text_Editor &editor, bool on);

/// Takes what makes a heading out of a paragraph's format.
void Make_Body(QTextBlockFormat &format);
/// The format of plain text after text of another one: its font, without what a heading adds.
QTextCharFormat Body_Format(const Text_Editor &editor, const QTextCharFormat &near);
} // namespace Paragraph_Commands

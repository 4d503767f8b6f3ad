// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>

class QTextCharFormat;
class QTextDocument;
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
/// An invalid colour takes the colour away.
void Set_Color(Text_Editor &editor, const QColor &color);
void Set_Highlight(Text_Editor &editor, const QColor &color);
/// Asks for a colour as "#RRGGBB" or by its name.
void Ask_Color(Text_Editor &editor, bool on);
/// A colour of the settings, 0xBBGGRR.
QColor Stored_Color(uint number);
/// Marks with the colour of the settings, or takes every mark away.
void Mark(Text_Editor &editor, bool on);
bool Is_Marked(const Text_Editor &editor);
void Ask_Highlight(Text_Editor &editor, bool on);
/// The next size up or down that people use.
void Larger(Text_Editor &editor, bool on);
void Smaller(Text_Editor &editor, bool on);
/// Makes the selection plain: its font and size stay those of the document, links stay links.
void Clear_Format(Text_Editor &editor, bool on);
/// Gives a text the font of another one and takes its colours away; what is bold, a link or a picture stays so.
void Keep_Emphasis(QTextDocument &document, const QTextCharFormat &like);
/// Gives a text the font and the size of another one where it says none itself.
void Fill_Font(QTextDocument &document, const QTextCharFormat &like);
} // namespace Character_Commands

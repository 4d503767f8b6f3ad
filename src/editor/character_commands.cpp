// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/character_commands.h"

#include "editor/text_editor.h"

namespace
{
void Align(Text_Editor &editor, QTextCharFormat::VerticalAlignment alignment, bool on)
{
    QTextCharFormat format;
    format.setVerticalAlignment(on ? alignment : QTextCharFormat::AlignNormal);
    editor.mergeCurrentCharFormat(format);
}
} // namespace

void Character_Commands::Bold(Text_Editor &editor, bool on)
{
    editor.setFontWeight(on ? QFont::Bold : QFont::Normal);
}

void Character_Commands::Italic(Text_Editor &editor, bool on)
{
    editor.setFontItalic(on);
}

void Character_Commands::Underline(Text_Editor &editor, bool on)
{
    editor.setFontUnderline(on);
}

void Character_Commands::Strike(Text_Editor &editor, bool on)
{
    QTextCharFormat format;
    format.setFontStrikeOut(on);
    editor.mergeCurrentCharFormat(format);
}

void Character_Commands::Superscript(Text_Editor &editor, bool on)
{
    Align(editor, QTextCharFormat::AlignSuperScript, on);
}

void Character_Commands::Subscript(Text_Editor &editor, bool on)
{
    Align(editor, QTextCharFormat::AlignSubScript, on);
}

bool Character_Commands::Is_Bold(const Text_Editor &editor)
{
    return editor.currentCharFormat().fontWeight() > QFont::Medium;
}

bool Character_Commands::Is_Italic(const Text_Editor &editor)
{
    return editor.currentCharFormat().fontItalic();
}

bool Character_Commands::Is_Underlined(const Text_Editor &editor)
{
    return editor.currentCharFormat().fontUnderline();
}

bool Character_Commands::Is_Struck(const Text_Editor &editor)
{
    return editor.currentCharFormat().fontStrikeOut();
}

bool Character_Commands::Is_Superscript(const Text_Editor &editor)
{
    return editor.currentCharFormat().verticalAlignment() == QTextCharFormat::AlignSuperScript;
}

bool Character_Commands::Is_Subscript(const Text_Editor &editor)
{
    return editor.currentCharFormat().verticalAlignment() == QTextCharFormat::AlignSubScript;
}

void Character_Commands::Set_Family(Text_Editor &editor, const QString &family)
{
    QTextCharFormat format;
    format.setFontFamilies({family});
    editor.mergeCurrentCharFormat(format);
}

void Character_Commands::Set_Size(Text_Editor &editor, const QString &pointSize)
{
    constexpr double Largest = 1638;
    const double size = pointSize.toDouble();
    if (!(size > 0 && size <= Largest))
        return;
    QTextCharFormat format;
    format.setFontPointSize(size);
    editor.mergeCurrentCharFormat(format);
}

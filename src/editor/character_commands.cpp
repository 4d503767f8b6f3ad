// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/character_commands.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "editor/paragraph_commands.h"
#include "editor/text_editor.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/kept_properties.h"

#include <QTextBlock>

#include <algorithm>

namespace
{
void Align(Text_Editor &editor, QTextCharFormat::VerticalAlignment alignment, bool on)
{
    QTextCharFormat format;
    format.setVerticalAlignment(on ? alignment : QTextCharFormat::AlignNormal);
    editor.mergeCurrentCharFormat(format);
}

/// Changes the format of each run of text between two places by itself. Unlike a merge this can take properties away.
template <class Change>
void Change_Runs(QTextDocument &document, int from, int to, Change &&change)
{
    struct Part {
        int from;
        int to;
        QTextCharFormat format;
    };
    QList<Part> parts; // hidden text stays as it is
    for (QTextBlock block = document.findBlock(from); block.isValid() && block.position() < to; block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment part = it.fragment();
            const int begin = std::max(from, part.position()), end = std::min(to, part.position() + part.length());
            if (begin < end && part.charFormat().objectType() != Rich_Text::Hidden_Object)
                parts.append({begin, end, part.charFormat()});
        }
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (Part &part : parts) {
        change(part.format);
        cursor.setPosition(part.from);
        cursor.setPosition(part.to, QTextCursor::KeepAnchor);
        cursor.setCharFormat(part.format);
    }
    cursor.endEditBlock();
}

/// The same for the selection, or for what is typed next.
template <class Change>
void Each_Run(Text_Editor &editor, Change &&change)
{
    const QTextCursor selection = editor.textCursor();
    if (selection.hasSelection()) {
        Change_Runs(*editor.document(), selection.selectionStart(), selection.selectionEnd(), change);
        return;
    }
    QTextCharFormat format = editor.currentCharFormat();
    change(format);
    editor.setCurrentCharFormat(format);
}

/// An invalid colour when nothing usable was typed; `given` tells whether the user gave one.
QColor Asked_Color(bool &given)
{
    const QString answer = Prompts::Input(Pack_Text("Editor_Bar", "_Ask_Color"), App().App_Title);
    const QColor color = QColor::isValidColor(answer.trimmed()) ? QColor(answer.trimmed()) : QColor();
    given = color.isValid();
    if (!given && !answer.isEmpty())
        Prompts::Message(Pack_Text("Editor_Bar", "_No_Color"), App().App_Title, Prompts::Icon::Exclamation);
    return color;
}

/// The colour that the settings name for marked text.
QColor Mark_Color()
{
    return Character_Commands::Stored_Color(Config().Col_List.toUInt());
}

constexpr double Usual_Sizes[] = {5,  6,  7,  8,  9,  10, 11, 12, 14, 16, 18, 20,
                                  22, 24, 26, 28, 32, 36, 40, 48, 56, 64, 72, 96};

void Step_Size(Text_Editor &editor, bool larger)
{
    const double documentSize = editor.document()->defaultFont().pointSizeF();
    const auto next = [&](double size) {
        const auto *above = std::upper_bound(std::begin(Usual_Sizes), std::end(Usual_Sizes), size);
        const auto *below = std::lower_bound(std::begin(Usual_Sizes), std::end(Usual_Sizes), size);
        if (larger)
            return above == std::end(Usual_Sizes) ? size : *above;
        return below == std::begin(Usual_Sizes) ? size : *std::prev(below);
    };
    Each_Run(editor, [&](QTextCharFormat &format) {
        const double size = format.fontPointSize() > 0 ? format.fontPointSize() : documentSize;
        format.setFontPointSize(next(size));
    });
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

void Character_Commands::Set_Color(Text_Editor &editor, const QColor &color)
{
    Each_Run(editor, [&](QTextCharFormat &format) {
        color.isValid() ? format.setForeground(color) : format.clearForeground();
    });
}

void Character_Commands::Set_Highlight(Text_Editor &editor, const QColor &color)
{
    Each_Run(editor, [&](QTextCharFormat &format) {
        color.isValid() ? format.setBackground(color) : format.clearBackground();
    });
}

QColor Character_Commands::Stored_Color(uint number)
{
    return QColor::fromRgb(static_cast<int>(number & 0xFF), static_cast<int>(number >> 8 & 0xFF),
                           static_cast<int>(number >> 16 & 0xFF));
}

void Character_Commands::Mark(Text_Editor &editor, bool on)
{
    Set_Highlight(editor, on ? Mark_Color() : QColor());
}

bool Character_Commands::Is_Marked(const Text_Editor &editor)
{
    const QTextCharFormat format = editor.currentCharFormat();
    return format.hasProperty(QTextFormat::BackgroundBrush) && format.background().color() == Mark_Color();
}

void Character_Commands::Ask_Color(Text_Editor &editor, bool /*on*/)
{
    bool given = false;
    const QColor color = Asked_Color(given);
    if (given)
        Set_Color(editor, color);
}

void Character_Commands::Ask_Highlight(Text_Editor &editor, bool /*on*/)
{
    bool given = false;
    const QColor color = Asked_Color(given);
    if (given)
        Set_Highlight(editor, color);
}

void Character_Commands::Larger(Text_Editor &editor, bool /*on*/)
{
    Step_Size(editor, true);
}

void Character_Commands::Smaller(Text_Editor &editor, bool /*on*/)
{
    Step_Size(editor, false);
}

void Character_Commands::Clear_Format(Text_Editor &editor, bool /*on*/)
{
    Each_Run(editor, [&](QTextCharFormat &format) {
        if (format.isImageFormat())
            return;
        QTextCharFormat plain = Paragraph_Commands::Body_Format(editor, format);
        if (format.isAnchor()) {
            plain.setAnchor(true);
            plain.setAnchorNames(format.anchorNames());
        }
        if (!format.anchorHref().isEmpty()) {
            plain.setAnchorHref(format.anchorHref());
            plain.setFontUnderline(true);
            plain.setForeground(format.foreground());
        }
        format = plain;
    });
}

void Character_Commands::Keep_Emphasis(QTextDocument &document, const QTextCharFormat &like)
{
    Change_Runs(document, 0, document.characterCount(), [&](QTextCharFormat &format) {
        for (const auto property : {QTextFormat::FontFamilies, QTextFormat::FontPointSize, QTextFormat::FontPixelSize,
                                    QTextFormat::FontSizeAdjustment, QTextFormat::ForegroundBrush,
                                    QTextFormat::BackgroundBrush, QTextFormat::FontLetterSpacing})
            format.clearProperty(property);
        format.setFontFamilies(like.fontFamilies().toStringList());
        if (like.fontPointSize() > 0)
            format.setFontPointSize(like.fontPointSize());
    });
}

void Character_Commands::Fill_Font(QTextDocument &document, const QTextCharFormat &like)
{
    Change_Runs(document, 0, document.characterCount(), [&](QTextCharFormat &format) {
        const bool sized = format.hasProperty(QTextFormat::FontPointSize) ||
                           format.hasProperty(QTextFormat::FontPixelSize) ||
                           format.hasProperty(QTextFormat::FontSizeAdjustment);
        if (!sized && !format.isImageFormat() && like.fontPointSize() > 0)
            format.setFontPointSize(like.fontPointSize());
        if (!format.hasProperty(QTextFormat::FontFamilies) && like.hasProperty(QTextFormat::FontFamilies))
            format.setFontFamilies(like.fontFamilies().toStringList());
    });
}

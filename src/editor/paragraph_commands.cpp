// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/paragraph_commands.h"

#include "editor/line_distance.h"
#include "editor/text_editor.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

#include <functional>

namespace
{
/// Changes the format of each paragraph of the selection; one undo step.
void Each_Block(const QTextCursor &selection, const std::function<void(QTextCursor &)> &change)
{
    QTextCursor cursor(selection.document());
    const int end = selection.selectionEnd();
    cursor.beginEditBlock();
    for (QTextBlock block = selection.document()->findBlock(selection.selectionStart());
         block.isValid() && block.position() <= end; block = block.next()) {
        // A selection that ends before a paragraph's first character doesn't mean that paragraph.
        if (selection.hasSelection() && block.position() == end && end > selection.selectionStart())
            break;
        cursor.setPosition(block.position());
        change(cursor);
    }
    cursor.endEditBlock();
}

/// Sizes of the headings, of plain text being 1.
double Heading_Factor(int level)
{
    static constexpr double Factors[] = {1.0, 1.9, 1.55, 1.3, 1.15, 1.05, 1.0};
    return Factors[std::clamp(level, 0, Paragraph_Commands::Highest_Heading)];
}

/// The size of a document's plain text: that of its first paragraph that is no heading.
double Body_Size(const Text_Editor &editor)
{
    for (QTextBlock block = editor.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() > 0 || block.length() <= 1)
            continue;
        const double size = block.begin().fragment().charFormat().fontPointSize();
        if (size > 0)
            return size;
    }
    return editor.Start_Size();
}

QTextListFormat::Style Next_Style(QTextListFormat::Style style)
{
    switch (style) {
    case QTextListFormat::ListDisc:
        return QTextListFormat::ListCircle;
    case QTextListFormat::ListCircle:
        return QTextListFormat::ListSquare;
    case QTextListFormat::ListSquare:
        return QTextListFormat::ListDisc;
    case QTextListFormat::ListDecimal:
        return QTextListFormat::ListLowerAlpha;
    case QTextListFormat::ListLowerAlpha:
        return QTextListFormat::ListLowerRoman;
    default:
        return QTextListFormat::ListDecimal;
    }
}

QTextListFormat::Style Previous_Style(QTextListFormat::Style style)
{
    QTextListFormat::Style before = style;
    for (QTextListFormat::Style next = Next_Style(style); next != style; next = Next_Style(next))
        before = next;
    return before;
}

bool Is_Numbering(const QTextListFormat &format)
{
    return Rich_Text::Rule_Of(format).kind != Rich_Text::Bullet_Kind;
}

void Make_List(Text_Editor &editor, QTextListFormat::Style style, bool on)
{
    const QTextCursor selection = editor.textCursor();
    if (!on) {
        Each_Block(selection, [](QTextCursor &cursor) { Paragraph_Commands::Leave_List(cursor); });
        return;
    }
    QTextList *made = nullptr;
    Each_Block(selection, [&](QTextCursor &cursor) {
        QTextBlockFormat plain = cursor.blockFormat();
        const int depth =
            cursor.currentList() != nullptr ? cursor.currentList()->format().indent() : 1 + plain.indent();
        plain.setIndent(0);
        cursor.setBlockFormat(plain);
        if (made != nullptr && made->format().indent() == depth) {
            made->add(cursor.block());
            return;
        }
        QTextListFormat format;
        format.setStyle(style);
        format.setIndent(depth);
        made = cursor.createList(format);
    });
}

/// A list item joins the list of the level it goes to, if that stands right above it.
void Shift_Item(QTextCursor &cursor, int step)
{
    const QTextListFormat old = cursor.currentList()->format();
    const int depth = old.indent() + step;
    if (depth < 1) {
        Paragraph_Commands::Leave_List(cursor);
        return;
    }
    for (QTextBlock above = cursor.block().previous(); above.isValid() && above.textList() != nullptr;
         above = above.previous()) {
        if (above.textList()->format().indent() < depth)
            break;
        if (above.textList()->format().indent() == depth) {
            above.textList()->add(cursor.block());
            return;
        }
    }
    QTextListFormat format;
    if (old.style() != Rich_Text::Kept_Labels && !old.hasProperty(Rich_Text::List_Family)) {
        format = old;
        format.setStyle(step > 0 ? Next_Style(old.style()) : Previous_Style(old.style()));
    } else { // labels of another level would not fit
        format.setStyle(Is_Numbering(old) ? QTextListFormat::ListDecimal : QTextListFormat::ListDisc);
    }
    format.setIndent(depth);
    cursor.createList(format);
}

void Shift(Text_Editor &editor, int step)
{
    Each_Block(editor.textCursor(), [step](QTextCursor &cursor) {
        if (cursor.currentList() != nullptr) {
            Shift_Item(cursor, step);
            return;
        }
        QTextBlockFormat format = cursor.blockFormat();
        const int indent = std::max(0, format.indent() + step);
        if (indent == format.indent()) // what changes nothing leaves nothing to undo or to save
            return;
        format.setIndent(indent);
        cursor.setBlockFormat(format);
    });
}
} // namespace

void Paragraph_Commands::Set_Heading(Text_Editor &editor, int level)
{
    level = std::clamp(level, 0, Highest_Heading);
    const double size = Body_Size(editor) * Heading_Factor(level);
    QTextCharFormat characters;
    characters.setFontWeight(level > 0 ? QFont::Bold : QFont::Normal);
    characters.setFontPointSize(std::round(size * 2) / 2);
    Each_Block(editor.textCursor(), [&](QTextCursor &cursor) {
        QTextBlockFormat format = cursor.blockFormat();
        Make_Body(format);
        if (level > 0) {
            format.setHeadingLevel(level);
            format.setTopMargin(size);
            format.setBottomMargin(size / 2);
        }
        cursor.setBlockFormat(format);
        cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(characters);
        cursor.mergeBlockCharFormat(characters);
    });
    editor.mergeCurrentCharFormat(characters);
}

int Paragraph_Commands::Heading_Level(const Text_Editor &editor)
{
    return std::min(editor.textCursor().blockFormat().headingLevel(), Highest_Heading);
}

void Paragraph_Commands::Set_Alignment(Text_Editor &editor, Qt::Alignment alignment)
{
    QTextBlockFormat format;
    format.setAlignment(alignment);
    editor.textCursor().mergeBlockFormat(format);
}

bool Paragraph_Commands::Has_Alignment(const Text_Editor &editor, Qt::Alignment alignment)
{
    return (editor.alignment() & Qt::AlignHorizontal_Mask & ~Qt::AlignAbsolute) ==
           (alignment & Qt::AlignHorizontal_Mask & ~Qt::AlignAbsolute);
}

void Paragraph_Commands::Set_Line_Spacing(Text_Editor &editor, int percent)
{
    QTextBlockFormat format;
    format.setLineHeight(percent,
                         percent == 100 ? QTextBlockFormat::SingleHeight : QTextBlockFormat::ProportionalHeight);
    QTextCursor cursor = editor.textCursor();
    cursor.beginEditBlock();
    cursor.mergeBlockFormat(format);
    Line_Distance::Give(*editor.document(), cursor.selectionStart(), cursor.selectionEnd());
    cursor.endEditBlock();
}

int Paragraph_Commands::Line_Spacing(const Text_Editor &editor)
{
    const QTextBlockFormat format = editor.textCursor().blockFormat();
    return format.lineHeightType() == QTextBlockFormat::ProportionalHeight ? qRound(format.lineHeight()) : 100;
}

void Paragraph_Commands::Bullets(Text_Editor &editor, bool on)
{
    Make_List(editor, QTextListFormat::ListDisc, on);
}

void Paragraph_Commands::Numbers(Text_Editor &editor, bool on)
{
    Make_List(editor, QTextListFormat::ListDecimal, on);
}

bool Paragraph_Commands::Is_Bulleted(const Text_Editor &editor)
{
    const QTextList *list = editor.textCursor().currentList();
    return list != nullptr && !Is_Numbering(list->format());
}

bool Paragraph_Commands::Is_Numbered(const Text_Editor &editor)
{
    const QTextList *list = editor.textCursor().currentList();
    return list != nullptr && Is_Numbering(list->format());
}

void Paragraph_Commands::Leave_List(QTextCursor &cursor)
{
    QTextList *list = cursor.currentList();
    if (list == nullptr)
        return;
    cursor.beginEditBlock();
    const int depth = list->format().indent();
    list->remove(cursor.block());
    QTextBlockFormat format = cursor.blockFormat();
    format.setObjectIndex(-1);
    format.setIndent(std::max(0, depth - 1));
    format.setLeftMargin(std::max(0.0, format.leftMargin())); // items may stand before their level's place
    cursor.setBlockFormat(format);
    cursor.endEditBlock();
}

void Paragraph_Commands::Indent(Text_Editor &editor, bool /*on*/)
{
    Shift(editor, 1);
}

void Paragraph_Commands::Outdent(Text_Editor &editor, bool /*on*/)
{
    Shift(editor, -1);
}

void Paragraph_Commands::Make_Body(QTextBlockFormat &format)
{
    if (format.headingLevel() == 0)
        return;
    format.clearProperty(QTextFormat::HeadingLevel);
    format.clearProperty(QTextFormat::BlockTopMargin);
    format.clearProperty(QTextFormat::BlockBottomMargin);
}

QTextCharFormat Paragraph_Commands::Body_Format(const Text_Editor &editor, const QTextCharFormat &near)
{
    QTextCharFormat format;
    format.setFontFamilies(near.fontFamilies().toStringList());
    format.setFontPointSize(Body_Size(editor));
    return format;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/paragraph_commands.h"
#include "editor/text_editor.h"

#include <QCollator>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>

#include <algorithm>

namespace
{
/// A paragraph taken out of its document: what it holds and how it looks.
struct Taken_Paragraph {
    QString text;
    QTextDocumentFragment content;
    QTextBlockFormat format;
    QTextCharFormat mark;
    QTextList *list;
};

Taken_Paragraph Take(const QTextBlock &block)
{
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    return {block.text(), cursor.selection(), block.blockFormat(), block.charFormat(), block.textList()};
}

void Put(const QTextBlock &block, const Taken_Paragraph &paragraph)
{
    QTextCursor cursor(block);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.setBlockCharFormat(paragraph.mark);
    QTextBlockFormat format = paragraph.format;
    format.setObjectIndex(-1);
    if (!paragraph.text.isEmpty())
        cursor.insertFragment(paragraph.content);
    cursor.setBlockFormat(format);
    if (paragraph.list != nullptr)
        paragraph.list->add(cursor.block());
}

/// Where a paragraph lives; two paragraphs may change places only within one home.
struct Home {
    const QTextFrame *frame;
    int cell; ///< of a table, by its first position
    bool operator==(const Home &) const = default;
};

Home Home_Of(const QTextBlock &block)
{
    const QTextCursor cursor(block);
    const QTextTable *table = cursor.currentTable();
    return {cursor.currentFrame(), table == nullptr ? -1 : table->cellAt(cursor).firstPosition()};
}

/// The paragraphs of the selection, or none when they don't all live in one place.
QList<QTextBlock> Selected(const QTextCursor &selection)
{
    QList<QTextBlock> blocks;
    const int end = selection.selectionEnd();
    for (QTextBlock block = selection.document()->findBlock(selection.selectionStart());
         block.isValid() && block.position() <= end; block = block.next()) {
        if (block.position() == end && !blocks.isEmpty())
            break;
        blocks << block;
    }
    const bool together = std::all_of(blocks.begin(), blocks.end(), [&](const QTextBlock &block) {
        return Home_Of(block) == Home_Of(blocks.first());
    });
    return together ? blocks : QList<QTextBlock>();
}

/// Gives the places of some paragraphs other paragraphs; one undo step.
void Rewrite(QTextDocument &document, int firstNumber, const QList<Taken_Paragraph> &paragraphs)
{
    QTextCursor step(&document);
    step.beginEditBlock();
    for (qsizetype i = 0; i < paragraphs.size(); ++i)
        Put(document.findBlockByNumber(firstNumber + static_cast<int>(i)), paragraphs[i]);
    step.endEditBlock();
}

void Select_Paragraphs(Text_Editor &editor, int first, int count, int offset)
{
    const QTextDocument &document = *editor.document();
    QTextCursor cursor(document.findBlockByNumber(first));
    if (count == 1) {
        cursor.setPosition(cursor.block().position() + std::min(offset, cursor.block().length() - 1));
    } else {
        const QTextBlock last = document.findBlockByNumber(first + count - 1);
        cursor.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    }
    editor.setTextCursor(cursor);
}

void Move(Text_Editor &editor, bool down)
{
    const QTextCursor cursor = editor.textCursor();
    const QList<QTextBlock> blocks = Selected(cursor);
    if (blocks.isEmpty())
        return;
    const QTextBlock other = down ? blocks.last().next() : blocks.first().previous();
    if (!other.isValid() || Home_Of(other) != Home_Of(blocks.first()))
        return;
    const int first = blocks.first().blockNumber();
    const int offset = cursor.positionInBlock();
    QList<Taken_Paragraph> order;
    for (const QTextBlock &block : blocks)
        order << Take(block);
    order.insert(down ? 0 : order.size(), Take(other));
    Rewrite(*editor.document(), down ? first : first - 1, order);
    Select_Paragraphs(editor, down ? first + 1 : first - 1, static_cast<int>(blocks.size()), offset);
}
} // namespace

void Paragraph_Commands::Move_Up(Text_Editor &editor, bool /*on*/)
{
    Move(editor, false);
}

void Paragraph_Commands::Move_Down(Text_Editor &editor, bool /*on*/)
{
    Move(editor, true);
}

void Paragraph_Commands::Sort(Text_Editor &editor, bool /*on*/)
{
    const QList<QTextBlock> blocks = Selected(editor.textCursor());
    if (blocks.size() < 2)
        return;
    const int first = blocks.first().blockNumber();
    QList<Taken_Paragraph> order;
    for (const QTextBlock &block : blocks)
        order << Take(block);
    QCollator collator(QLocale(QStringLiteral("zh_CN")));
    collator.setNumericMode(true);
    std::stable_sort(order.begin(), order.end(), [&](const Taken_Paragraph &one, const Taken_Paragraph &other) {
        return collator.compare(one.text, other.text) < 0;
    });
    Rewrite(*editor.document(), first, order);
    Select_Paragraphs(editor, first, static_cast<int>(blocks.size()), 0);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/line_distance.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>

namespace
{
constexpr double Pixels = 4; // at the usual size
/// Longer texts are shown as they are: each of their paragraphs would be touched before anything is seen.
constexpr int Most_Paragraphs = 20'000;

template <class Change>
void Each_Paragraph(QTextDocument &document, int from, int to, Change &&change)
{
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (QTextBlock block = document.findBlock(from); block.isValid() && block.position() <= to; block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        cursor.setPosition(block.position());
        if (change(format, cursor))
            cursor.setBlockFormat(format);
    }
    cursor.endEditBlock();
}
} // namespace

void Line_Distance::Give(QTextDocument &document, int from, int to)
{
    Each_Paragraph(document, from, to, [](QTextBlockFormat &format, const QTextCursor &cursor) {
        if (format.lineHeightType() != QTextBlockFormat::SingleHeight || cursor.currentTable() != nullptr)
            return false;
        format.setLineHeight(Pixels, QTextBlockFormat::LineDistanceHeight);
        return true;
    });
}

void Line_Distance::Give(QTextDocument &document)
{
    if (document.blockCount() > Most_Paragraphs)
        return;
    const bool modified = document.isModified();
    document.setUndoRedoEnabled(false);
    Give(document, 0, document.characterCount());
    document.setUndoRedoEnabled(true);
    document.setModified(modified);
}

void Line_Distance::Take(QTextDocument &copy)
{
    Each_Paragraph(copy, 0, copy.characterCount(), [](QTextBlockFormat &format, const QTextCursor & /*cursor*/) {
        if (format.lineHeightType() != QTextBlockFormat::LineDistanceHeight)
            return false;
        format.clearProperty(QTextFormat::LineHeight);
        format.clearProperty(QTextFormat::LineHeightType);
        return true;
    });
}

QString Line_Distance::Without(QString html)
{
    static const QRegularExpression words(
        QStringLiteral(" ?line-height:[\\d.]+; -qt-line-height-type: line-distance;"));
    return html.remove(words);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/located_key.h"

#include <QTextBlock>
#include <QTextEdit>

namespace
{
/// More marks than this help nobody, and each one costs time.
constexpr int Most_Marks = 2000;

QTextCursor Place_At(QTextDocument &document, const QString &key, qint64 place)
{
    QTextCursor at(&document);
    const auto last = static_cast<qint64>(document.characterCount()) - 1;
    if (place >= 0 && place + key.size() <= last) {
        at.setPosition(static_cast<int>(place));
        at.setPosition(static_cast<int>(place + key.size()), QTextCursor::KeepAnchor);
        QString selected = at.selectedText();
        selected.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
        if (selected.compare(key, Qt::CaseInsensitive) == 0)
            return at;
    }
    return document.find(key);
}
} // namespace

void Mark_Key(QTextEdit &text, const QString &key, qint64 place)
{
    if (key.isEmpty())
        return;
    QTextDocument &document = *text.document();
    QTextCharFormat mark;
    mark.setBackground(QColor(255, 224, 102));
    mark.setForeground(Qt::black);
    QList<QTextEdit::ExtraSelection> marks;
    for (QTextCursor at = document.find(key); !at.isNull() && marks.size() < Most_Marks; at = document.find(key, at))
        marks << QTextEdit::ExtraSelection{at, mark};
    QTextCursor there = Place_At(document, key, place);
    if (!there.isNull()) {
        mark.setBackground(QColor(255, 150, 40));
        marks << QTextEdit::ExtraSelection{there, mark};
    }
    text.setExtraSelections(marks);
    if (there.isNull())
        return;
    // A selection would lie over the mark.
    there.setPosition(there.selectionStart());
    text.setTextCursor(there);
    text.ensureCursorVisible();
    text.setFocus();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "editor/editor_commands.h"
#include "editor/text_editor.h"

#include <QAction>
#include <QLineEdit>
#include <QStringList>
#include <QTest>
#include <QTextBlock>
#include <QTextList>
#include <QVBoxLayout>

/// A window with one pane and its commands.
struct Desk {
    Desk()
    {
        layout.addWidget(&editor);
        layout.addWidget(&other);
        commands.Serve({&editor}, window);
        window.show();
        editor.setFocus();
        window.activateWindow();
        QTest::qWait(0);
    }

    void Run(const QString &command) { commands.Action(command)->trigger(); }
    void Select(int from, int to)
    {
        QTextCursor cursor(editor.document());
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        editor.setTextCursor(cursor);
    }
    [[nodiscard]] QTextCharFormat Format_At(int position) const
    {
        QTextCursor cursor(editor.document());
        cursor.setPosition(position + 1);
        return cursor.charFormat();
    }
    /// The paragraphs with what is special about each, as "h1:Title|b1:item|Text".
    [[nodiscard]] QString Outline() const
    {
        QStringList lines;
        for (QTextBlock block = editor.document()->begin(); block.isValid(); block = block.next()) {
            QString mark;
            if (block.blockFormat().headingLevel() > 0)
                mark = QStringLiteral("h%1:").arg(block.blockFormat().headingLevel());
            if (const QTextList *list = block.textList())
                mark = QStringLiteral("%1%2:")
                           .arg(QChar(list->format().style() == QTextListFormat::ListDisc ? u'b' : u'n'))
                           .arg(list->format().indent());
            else if (block.blockFormat().indent() > 0)
                mark += QStringLiteral("i%1:").arg(block.blockFormat().indent());
            lines << mark + block.text();
        }
        return lines.join(u'|');
    }

    QWidget window;
    QVBoxLayout layout{&window};
    Text_Editor editor;
    QLineEdit other;
    Editor_Commands commands{&window};
};

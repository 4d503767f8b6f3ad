// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/text_editor.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QTextBlock>

Text_Editor::Text_Editor(QWidget *parent) : QTextEdit(parent)
{
    setAcceptRichText(true);
}

void Text_Editor::Start_In_Font(const QString &family, qreal pointSize)
{
    QTextCharFormat format;
    format.setFontFamilies({family});
    format.setFontPointSize(std::max(1.0, pointSize));
    QTextCursor(document()).setBlockCharFormat(format);
    setCurrentCharFormat(format);
    document()->clearUndoRedoStacks();
}

void Text_Editor::Commit_Composition()
{
    if (m_composed.isEmpty())
        return;
    if (hasFocus())
        QGuiApplication::inputMethod()->commit();
    // An input method that doesn't answer at once would leave its text in the layout only, where no save sees it.
    if (m_composed.isEmpty())
        return;
    QInputMethodEvent taken;
    taken.setCommitString(m_composed);
    QCoreApplication::sendEvent(this, &taken);
    if (hasFocus())
        QGuiApplication::inputMethod()->reset();
}

void Text_Editor::inputMethodEvent(QInputMethodEvent *event)
{
    QTextEdit::inputMethodEvent(event);
    m_composed = event->preeditString();
}

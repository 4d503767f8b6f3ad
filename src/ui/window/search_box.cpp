// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/search_box.h"

#include "ui/lists/search_pane.h"

#include <QKeyEvent>
#include <QScopedValueRollback>

Search_Box::Search_Box(QWidget *parent) : QLineEdit(parent)
{
    setObjectName(QStringLiteral("Txt_Search"));
    setClearButtonEnabled(true);
    m_typing.setSingleShot(true);
    m_typing.setInterval(Search_Pane::Typing_Pause);
    connect(&m_typing, &QTimer::timeout, this, [this] { emit Wanted(text(), false); });
    connect(this, &QLineEdit::textChanged, this, [this](const QString &key) {
        if (m_showing)
            return;
        if (Search_Pane::Is_Worth_Searching(key))
            return m_typing.start();
        m_typing.stop();
        if (key.isEmpty())
            emit Cleared();
    });
}

void Search_Box::Show_Key(const QString &key)
{
    if (key == text() || hasFocus())
        return;
    const QScopedValueRollback showing(m_showing, true);
    setText(key);
}

QSize Search_Box::sizeHint() const
{
    constexpr int Letters = 34;
    return {fontMetrics().averageCharWidth() * Letters, QLineEdit::sizeHint().height()};
}

void Search_Box::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        if (text().isEmpty())
            emit Rows_Wanted();
        clear();
        return;
    case Qt::Key_Down:
        emit Rows_Wanted();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_typing.stop();
        emit Wanted(text(), true);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/located_key.h"

#include <QKeyEvent>
#include <QTextBlock>
#include <QTextEdit>

namespace
{
/// More marks than this help nobody, and each one costs time.
constexpr int Most_Marks = 2000;

/// Lives in a text while it has marks.
class Marks_Owner : public QObject
{
public:
    static QString Name() { return QStringLiteral("Key_Marks"); }

    explicit Marks_Owner(QTextEdit &text) : QObject(&text)
    {
        setObjectName(Name());
        text.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject * /*watched*/, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
            static_cast<QTextEdit *>(parent())->setExtraSelections({});
            deleteLater();
        }
        return false;
    }
};

void Take_Marks_Away(QTextEdit &text)
{
    QObject *owner = text.findChild<QObject *>(Marks_Owner::Name(), Qt::FindDirectChildrenOnly);
    if (owner == nullptr)
        return;
    text.setExtraSelections({});
    delete owner;
}

void Go_To(QTextEdit &text, QTextCursor there)
{
    // A selection would lie over the mark.
    there.setPosition(there.selectionStart());
    text.setTextCursor(there);
    text.ensureCursorVisible();
    text.setFocus();
}
} // namespace

void Mark_Key(QTextEdit &text, const QString &key, qint64 place)
{
    Take_Marks_Away(text);
    if (key.isEmpty())
        return;
    QTextDocument &document = *text.document();
    QTextCharFormat mark;
    mark.setBackground(QColor(255, 224, 102));
    mark.setForeground(Qt::black);
    QList<QTextEdit::ExtraSelection> marks;
    QTextCursor there;
    qint64 number = 0;
    // Places may lie over each other.
    for (QTextCursor at = document.find(key); !at.isNull() && (number <= place || marks.size() < Most_Marks);
         at = document.find(key, at.selectionStart() + 1), ++number) {
        if (number == 0 || number <= place)
            there = at;
        if (marks.size() < Most_Marks)
            marks << QTextEdit::ExtraSelection{at, mark};
    }
    if (there.isNull())
        return;
    mark.setBackground(QColor(255, 150, 40));
    marks << QTextEdit::ExtraSelection{there, mark};
    text.setExtraSelections(marks);
    new Marks_Owner(text);
    Go_To(text, there);
}

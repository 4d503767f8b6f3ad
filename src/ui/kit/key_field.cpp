// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/key_field.h"

#include <QKeyEvent>

namespace
{
bool Is_Of_The_Form(const QKeyEvent &event)
{
    const bool bare = (event.modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    return bare && (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab || event.key() == Qt::Key_Escape);
}

bool Is_Modifier(int key)
{
    return (key >= Qt::Key_Shift && key <= Qt::Key_ScrollLock) || key == Qt::Key_AltGr || key == Qt::Key_unknown ||
           key == Qt::Key_Super_L || key == Qt::Key_Super_R || key == 0;
}
} // namespace

Key_Field::Key_Field(QWidget *parent) : QLineEdit(parent)
{
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled, false);
}

void Key_Field::Set_Key(const QKeySequence &key)
{
    m_key = key;
    setText(key.toString(QKeySequence::NativeText));
}

bool Key_Field::Writes_Text(const QKeySequence &key)
{
    const QKeyCombination first = key.isEmpty() ? QKeyCombination() : key[0];
    const bool bare = (first.keyboardModifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    constexpr int First_Without_Character = 0x01000000;
    return bare && (first.key() < First_Without_Character || first.key() == Qt::Key_Backspace);
}

bool Key_Field::event(QEvent *event)
{
    if (event->type() == QEvent::ShortcutOverride && !Is_Of_The_Form(*static_cast<QKeyEvent *>(event))) {
        event->accept(); // keys of commands come here too
        return true;
    }
    return QLineEdit::event(event);
}

void Key_Field::keyPressEvent(QKeyEvent *event)
{
    if (Is_Of_The_Form(*event))
        return QLineEdit::keyPressEvent(event);
    event->accept();
    if (Is_Modifier(event->key()) || event->isAutoRepeat())
        return;
    const QKeyCombination key(event->modifiers() & ~Qt::KeypadModifier, static_cast<Qt::Key>(event->key()));
    Set_Key(QKeySequence(key));
    emit Pressed(m_key);
}

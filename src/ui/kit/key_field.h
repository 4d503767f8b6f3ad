// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <QLineEdit>

/// A box that takes the keys that are pressed in it as keys, not as text. Tab and Escape stay what they are to a form.
class Key_Field : public QLineEdit
{
    Q_OBJECT

public:
    explicit Key_Field(QWidget *parent = nullptr);

    [[nodiscard]] QKeySequence Key() const { return m_key; }
    void Set_Key(const QKeySequence &key);
    /// Keys that write a character where text is typed are no command's.
    static bool Writes_Text(const QKeySequence &key);

signals:
    /// By the user only.
    void Pressed(const QKeySequence &key);

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QKeySequence m_key;
};

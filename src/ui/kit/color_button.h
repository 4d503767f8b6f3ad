// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QPushButton>

/// A button that shows a colour and asks for another one. White stands for the colour of the skin.
class Color_Button : public QPushButton
{
    Q_OBJECT

public:
    explicit Color_Button(QWidget *parent = nullptr);

    /// The colour as the settings keep it: a number 0xBBGGRR, or the text that it was given and that is no colour.
    [[nodiscard]] QString Number() const { return m_number; }
    void Set_Number(const QString &number);

signals:
    void Number_Changed();

protected:
    void changeEvent(QEvent *event) override;

private:
    void Choose();
    void Show_Color();

    QString m_number;
};

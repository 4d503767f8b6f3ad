// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>

/// A date that one types in the short form, or takes from a calendar: a click on its button, Alt+Down or F4.
class Date_Field : public QLineEdit
{
    Q_OBJECT

public:
    explicit Date_Field(QWidget *parent = nullptr);

    void Show_Calendar();

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

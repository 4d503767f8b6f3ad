// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QWidget>

/// The program's mark as an icon, sharp at every size.
QIcon Program_Icon();

/// Shows the program's mark as large as fits, square.
class Logo_View : public QWidget
{
    Q_OBJECT

public:
    explicit Logo_View(QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QIcon m_icon;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPointer>
#include <QWidget>

/// A frame around a control that was found. It takes no clicks, and follows the control's place.
class Config_Mark : public QWidget
{
    Q_OBJECT

public:
    explicit Config_Mark(QWidget *parent);

    /// @param control  nullptr for none
    void Put_Around(QWidget *control);
    [[nodiscard]] QWidget *Control() const { return m_control; }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void Follow();

    QPointer<QWidget> m_control;
};

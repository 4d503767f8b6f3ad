// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QSystemTrayIcon;
class QWidget;

/// The window's icon in the tray, where the desktop has one.
class Tray : public QObject
{
    Q_OBJECT

public:
    explicit Tray(QWidget &window);

    void Add();
    /// Takes the icon away.
    void Remove();
    [[nodiscard]] bool Is_There() const;

signals:
    void Window_Wanted();
    void Leaving_Wanted();

private:
    QWidget &m_window;
    QSystemTrayIcon *m_icon = nullptr;
};

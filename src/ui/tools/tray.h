// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>
#include <memory>

class QMenu;
class QSystemTrayIcon;

/// The program's icon in the tray, where the desktop has one. A tray that comes after the program, as when both are
/// started with the session, gets it too; when the tray goes, it is told.
class Tray : public QObject
{
    Q_OBJECT

public:
    /// @param menu  of the icon; it outlives the tray
    explicit Tray(QMenu &menu);
    ~Tray() override;

    /// @param tip      what the icon says of itself
    /// @param welcome  shown in a balloon when the icon is there
    void Add(const QString &tip, const QString &welcome);
    void Remove();
    /// There is a tray, and the icon is in it.
    [[nodiscard]] bool Is_There() const;
    /// Shows a balloon. @returns false where there is none
    bool Tell(const QString &text);

signals:
    /// The icon was clicked.
    void Wanted();
    /// There is no tray any more.
    void Lost();

private:
    void Look();

    QMenu &m_menu;
    QString m_tip;
    QString m_welcome;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    QTimer m_look;
    int m_looks = 0;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <vector>

class QAction;
class QMenu;
class QWidget;

/// The ways of the keyboard through the window: F6 and Shift+F6 go round its areas, Alt with a number goes to one.
class Window_Keys : public QObject
{
    Q_OBJECT

public:
    struct Area {
        const char *caption;             ///< of its entry in the menu, in the section of the main window
        std::function<QWidget *()> root; ///< nullptr where there is none; F6 passes by one that is hidden
        std::function<void()> enter;     ///< puts the keyboard there, into a hidden one when it has opened it
    };

    /// @param menu  takes an entry for each way
    Window_Keys(QWidget &window, QMenu &menu, std::vector<Area> areas);

private:
    void Add(QMenu &menu, const char *caption, const char *key, std::function<void()> run);
    void Step(int step);
    [[nodiscard]] bool Is_There(const Area &area) const;

    QWidget &m_window;
    std::vector<Area> m_areas;
};

/// The first control in a part of a window that can take the keyboard, nullptr for none.
QWidget *First_Field(QWidget *part);

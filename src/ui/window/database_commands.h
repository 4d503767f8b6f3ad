// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>

class Document_Tabs;
class Left_Tabs;
class QWidget;
class Shell;

/// The commands of the main window that work on the whole database.
class Database_Commands : public QObject
{
    Q_OBJECT

public:
    /// @param window  a Shell that is a widget
    Database_Commands(QWidget &window, Shell &shell, Left_Tabs &left, Document_Tabs &tabs);

    /// Lets the user choose another one. @param chosen  told before its folders are shown
    void Choose(const std::function<void()> &chosen);
    void Compact();
    void Clean();

private:
    QWidget &m_window;
    Shell &m_shell;
    Left_Tabs &m_left;
    Document_Tabs &m_tabs;
};

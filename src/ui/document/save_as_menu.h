// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class Document_Tabs;
class QAction;
class QMenu;
class QWidget;
class Shell;

/// The menu "Save as": the document on screen becomes a file of another format, chosen in the menu or in the dialog.
class Save_As_Menu : public QObject
{
    Q_OBJECT

public:
    Save_As_Menu(QMenu &menu, Document_Tabs &tabs, Shell &shell, QWidget &window);

private:
    struct Kind;
    static const Kind Kinds[];

    QAction *Add_Command(const char *name, const char *caption, const Kind *kind);
    void Show_State();
    /// @param kind  nullptr lets the dialog offer all of them
    void Save(const Kind *kind);
    [[nodiscard]] QString Ask_For_File(const Kind *kind) const;
    [[nodiscard]] static QStringList All_Filters(const QString &suffix);
    void Write(const QString &path);

    QMenu &m_menu;
    Document_Tabs &m_tabs;
    Shell &m_shell;
    QWidget &m_window;
};

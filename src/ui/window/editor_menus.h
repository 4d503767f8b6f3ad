// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class Bookmark_Menu;
class Document_Tabs;
class Editor_Bar;
class QAction;
class QMenu;

/// The editor's part of the main window: the menus Edit, Insert and Format, which hold the commands of the document on
/// screen, printing, and the view modes.
class Editor_Menus : public QObject
{
    Q_OBJECT

public:
    struct Places {
        QMenu *edit;
        QMenu *insert;
        QMenu *format;
        QMenu *viewModes;
        QList<QAction *> print;   ///< print, as often as there are entries for it
        QList<QAction *> preview; ///< print preview
    };

    /// @param window  owns the commands that stand there, disabled, while no document is on screen
    Editor_Menus(const Places &places, Document_Tabs &tabs, QWidget &window);

signals:
    /// The user chose another view mode, 0 to 2: everything, only the text, the text as on paper.
    void View_Mode_Changed(int mode);

private:
    void Fill();
    void Print();
    void Add_View_Modes();
    void Use_View_Mode(int mode);

    Places m_places;
    Document_Tabs &m_tabs;
    Editor_Bar *m_spare;
    Bookmark_Menu *m_bookmarks;
};

/// The view mode that was chosen last, 0 to 2.
int Kept_View_Mode();

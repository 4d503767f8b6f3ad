// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <memory>

class By_Date_Pane;
class Frm_ListView;
class QTabWidget;
class Search_Pane;
class Shell;
class Tree_Pane;
struct Search_Result;

/// The left side of the main window: the tabs beside the folder tree, and what each of them shows in the list. The
/// page bar turns the pages of the tab that is on screen: choosing a tab lists what is chosen in it.
class Left_Tabs : public QObject
{
    Q_OBJECT

public:
    Left_Tabs(Shell &shell, QTabWidget &tabs, Tree_Pane &tree, Frm_ListView &list, QObject *parent);

    /// Lists a folder.
    void List_Folder(const QString &id);
    /// Shows what is chosen in the tab on screen anew, and reads the dates anew.
    void Reload();
    /// Documents were written or went: the tree of dates is read anew, at once while it is on screen. A change of the
    /// folder tree, which counts documents, says so by itself.
    void Dates_Changed();
    /// Ends a running search as its user would: the file is free then.
    void Stop_Search();
    /// The database is another one: there is no search any more.
    void Forget_Search();
    /// Shows a tab, and brings it to the front, or hides it; `page` is its name.
    void Show_Page(const char *page, bool on);
    /// Writes what the tabs keep for the next start.
    void Save();
    /// Puts the cursor into the key of the search.
    void Show_Search();

signals:
    /// The list was filled: it is to be on screen.
    void Listed();

private:
    QWidget *Fill_Page(const char *name, const QString &shown, QWidget *pane);
    void Follow_Folders();
    void Copy_Folders();
    void Read_Dates();
    void Show_Tab();
    void List_Date(const QString &dateText);
    void List_Result();

    Shell &m_shell;
    QTabWidget &m_tabs;
    Tree_Pane &m_tree;
    Frm_ListView &m_list;
    By_Date_Pane *m_byDate = nullptr;
    Search_Pane *m_search = nullptr;
    QWidget *m_treePage = nullptr;
    QWidget *m_byDatePage = nullptr;
    QWidget *m_searchPage = nullptr;
    std::shared_ptr<Search_Result> m_result; ///< of the last search, null before
    bool m_foldersStale = true;
    bool m_datesStale = true;
};

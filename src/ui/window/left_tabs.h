// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

class By_Date_Pane;
class Frm_ListView;
class Left_Page;
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

    /// Lists a folder, asking for its password where it needs one.
    void List_Folder(const QString &id);
    /// Folders were changed: what is listed is listed anew. For a folder that is gone, or is chosen no longer, the one
    /// that is chosen now comes, without asking.
    void Follow_Folders();
    /// Lists the documents of a ready-made condition.
    void List_Condition(const QString &where);
    /// Shows that no folder is chosen.
    void List_Nothing();
    /// Shows what is chosen in the tab on screen anew, and reads the dates anew.
    void Reload();
    /// Documents were written or went: what the tabs tell of them is read anew, at once while it is on screen. A change
    /// of the folder tree, which counts documents, says so by itself.
    void Dates_Changed();
    /// Ends a running search as its user would: the file is free then.
    void Stop_Search();
    /// The database is another one: there is no search any more.
    void Forget_Search();
    /// Shows a tab, and brings it to the front, or hides it; `page` is its name.
    void Show_Page(const char *page, bool on);
    /// Writes what the tabs keep for the next start.
    void Save();
    /// Brings the search to the front.
    void Show_Search();
    /// Searches for a key that stands elsewhere, with the folders and fields of the search. @param finished  as its own
    /// button does, with what that tells; else while the key is typed
    void Search_For(const QString &key, bool finished);
    /// The search is over: what was listed before comes back.
    void Leave_Search();

signals:
    /// The list was filled: it is to be on screen.
    void Listed();
    /// Documents may have changed, and what is counted of them.
    void Documents_Changed();
    /// What is searched.
    void Key_Changed(const QString &key);

private:
    QWidget *Fill_Page(const char *name, const QString &shown, QWidget *pane);
    /// Puts the pages of the wings behind the others.
    void Add_Pages();
    void Connect_Page(Left_Page &page);
    /// The page of a wing that is on screen, nullptr for another one.
    [[nodiscard]] Left_Page *Current_Page() const;
    void List_More();
    void Watch_Folders();
    void Fill_From_Folder(const QString &id, bool asks);
    void Copy_Folders();
    void Read_Dates();
    void Refresh_Page();
    void Show_Tab();
    void List_Date(const QString &dateText);
    /// The list follows a search: rows are added while it runs, and what is chosen stays.
    void Take_Result(const std::shared_ptr<Search_Result> &result);
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
    std::vector<Left_Page *> m_pages;        ///< those of the wings
    std::shared_ptr<Search_Result> m_result; ///< of the last search, null before
    std::optional<QString> m_folder;         ///< id of the folder that is listed, if one is
    QWidget *m_before;                       ///< the tab that was on screen before the search
    bool m_foldersStale = true;
    bool m_typesElsewhere = false; ///< the key is typed in a field of the window
    bool m_datesStale = true;
};

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/left_tabs.h"

#include "core/language_pack.h"
#include "core/settings.h"
#include "core/settings_table.h"
#include "tree/folder_ids.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/left_page.h"
#include "ui/kit/shell.h"
#include "ui/lists/by_date_pane.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/search_pane.h"
#include "ui/window/wings.h"
#include "views/by_date.h"

#include <QLayout>
#include <QScopedValueRollback>
#include <QTabWidget>
#include <utility>

Left_Tabs::Left_Tabs(Shell &shell, QTabWidget &tabs, Tree_Pane &tree, Frm_ListView &list, QObject *parent)
    : QObject(parent), m_shell(shell), m_tabs(tabs), m_tree(tree), m_list(list), m_treePage(tabs.widget(0)),
      m_before(m_treePage)
{
    m_byDate = new By_Date_Pane(&tabs);
    m_search = new Search_Pane(shell, &tabs);
    m_byDatePage = Fill_Page("Left_ByDate", Config().CH_ByDate, m_byDate);
    m_searchPage = Fill_Page("Left_Find", Config().CH_Find, m_search);
    Add_Pages();
    Watch_Folders();
    connect(&tabs, &QTabWidget::currentChanged, this, [this] {
        if (m_tabs.currentWidget() != m_searchPage)
            m_before = m_tabs.currentWidget();
        Show_Tab();
        if (m_tabs.currentWidget() == m_searchPage && !m_typesElsewhere)
            m_search->Start_Typing();
    });
    connect(m_byDate, &By_Date_Pane::Date_Chosen, this, &Left_Tabs::List_Date);
    connect(m_search, &Search_Pane::Search_Started, this, [this] {
        m_result = nullptr;
        m_folder.reset();
        emit Key_Changed(m_search->Key());
        m_list.Show_Text(Pack_Text("Frm_Main", "_LookIng"));
        emit Listed();
    });
    connect(m_search, &Search_Pane::Search_Goes_On, this, &Left_Tabs::Take_Result);
    connect(m_search, &Search_Pane::Search_Ended, this, [this](const std::shared_ptr<Search_Result> &result) {
        Take_Result(result);
        m_result->old = true;
    });
    connect(&list, &Frm_ListView::More_Wanted, this, &Left_Tabs::List_More);
}

void Left_Tabs::Add_Pages()
{
    for (const Left_Pages::Row &row : All_Pages()) {
        Left_Page *page = row.make(m_shell, &m_tabs);
        page->setObjectName(QLatin1String(row.name));
        const QByteArray caption = QByteArray(row.name) + "|Index|Caption";
        m_tabs.addTab(page, Pack_Text("Frm_Main", caption.constData()));
        const Setting &shown = Setting_Named(QLatin1String(row.setting));
        m_tabs.setTabVisible(m_tabs.indexOf(page), Is_On(shown, Text_Of(Config(), shown)));
        Connect_Page(*page);
        m_pages.push_back(page);
    }
}

void Left_Tabs::Connect_Page(Left_Page &page)
{
    connect(&page, &Left_Page::Chosen, this, [this](const Left_Page::Source &source, const QString &emptyText) {
        m_list.Show_Source(source, 1, emptyText);
        m_folder.reset();
        emit Listed();
    });
}

Left_Page *Left_Tabs::Current_Page() const
{
    return qobject_cast<Left_Page *>(m_tabs.currentWidget());
}

void Left_Tabs::List_More()
{
    Left_Page *page = Current_Page();
    if (page == nullptr)
        return m_search->List_More();
    page->List_More();
    m_list.Reload();
}

QWidget *Left_Tabs::Fill_Page(const char *name, const QString &shown, QWidget *pane)
{
    auto *page = m_tabs.findChild<QWidget *>(QLatin1String(name));
    page->layout()->addWidget(pane);
    m_tabs.setTabVisible(m_tabs.indexOf(page), Is_Shown(shown));
    return page;
}

void Left_Tabs::Watch_Folders()
{
    const QAbstractItemModel *folders = m_tree.model();
    const auto stale = [this] {
        m_foldersStale = true;
        Dates_Changed();
        if (m_tabs.currentWidget() == m_searchPage)
            QMetaObject::invokeMethod(this, &Left_Tabs::Copy_Folders, Qt::QueuedConnection);
    };
    connect(folders, &QAbstractItemModel::modelReset, this, stale);
    connect(folders, &QAbstractItemModel::rowsInserted, this, stale);
    connect(folders, &QAbstractItemModel::rowsRemoved, this, stale);
    connect(folders, &QAbstractItemModel::dataChanged, this, stale);
}

void Left_Tabs::Copy_Folders()
{
    if (!m_foldersStale)
        return;
    m_foldersStale = false;
    m_search->Copy_Folders(m_tree.Tree());
}

void Left_Tabs::List_Folder(const QString &id)
{
    Fill_From_Folder(id, true);
    emit Listed();
}

void Left_Tabs::Fill_From_Folder(const QString &id, bool asks)
{
    // Only the choice itself asks for a password: filled anew without one, the list stays empty.
    m_list.Show_Source([this, id, password = m_tree.Accepted_Password(id), asks](List_Model &list, int page) mutable {
        const bool first = std::exchange(asks, false);
        const Page_Info info = ShowCodeInfoToList_Ex(id, list, false, page, {}, password, first);
        if (first)
            m_tree.Set_Accepted_Password(id, password);
        return info;
    });
    m_folder = id;
}

void Left_Tabs::Follow_Folders()
{
    const auto isThere = [this](const QString &id) {
        return id.isEmpty() || m_tree.Tree().Find(Folder_Key(id)) >= 0;
    };
    const bool followsTree = m_tabs.currentWidget() == m_treePage;
    if (m_folder && m_tree.Has_Selection() && *m_folder != m_tree.Selected_Id() && (followsTree || !isThere(*m_folder)))
        Fill_From_Folder(m_tree.Selected_Id(), false);
    else
        m_list.Reload();
}

void Left_Tabs::List_Date(const QString &dateText)
{
    m_list.Show_Source(
        [dateText](List_Model &list, int page) {
            QString password;
            return ShowCodeInfoToList_Ex({}, list, true, page, dateText, password);
        },
        1, Pack_Text("Frm_ListView", "_Empty_Date"));
    m_folder.reset();
    emit Listed();
}

void Left_Tabs::List_Condition(const QString &where)
{
    constexpr int Most_Documents = 10000;
    m_list.Show_Source([where](List_Model &list,
                               int page) { return ShowCodeInfoToList_Ex_Key(where, list, {}, page, Most_Documents); },
                       1, Pack_Text("Frm_ListView", "_Empty_Date"));
    m_folder.reset();
    emit Listed();
}

void Left_Tabs::Take_Result(const std::shared_ptr<Search_Result> &result)
{
    const bool first = m_result != result;
    m_result = result;
    if (m_tabs.currentWidget() != m_searchPage)
        return;
    if (first || result->found.rows.empty())
        List_Result();
    else
        m_list.Reload();
}

void Left_Tabs::List_Result()
{
    if (m_result == nullptr)
        return;
    m_list.Show_Source(
        [result = m_result](List_Model &list, int /*page*/) {
            list.Extend(result->found.rows);
            Page_Info info = result->found.info;
            if (result->old)
                info.labels[Page_Info::Total] -= Refresh_List(list);
            return info;
        },
        1, m_result->scope);
    m_folder.reset();
    m_list.Set_Search(m_result->key, m_result->fields);
    emit Listed();
}

void Left_Tabs::List_Nothing()
{
    m_folder.reset();
    m_list.Show_Text(Pack_Text("Frm_ListView", "_No_Choice"));
}

void Left_Tabs::Show_Tab()
{
    if (Left_Page *current = Current_Page())
        return current->Come_Forward();
    const QWidget *page = m_tabs.currentWidget();
    if (page == m_treePage && !m_tree.Has_Selection()) {
        List_Nothing();
    } else if (page == m_treePage) {
        List_Folder(m_tree.Selected_Id());
    } else if (page == m_byDatePage) {
        Read_Dates();
        if (!m_byDate->Selected_Key().isEmpty())
            List_Date(Date_Text_Of(m_byDate->Selected_Key()));
    } else if (page == m_searchPage) {
        Copy_Folders();
        List_Result();
    }
}

void Left_Tabs::Reload()
{
    Dates_Changed();
    Show_Tab();
}

void Left_Tabs::Dates_Changed()
{
    m_datesStale = true;
    for (Left_Page *page : m_pages)
        page->Set_Stale();
    if (m_tabs.currentWidget() == m_byDatePage)
        QMetaObject::invokeMethod(this, &Left_Tabs::Read_Dates, Qt::QueuedConnection);
    if (Current_Page() != nullptr)
        QMetaObject::invokeMethod(this, &Left_Tabs::Refresh_Page, Qt::QueuedConnection);
    emit Documents_Changed();
}

void Left_Tabs::Read_Dates()
{
    if (std::exchange(m_datesStale, false))
        m_byDate->Reload();
}

void Left_Tabs::Refresh_Page()
{
    if (Left_Page *page = Current_Page())
        page->Refresh();
}

void Left_Tabs::Stop_Search()
{
    m_search->Stop_Now();
}

void Left_Tabs::Forget_Search()
{
    Stop_Search();
    m_result = nullptr;
    if (m_tabs.currentWidget() == m_searchPage)
        m_list.Show_Text({});
}

void Left_Tabs::Show_Page(const char *page, bool on)
{
    const int index = m_tabs.indexOf(m_tabs.findChild<QWidget *>(QLatin1String(page)));
    m_tabs.setTabVisible(index, on);
    if (on)
        m_tabs.setCurrentIndex(index);
}

void Left_Tabs::Save()
{
    m_search->Save_History();
}

void Left_Tabs::Show_Search()
{
    const QScopedValueRollback elsewhere(m_typesElsewhere, true);
    m_tabs.setCurrentWidget(m_searchPage);
}

void Left_Tabs::Search_For(const QString &key, bool finished)
{
    const QScopedValueRollback elsewhere(m_typesElsewhere, true);
    m_tabs.setCurrentWidget(m_searchPage);
    m_search->Set_Key(key);
    if (finished)
        m_search->Cmd_FindTxt();
    else
        m_search->Search_Quietly();
}

void Left_Tabs::Leave_Search()
{
    const bool shown = m_tabs.currentWidget() == m_searchPage;
    Forget_Search();
    m_search->Set_Key({});
    emit Key_Changed({});
    if (shown)
        m_tabs.setCurrentWidget(m_before);
}

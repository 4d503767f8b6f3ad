// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/left_tabs.h"

#include "core/language_pack.h"
#include "core/settings.h"
#include "ui/by_date_pane.h"
#include "ui/frm_list_view.h"
#include "ui/search_pane.h"
#include "ui/shell.h"
#include "ui/tree_pane.h"
#include "views/by_date.h"

#include <QLayout>
#include <QTabWidget>
#include <utility>

Left_Tabs::Left_Tabs(Shell &shell, QTabWidget &tabs, Tree_Pane &tree, Frm_ListView &list, QObject *parent)
    : QObject(parent), m_shell(shell), m_tabs(tabs), m_tree(tree), m_list(list), m_treePage(tabs.widget(0))
{
    m_byDate = new By_Date_Pane(&tabs);
    m_search = new Search_Pane(shell, &tabs);
    m_byDatePage = Fill_Page("Left_ByDate", Config().CH_ByDate, m_byDate);
    m_searchPage = Fill_Page("Left_Find", Config().CH_Find, m_search);
    Follow_Folders();
    connect(&tabs, &QTabWidget::currentChanged, this, [this] {
        Show_Tab();
        if (m_tabs.currentWidget() == m_searchPage)
            m_search->Start_Typing();
    });
    connect(m_byDate, &By_Date_Pane::Date_Chosen, this, &Left_Tabs::List_Date);
    connect(m_search, &Search_Pane::Search_Started, this, [this] {
        m_result = nullptr;
        m_list.Show_Text(Pack_Text("Frm_Main", "_LookIng"));
        emit Listed();
    });
    connect(m_search, &Search_Pane::Search_Ended, this, [this](const std::shared_ptr<Search_Result> &result) {
        m_result = result;
        if (m_tabs.currentWidget() == m_searchPage)
            List_Result();
        m_result->old = true;
    });
}

QWidget *Left_Tabs::Fill_Page(const char *name, const QString &shown, QWidget *pane)
{
    auto *page = m_tabs.findChild<QWidget *>(QLatin1String(name));
    page->layout()->addWidget(pane);
    m_tabs.setTabVisible(m_tabs.indexOf(page), Is_Shown(shown));
    return page;
}

void Left_Tabs::Follow_Folders()
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
    // Only the choice itself asks for a password: filled anew without one, the list stays empty.
    m_list.Show_Source(
        [this, id, password = m_tree.Accepted_Password(id), asks = true](List_Model &list, int page) mutable {
            const bool first = std::exchange(asks, false);
            const Page_Info info = ShowCodeInfoToList_Ex(id, list, false, page, {}, password, first);
            if (first)
                m_tree.Set_Accepted_Password(id, password);
            return info;
        });
    emit Listed();
}

void Left_Tabs::List_Date(const QString &dateText)
{
    m_list.Show_Source(
        [dateText](List_Model &list, int page) {
            QString password;
            return ShowCodeInfoToList_Ex({}, list, true, page, dateText, password);
        },
        1, Pack_Text("Frm_ListView", "_Empty_Date"));
    emit Listed();
}

void Left_Tabs::List_Result()
{
    if (m_result == nullptr)
        return;
    m_list.Show_Source(
        [result = m_result](List_Model &list, int /*page*/) {
            list.Replace(result->found.rows);
            Page_Info info = result->found.info;
            if (result->old)
                info.labels[Page_Info::Total] -= Refresh_List(list);
            return info;
        },
        1, m_result->scope);
    m_list.Set_Search_Key(m_result->key);
    emit Listed();
}

void Left_Tabs::Show_Tab()
{
    const QWidget *page = m_tabs.currentWidget();
    if (page == m_treePage) {
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
    m_datesStale = true;
    Show_Tab();
}

void Left_Tabs::Dates_Changed()
{
    m_datesStale = true;
    if (m_tabs.currentWidget() == m_byDatePage)
        QMetaObject::invokeMethod(this, &Left_Tabs::Read_Dates, Qt::QueuedConnection);
}

void Left_Tabs::Read_Dates()
{
    if (std::exchange(m_datesStale, false))
        m_byDate->Reload();
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
    m_tabs.setCurrentWidget(m_searchPage);
    m_search->Start_Typing();
}

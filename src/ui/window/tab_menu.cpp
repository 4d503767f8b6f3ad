// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/tab_menu.h"

#include "core/language_pack.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/icons.h"

#include <QMenu>
#include <QTabBar>

Tab_Menu::Tab_Menu(Document_Tabs &tabs) : QObject(&tabs), m_tabs(tabs)
{
    tabs.tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(tabs.tabBar(), &QWidget::customContextMenuRequested, this, &Tab_Menu::Show);
}

void Tab_Menu::Show(const QPoint &at)
{
    auto *document = qobject_cast<Frm_Doc_Standard *>(m_tabs.widget(m_tabs.tabBar()->tabAt(at)));
    const bool any = m_tabs.count() > 1;
    QMenu menu(&m_tabs);
    const auto add = [&](const char *name, const char *icon, bool on) {
        QAction *action = menu.addAction(Pack_Text("Frm_Main", name));
        if (*icon != '\0')
            action->setIcon(Line_Icon(QLatin1String(icon)));
        action->setEnabled(on);
        return action;
    };
    const QAction *close = add("_Tab_Close", "close", document != nullptr);
    const QAction *others = add("_Tab_Others", "", any);
    const QAction *all = add("_Tab_All", "", any);
    menu.addSeparator();
    const QAction *show = add("_Tab_Show", "folder", document != nullptr && !document->Code_Id().isEmpty());
    const QPointer<QWidget> page = document;
    const QAction *chosen = menu.exec(m_tabs.tabBar()->mapToGlobal(at));
    if (chosen == nullptr || (document != nullptr && page == nullptr))
        return;
    if (chosen == close)
        m_tabs.Close(m_tabs.indexOf(document));
    else if (chosen == others)
        Close_Others(document);
    else if (chosen == all)
        m_tabs.Close_All();
    else if (chosen == show)
        emit Folder_Wanted(document->Code_Id());
}

/// One that the user doesn't let go ends it.
void Tab_Menu::Close_Others(const QWidget *stays)
{
    for (int i = m_tabs.count() - 1; i > 0; --i) {
        if (m_tabs.widget(i) != stays && !m_tabs.Close(i))
            return;
    }
}

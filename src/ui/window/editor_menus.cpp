// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/editor_menus.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "editor/composition.h"
#include "editor/text_editor.h"
#include "ui/document/bookmark_menu.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/writing/editor_bar.h"
#include "ui/writing/frm_print.h"

#include <QActionGroup>
#include <QMenu>

#include <algorithm>

namespace
{
// The section ViewMode has a key of this name too: the list's.
constexpr Kept_Value View_Mode{"Page", "ViewMode"};
constexpr int View_Modes = 3;
} // namespace

Editor_Menus::Editor_Menus(const Places &places, Document_Tabs &tabs, QWidget &window)
    : QObject(&window), m_places(places), m_tabs(tabs), m_spare(new Editor_Bar(&window)),
      m_bookmarks(new Bookmark_Menu(*places.edit, tabs, window))
{
    m_spare->hide();
    m_spare->Commands().Show_State();
    for (QAction *print : m_places.print)
        connect(print, &QAction::triggered, this, &Editor_Menus::Print);
    for (QAction *preview : m_places.preview)
        connect(preview, &QAction::triggered, this, &Editor_Menus::Print);
    Add_View_Modes();
    connect(&m_tabs, &QTabWidget::currentChanged, this, &Editor_Menus::Fill);
    Fill();
}

void Editor_Menus::Fill()
{
    Commit_Composition();
    Frm_Doc_Standard *document = m_tabs.Current_Document();
    const Editor_Commands &commands = document != nullptr ? document->Commands() : m_spare->Commands();
    const auto fill = [&](QMenu *place, Command_Menu menu) {
        place->clear();
        place->addActions(commands.Menu(menu)->actions());
    };
    fill(m_places.edit, Command_Menu::Edit);
    m_bookmarks->Add_To_Menu();
    fill(m_places.insert, Command_Menu::Insert);
    fill(m_places.format, Command_Menu::Format);
    for (QAction *action : m_places.print + m_places.preview)
        action->setEnabled(document != nullptr);
    if (document != nullptr)
        document->Use_View_Mode(Kept_View_Mode());
    // The list needs the tree beside it, whatever the documents are like.
    emit View_Mode_Changed(document != nullptr ? Kept_View_Mode() : 0);
}

void Editor_Menus::Print()
{
    const Frm_Doc_Standard *document = m_tabs.Current_Document();
    if (document == nullptr)
        return;
    Commit_Composition();
    Frm_Print(*document->Commands().Editors().first()->document(), document->Title(), m_spare->window()).exec();
}

void Editor_Menus::Add_View_Modes()
{
    auto *group = new QActionGroup(this);
    static const char *const texts[] = {"_View_Normal", "_View_Writing", "_View_Paper"};
    for (int mode = 0; mode < View_Modes; ++mode) {
        QAction *action = m_places.viewModes->addAction(Pack_Text("Editor_Bar", texts[mode]));
        action->setCheckable(true);
        action->setChecked(mode == Kept_View_Mode());
        action->setActionGroup(group);
        connect(action, &QAction::triggered, this, [this, mode] { Use_View_Mode(mode); });
    }
}

void Editor_Menus::Use_View_Mode(int mode)
{
    View_Mode.Keep(QString::number(mode));
    Fill();
}

int Kept_View_Mode()
{
    return std::clamp(View_Mode.Read().toInt(), 0, View_Modes - 1);
}

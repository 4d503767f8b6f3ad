// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "editor/text_editor.h"
#include "ui/document/document_tabs.h"
#include "ui/document/review_walk.h"
#include "ui/document/save_as_menu.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/commands.h"
#include "ui/kit/icons.h"
#include "ui/tools/at_hand.h"
#include "ui/window/editor_menus.h"
#include "ui/window/frm_main.h"
#include "ui/window/left_tabs.h"
#include "ui/window/tab_memory.h"
#include "ui/window/view_entries.h"
#include "ui/window/wings.h"
#include "ui/writing/editor_bar.h"
#include "ui_frm_main.h"

#include <QMenu>
#include <QToolButton>

void Frm_Main::Add_Editor_Menus()
{
    auto *menus = new Editor_Menus({m_ui->Mnu_Edit,
                                    m_ui->Mnu_Insert,
                                    m_ui->Mnu_Format,
                                    m_ui->mnuViewMode,
                                    {m_ui->Mnu_Print, m_ui->PriCode},
                                    {m_ui->Mnu_Preview, m_ui->PriPrview}},
                                   *m_tabs, *this);
    connect(menus, &Editor_Menus::View_Mode_Changed, this, [this](int mode) {
        const bool all = static_cast<Page_Look>(mode) != Page_Look::Writing;
        Save_Left_Side(); // hidden, it has no width
        m_ui->Pic_On_Left->setVisible(all);
        m_ui->Tlb_Command->setVisible(all);
    });
}

void Frm_Main::Add_Wing_Commands()
{
    for (const Commands::Row &row : All_Commands()) {
        auto *action = new QAction(this);
        action->setObjectName(QLatin1String(row.name));
        const QByteArray key = QByteArray(row.name) + "|Index|Caption";
        Set_Caption(*action, m_lang.GetString(key.constData()));
        if (*row.icon != '\0')
            action->setIcon(Line_Icon(QLatin1String(row.icon)));
        action->setShortcut(QKeySequence(QLatin1String(row.key)));
        connect(action, &QAction::triggered, this, [this, run = row.run] { run(*this, this); });
        findChild<QMenu *>(QLatin1String(row.menu))->addAction(action);
    }
}

void Frm_Main::Bind_View_Entries()
{
    m_view = new View_Entries(this);
    const auto panes = [this](bool /*on*/) {
        m_tabs->Adjust_Panes();
    };
    m_view->Bind(*m_ui->Mnu_ViewMemo, "ViewMemo", panes);
    m_view->Bind(*m_ui->Mnu_ViewSum, "ViewSum", panes);
    m_view->Bind(*m_ui->Mnu_M_FILE, "M_FILE", panes);
    m_view->Bind(*m_ui->U_ShowLow, "ShowLow", [this](bool /*on*/) { Reload_All(); });
    m_view->Bind(*m_ui->Mnu_Left_ByDate, "CH_ByDate", [this](bool on) { m_left->Show_Page("Left_ByDate", on); });
    m_view->Bind(*m_ui->Mnu_Left_Find, "CH_Find", [this](bool on) { m_left->Show_Page("Left_Find", on); });
    m_view->Bind(*m_ui->Mnu_Float, "CH_FLOAT", [this](bool on) { m_hand->Show_Floating(on); });
    Add_Page_Entries();
    auto *tabsBack = new QAction(Pack_Text("Frm_Main", "_Tabs_Back"), this);
    tabsBack->setObjectName(QStringLiteral("Mnu_Tabs_Back"));
    Tab_Memory::Bind(*tabsBack);
    m_ui->Mnu_View->insertAction(m_ui->Mnu_Reload, tabsBack);
}

void Frm_Main::Add_Page_Entries()
{
    const QList<QAction *> entries = m_ui->Mnu_View->actions();
    QAction *behind = entries.value(entries.indexOf(m_ui->Mnu_Left_Find) + 1);
    for (const Left_Pages::Row &row : All_Pages()) {
        auto *entry = new QAction(this);
        entry->setObjectName(QStringLiteral("Mnu_") + QLatin1String(row.name));
        Set_Caption(*entry, m_lang.GetString((entry->objectName() + QStringLiteral("|Index|Caption")).toUtf8()));
        entry->setCheckable(true);
        m_ui->Mnu_View->insertAction(behind, entry);
        m_view->Bind(*entry, row.setting, [this, name = row.name](bool on) { m_left->Show_Page(name, on); });
    }
}

void Frm_Main::Place_Document_Actions()
{
    const auto action = [this](const char *name) {
        return m_tabs->Action(QLatin1String(name));
    };
    auto *kinds = new QMenu(Pack_Text("Frm_Main", "_New_Kinds"), this);
    kinds->addActions({action("AddCode_Clip"), action("AddCode_Word"), action("AddCode_Excel"), action("AddCode_PPT"),
                       action("AddCode_Htm")});
    m_ui->Mnu_File->insertMenu(m_ui->Mnu_Import_File, kinds);
    auto *button = qobject_cast<QToolButton *>(m_ui->Tlb_Command->widgetForAction(m_ui->AddCode));
    button->setMenu(kinds);
    button->setPopupMode(QToolButton::MenuButtonPopup);
    m_ui->Mnu_File->insertActions(m_ui->Mnu_Delete, {action("Mnu_Open_Outside"), action("Email")});
    new Review_Walk(*m_ui->Mnu_Tools, *m_tabs, *this);
    new Save_As_Menu(*m_ui->Mnu_SaveAs, *m_tabs, *this, *this);
    m_ui->Mnu_View->addSeparator();
    m_ui->Mnu_View->addActions({action("Mnu_Mode_Edit"), action("Mnu_Next_Tab"), action("Mnu_Previous_Tab")});
}

/// The buttons of the tool bar that stand for entries of the menus.
void Frm_Main::Place_Tool_Bar()
{
    struct Stand_In {
        QAction *button;
        QAction *entry;
    };
    const auto folders = [this](const char *name) {
        return m_tree->findChild<QAction *>(QLatin1String(name));
    };
    for (const Stand_In &row : {Stand_In{m_ui->AddClass, folders("Mnu_Node_Add_Cur")},
                                {m_ui->AddSmallClass, folders("Mnu_Node_Add_Next")},
                                {m_ui->RenClass, folders("Mnu_Node_Rename")},
                                {m_ui->DelClass, folders("Mnu_Node_Del")},
                                {m_ui->DelCode, m_ui->Mnu_Delete},
                                {m_ui->Find, m_ui->Mnu_Find},
                                {m_ui->RenConf, m_ui->Mnu_Config}}) {
        row.button->setIcon(row.entry->icon());
        connect(row.button, &QAction::triggered, row.entry, &QAction::trigger);
    }
    const auto button = [this](QAction *action) {
        return qobject_cast<QToolButton *>(m_ui->Tlb_Command->widgetForAction(action));
    };
    auto *more = new QMenu(this);
    more->addActions({m_ui->AddSmallClass, m_ui->RenClass, m_ui->DelClass});
    more->addSeparator();
    more->addActions({folders("Mnu_Node_Up"), folders("Cmd_Node_Down")});
    button(m_ui->AddClass)->setMenu(more);
    button(m_ui->AddClass)->setPopupMode(QToolButton::MenuButtonPopup);
    // Words on the three buttons by which work begins; the others say theirs in their tips.
    for (QAction *action :
         {m_ui->SaveCode, m_ui->PriCode, m_ui->PriPrview, m_ui->DelCode, m_ui->RenConf, m_ui->RenHelp})
        button(action)->setToolButtonStyle(Qt::ToolButtonIconOnly);
}

void Frm_Main::Set_Icons()
{
    struct Action_Icon {
        QAction *action;
        const char *icon;
    };
    const Action_Icon icons[] = {
        {m_ui->AddCode, "new"},           {m_ui->Mnu_AddCode, "new"},
        {m_ui->ImportFile, "import"},     {m_ui->Mnu_Import_File, "import"},
        {m_ui->SaveCode, "save"},         {m_ui->Mnu_Save, "save"},
        {m_ui->Mnu_Close_Tab, "close"},   {m_ui->Mnu_Delete, "delete"},
        {m_ui->Mnu_DataBase, "database"}, {m_ui->mnuComp, "compact"},
        {m_ui->mnu_clean_data, "clean"},  {m_ui->PriCode, "print"},
        {m_ui->Mnu_Print, "print"},       {m_ui->PriPrview, "preview"},
        {m_ui->Mnu_Preview, "preview"},   {m_ui->Mnu_Find, "find"},
        {m_ui->Mnu_DbLog, "log"},         {m_ui->Mnu_Config, "options"},
        {m_ui->Mnu_About, "about"},       {m_ui->Mnu_Exit, "exit"},
        {m_ui->RenHelp, "about"},
    };
    for (const Action_Icon &row : icons)
        row.action->setIcon(Line_Icon(QLatin1String(row.icon)));
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "tree/document_places.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/icons.h"
#include "ui/lists/due_button.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/hot_pane.h"
#include "ui/window/first_steps.h"
#include "ui/window/frm_keys.h"
#include "ui/window/frm_main.h"
#include "ui/window/left_tabs.h"
#include "ui/window/search_box.h"
#include "ui/window/tab_menu.h"
#include "ui/window/window_keys.h"
#include "ui/window/window_title.h"
#include "ui_frm_main.h"

#include <QMenu>
#include <QStackedWidget>
#include <QTextEdit>
#include <QTreeView>

/// What the window's areas beside tree, list and tabs do for each other.

void Frm_Main::Show_Title()
{
    const int node = m_tree->Selected_Node();
    const QString folder = node < 0 ? QString() : Caption_Name(m_tree->Tree().Node(node).caption);
    const QString document =
        m_tabs->Current_Document() == nullptr ? QString() : m_tabs->tabText(m_tabs->currentIndex());
    setWindowTitle(Window_Title(QString(document).replace(QLatin1String("&&"), QLatin1String("&")), folder));
}

void Frm_Main::Add_Due_Button()
{
    auto *due = new Due_Button(m_ui->Sta_Bar);
    m_ui->Sta_Bar->addPermanentWidget(due);
    due->hide(); // the bar has shown it
    connect(m_left, &Left_Tabs::Documents_Changed, due, &Due_Button::Count_Soon);
    connect(due, &Due_Button::Wanted, this, [this](const QString &nodeKey) {
        findChild<QAction *>(QStringLiteral("Mnu_Left_Hot"))->setChecked(true);
        m_left->Show_Page("Left_Hot", true);
        m_ui->Pic_On_Left->findChild<Hot_Pane *>()->Choose(nodeKey);
    });
}

void Frm_Main::Add_Search_Box()
{
    auto *room = new QWidget(m_ui->Tlb_Command);
    room->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    m_search = new Search_Box(m_ui->Tlb_Command);
    m_search->setPlaceholderText(Pack_Text("Frm_Main", "_Search_Hint"));
    m_search->setAccessibleName(m_ui->Find->text());
    m_search->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_search->addAction(m_ui->Find, QLineEdit::LeadingPosition);
    m_ui->Tlb_Command->insertWidget(m_ui->RenConf, room);
    m_ui->Tlb_Command->insertWidget(m_ui->RenConf, m_search);
    connect(m_search, &Search_Box::Wanted, this, [this](const QString &key, bool finished) {
        m_ui->Mnu_Left_Find->setChecked(true);
        m_left->Search_For(key, finished);
        if (finished)
            Focus_List();
    });
    connect(m_search, &Search_Box::Cleared, m_left, &Left_Tabs::Leave_Search);
    connect(m_search, &Search_Box::Rows_Wanted, this, &Frm_Main::Focus_List);
    connect(m_left, &Left_Tabs::Key_Changed, m_search, &Search_Box::Show_Key);
    connect(m_list, &Frm_ListView::Search_Left, m_left, &Left_Tabs::Leave_Search);
    connect(m_ui->Mnu_Find, &QAction::triggered, this, [this] {
        m_ui->Mnu_Left_Find->setChecked(true);
        m_left->Show_Search();
        m_search->setFocus();
        m_search->selectAll();
    });
}

void Frm_Main::Add_First_Steps()
{
    auto *steps = new First_Steps(m_listPlace);
    m_listPlace->addWidget(steps);
    connect(steps, &First_Steps::Note_Wanted, this, [this] {
        Make_First_Folder();
        New_Document();
    });
    connect(steps, &First_Steps::Files_Wanted, this, [this] {
        Make_First_Folder();
        Choose_Files();
    });
    connect(steps, &First_Steps::Database_Wanted, this, &Frm_Main::Choose_Database);
}

void Frm_Main::Show_First_Steps()
{
    const Tree_Model &tree = m_tree->Tree();
    bool fresh = tree.Node_Count() > 0;
    for (int i = 1; i < tree.Node_Count(); ++i) {
        const QString &caption = tree.Node(i).caption;
        fresh = fresh && tree.Node(i).key == Folder_Key(Recycle_Bin_Id) && caption.endsWith(QLatin1String("[0]"));
    }
    m_listPlace->setCurrentIndex(fresh ? 1 : 0);
}

void Frm_Main::Make_First_Folder()
{
    if (!Selected_Folder().isEmpty() && !In_Recycle_Bin(Selected_Folder()))
        return;
    const QString id = MakeExistCateId({}, Pack_Text("Frm_Main", "_First_Folder"));
    m_tree->Update_Tree();
    m_tree->Select_Folder(id);
    emit m_tree->Folders_Changed();
}

void Frm_Main::Add_Ways_Of_Keyboard()
{
    const auto enter = [](QWidget *field) {
        if (field != nullptr)
            field->setFocus(Qt::ShortcutFocusReason);
    };
    const auto text = [this]() -> QWidget * {
        const Frm_Doc_Standard *document = m_tabs->Current_Document();
        return document == nullptr ? nullptr : document->findChild<QTextEdit *>(QStringLiteral("Txt_Content"));
    };
    const auto facts = [this]() -> QWidget * {
        const Frm_Doc_Standard *document = m_tabs->Current_Document();
        return document == nullptr ? nullptr : document->findChild<QWidget *>(QStringLiteral("TabS_Header"));
    };
    auto *menu = new QMenu(Pack_Text("Frm_Main", "_Go"), this);
    m_ui->Mnu_View->insertMenu(m_ui->Mnu_Left_ByDate, menu);
    new Window_Keys(*this, *menu,
                    {{"_Go_Left", [this] { return m_ui->Pic_On_Left->isVisible() ? m_ui->Pic_On_Left : nullptr; },
                      [this, enter] {
                          enter(First_Field(m_ui->Pic_On_Left->currentWidget()));
                      }},
                     {"_Go_Main", [this]() -> QWidget * { return m_tabs; },
                      [this, enter, text] {
                          if (QWidget *body = text())
                              enter(body);
                          else
                              m_list->Focus_Rows();
                      }},
                     {"_Go_Facts", facts,
                      [this, enter, facts] {
                          m_ui->Mnu_M_FILE->setChecked(true);
                          enter(First_Field(facts()));
                      }},
                     {"_Go_Search", [this]() -> QWidget * { return m_search; },
                      [this] {
                          m_search->setFocus(Qt::ShortcutFocusReason);
                          m_search->selectAll();
                      }}});
    auto *anywhere = new QAction(Line_Icon(QStringLiteral("find")), Pack_Text("Frm_Main", "_Anywhere"), this);
    anywhere->setObjectName(QStringLiteral("Mnu_Anywhere"));
    anywhere->setShortcut(Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    menu->addSeparator();
    menu->addAction(anywhere);
    connect(anywhere, &QAction::triggered, this, &Frm_Main::Go_Anywhere);
    auto *keys = new QAction(Pack_Text("Frm_Main", "_Keys"), this);
    keys->setObjectName(QStringLiteral("Mnu_Keys"));
    keys->setShortcut(Qt::Key_F1);
    m_ui->Mnu_Help->insertAction(m_ui->Mnu_About, keys);
    connect(keys, &QAction::triggered, this, &Frm_Main::Show_Keys);
}

void Frm_Main::Show_Keys()
{
    std::vector<Key_Group> groups;
    QList<QAction *> listed;
    const auto add = [&](const QString &caption, const QList<QAction *> &actions) {
        Key_Group group{caption, {}};
        for (QAction *action : actions) {
            if (!listed.contains(action))
                group.actions << action;
        }
        listed << group.actions;
        groups.push_back(group);
    };
    for (QAction *top : m_ui->Bar_Menu->actions()) {
        if (top->menu() == nullptr)
            continue;
        add(top->text(), top->menu()->actions());
        for (QAction *inner : top->menu()->actions()) {
            if (inner->menu() != nullptr)
                add(top->text() + QStringLiteral(" › ") + inner->text(), inner->menu()->actions());
        }
    }
    add(Pack_Text("Frm_Main", "_List_Tab"), m_list->findChild<QTreeView *>(QStringLiteral("Lsv_Code_Info"))->actions());
    add(Pack_Text("Frm_Main", "_Keys_More"), findChildren<QAction *>());
    Frm_Keys(groups, this).exec();
}

void Frm_Main::Add_Tab_Menu()
{
    connect(new Tab_Menu(*m_tabs), &Tab_Menu::Folder_Wanted, this, &Frm_Main::Show_In_Tree);
}

void Frm_Main::Show_In_Tree(const QString &codeId)
{
    const QList<Document_Place> places = Places_Of({codeId});
    if (places.isEmpty())
        return;
    m_left->Show_Page("Left_Tree", true);
    m_tree->Select_Folder(places.first().folder);
    m_list->Select_Document(codeId);
    m_tree->setFocus();
}

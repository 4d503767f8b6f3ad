// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/frm_main.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "platform/prompts/prompts.h"
#include "tree/document_places.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/folders/tree_commands.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/command_keys.h"
#include "ui/kit/forms.h"
#include "ui/kit/icons.h"
#include "ui/kit/skins.h"
#include "ui/kit/twips.h"
#include "ui/lists/frm_list_view.h"
#include "ui/program/user_tools.h"
#include "ui/tools/at_hand.h"
#include "ui/window/database_commands.h"
#include "ui/window/fact_texts.h"
#include "ui/window/file_import.h"
#include "ui/window/left_tabs.h"
#include "ui/window/status_line.h"
#include "ui/window/tab_memory.h"
#include "ui/window/view_entries.h"
#include "ui/window/window_placement.h"
#include "ui/window/wings.h"
#include "ui_frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QStackedWidget>
#include <QTimer>
#include <QUrl>

Frm_Main::Frm_Main() : m_ui(std::make_unique<Ui::Frm_Main>()), m_lang(*this, QStringLiteral("Frm_Main"))
{
    Join_Wings();
    m_ui->setupUi(this);
    Window_Placement::Restore(*this);
    Load_Lang();
    Add_Panes();
    Add_Editor_Menus();
    Add_Wing_Commands();
    Add_Status_Line();
    Add_Due_Button();
    Add_Hand();
    Add_Lock();
    Add_Server_Watch();
    constexpr int Least_Floor = 50, Highest_Floor = 400;
    m_floor = std::max(Config().TC_TOP.toInt(), Least_Floor);
    m_tabs->setMinimumHeight(std::min(m_floor, Highest_Floor));
    Log_Mark(QStringLiteral("Tree_Image"));
    m_ui->Pic_Main->setSizes({Pixels(Config().TrvWidth.toInt()), width() - Pixels(Config().TrvWidth.toInt())});
    Set_Icons();
    Log_Mark(QStringLiteral("Reload_Cate"));
    Log_Mark(QStringLiteral("GetClassInfo_Ex"));
    m_tree->Update_Tree();
    Bind_View_Entries();
    Connect_Actions();
    Place_Document_Actions();
    Place_Tool_Bar();
    Add_Search_Box();
    Add_Ways_Of_Keyboard();
    Add_Tab_Menu();
    Show_Title();
    Show_First_Steps();
    Command_Keys::Of_Program().Give_Menus(menuBar()->actions());
}

Frm_Main::~Frm_Main() = default;

void Frm_Main::Show_As_Kept()
{
    m_list->setListPic(Config().Pic_List);
    Window_Placement::Show(*this);
    m_tree->setFocus(); // rather than the tabs above it
    QTimer::singleShot(0, m_tabs, [this] {
        m_tabs->Bring_Back_Unsaved();
        Tab_Memory::Bring_Back(*m_tabs, *this);
    });
}

void Frm_Main::Select_Last_Folder()
{
    // No password is asked before the window is there: a locked folder waits to be chosen.
    if (m_tree->Is_Locked(Config().Tree_LastKey) && m_tree->Mark_Folder(Config().Tree_LastKey))
        return m_list->Show_Text(m_lang.GetString("_Locked_Folder", "Frm_ListView"));
    if (Config().Tree_LastKey.isEmpty() || !m_tree->Select_Folder(Config().Tree_LastKey))
        m_left->List_Nothing();
}

void Frm_Main::Reload_All()
{
    const auto load = [] {
        Load_Root_Facts();
        return true;
    };
    if (!Trap(QStringLiteral("Frm_Main\\Reload_All"), load,
              [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation); }))
        return;
    m_tree->Update_Tree();
    m_left->Reload();
}

bool Frm_Main::Save_All_Documents()
{
    return m_tabs->Save_All();
}

void Frm_Main::Save_Left_Side()
{
    m_left->Save();
    Tab_Memory::Save(*m_tabs);
    if (!m_ui->Pic_On_Left->isHidden())
        Keep_Setting(&Settings_Record::TrvWidth, QString::number(Twips(m_ui->Pic_Main->sizes().value(0))));
}

void Frm_Main::Save_Placement()
{
    m_list->Save_Columns();
    Window_Placement::Keep(*this);
}

void Frm_Main::Set_Status(const QString &text)
{
    m_status->Say(text);
}

void Frm_Main::Offer_Undo(const QString &done, const std::function<void()> &undo)
{
    m_status->Offer_Undo(done, undo);
}

QString Frm_Main::Selected_Folder() const
{
    return m_tree->Selected_Id();
}

void Frm_Main::Folder_Changed(const QString &id)
{
    m_tree->Recount(id);
}

void Frm_Main::Document_Changed(const QString &code_id)
{
    m_list->Refresh_Row(code_id);
    m_left->Dates_Changed();
}

void Frm_Main::Open_Document(const QString &code_id)
{
    Open_Document_At(code_id, {}, -1);
}

bool Frm_Main::Is_Open(const QString &code_id) const
{
    return m_tabs->Find(code_id) > 0;
}

QString Frm_Main::Document_On_Screen() const
{
    const Frm_Doc_Standard *document = m_tabs->Current_Document();
    return document == nullptr ? QString() : document->Code_Id();
}

QString Frm_Main::Neighbour(const QString &code_id, int step) const
{
    return m_list == nullptr ? QString() : m_list->Neighbour(code_id, step);
}

void Frm_Main::Select_In_List(const QString &code_id)
{
    m_list->Select_Document(code_id);
}

void Frm_Main::Panes_Changed()
{
    m_view->Check_All();
    m_tabs->Adjust_Panes();
}

void Frm_Main::Delete_Chosen()
{
    if (m_tabs->Current_Document() != nullptr)
        m_tabs->Delete_Current();
    else if (const QStringList ids = m_list->Selected_Ids(); !ids.isEmpty())
        Delete_Documents(ids, Asked_In::List);
    else
        Set_Status(m_lang.GetString("_No_Row"));
}

void Frm_Main::Delete_Documents(const QStringList &ids, Asked_In place)
{
    const QList<Document_Place> before = Places_Of(ids);
    const Deletion deletion = m_tabs->Delete(ids, place);
    if (deletion.gone.isEmpty())
        return;
    m_list->Reload();
    for (const QString &folder : deletion.folders)
        m_tree->Recount(folder);
    // What went for good was in the bin before.
    QList<Document_Place> moved = before;
    moved.removeIf(
        [&](const Document_Place &was) { return !deletion.gone.contains(was.document) || In_Recycle_Bin(was.folder); });
    if (moved.isEmpty())
        return Set_Status(deletion.status);
    Offer_Undo(deletion.status, [this, moved] { m_tree->Commands().Take_Back(moved); });
}

void Frm_Main::Open_Document_At(const QString &code_id, const QString &key, qint64 place)
{
    m_tabs->Open(code_id);
    if (Frm_Doc_Standard *document = m_tabs->Current_Document())
        document->Mark_Key(key, place);
}

void Frm_Main::New_Document()
{
    m_tabs->Open_New(QStringLiteral("ADDCODE"), Selected_Folder());
}

int Frm_Main::Import_Files(const QStringList &paths, const QString &folderId)
{
    if (folderId.isEmpty()) {
        Prompts::Message(m_lang.GetString("_No_Drag_Root", "Frm_ListView"), App().App_Title);
        return 0;
    }
    const int stored = File_Import::Store(*this, paths, folderId);
    m_list->Reload();
    m_tree->Recount(folderId);
    Set_Status(m_lang.GetString("_File_Import", "Frm_ListView") + QStringLiteral(" (%1)").arg(stored));
    return stored;
}

void Frm_Main::List_Documents(const QString &where)
{
    m_left->List_Condition(where);
}

void Frm_Main::Focus_List()
{
    m_tabs->Show_List();
    m_list->Focus_Rows();
}

void Frm_Main::Documents_Moved(const QStringList &codeIds, const QString &folderId)
{
    m_list->Reload();
    m_tabs->Follow_Documents(codeIds, folderId);
}

void Frm_Main::Folder_Renumbered(const QString &oldId, const QString &newId)
{
    m_tabs->Follow_Folders(oldId, newId);
}

void Frm_Main::Colors_Chosen(const QStringList &codeIds)
{
    for (const QString &id : codeIds) {
        m_list->Refresh_Row(id);
        m_tabs->Show_Style(id);
    }
}

void Frm_Main::Move_Documents(const QStringList &codeIds)
{
    m_tree->Commands().Move_Documents(codeIds);
}

void Frm_Main::closeEvent(QCloseEvent *event)
{
    if (Hides_On_Close(*event)) {
        event->ignore();
        Put_Away();
        return;
    }
    m_leaving = false;
    if (Query_Unload && !Query_Unload()) {
        event->ignore();
        return;
    }
    event->accept();
    if (Unloaded)
        Unloaded();
}

void Frm_Main::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return QMainWindow::keyPressEvent(event);
    // Esc leaves what was opened last: a document that is only read, then the search.
    const Frm_Doc_Standard *document = m_tabs->Current_Document();
    if (document != nullptr && !document->Is_Editing())
        Focus_List();
    else if (document == nullptr)
        m_left->Leave_Search();
}

void Frm_Main::Load_Lang()
{
    m_lang.LoadControlsCaption();
}

void Frm_Main::Add_Panes()
{
    m_tree = new Tree_Pane(*this, m_ui->Left_Tree);
    m_ui->Left_Tree->layout()->addWidget(m_tree);
    m_tree->Commands().Fill_Menu(*m_ui->Mnu_Node);
    m_tabs = new Document_Tabs(*this, m_ui->Pic_Main);
    m_list = new Frm_ListView(*this);
    m_listPlace = new QStackedWidget(this);
    m_listPlace->addWidget(m_list);
    m_tabs->Add_List(m_listPlace, m_lang.GetString("_List_Tab"));
    m_left = new Left_Tabs(*this, *m_ui->Pic_On_Left, *m_tree, *m_list, this);
    m_ui->Pic_Main->addWidget(m_tabs);
    m_ui->Pic_Main->setStretchFactor(1, 1);
    m_database = new Database_Commands(*this, *this, *m_left, *m_tabs);
    Add_First_Steps();
}

void Frm_Main::Add_Status_Line()
{
    m_status = new Status_Line(*m_ui->Sta_Bar);
    connect(m_tabs, &Document_Tabs::Facts_Changed, m_status,
            [this](const Document_Facts &facts) { m_status->Show_Facts(Fact_Texts(facts)); });
}

void Frm_Main::Connect_Actions()
{
    const auto save = [this] {
        m_tabs->Save_Current();
    };
    connect(m_ui->Mnu_AddCode, &QAction::triggered, this, &Frm_Main::New_Document);
    connect(m_ui->AddCode, &QAction::triggered, this, &Frm_Main::New_Document);
    connect(m_ui->Mnu_Import_File, &QAction::triggered, this, &Frm_Main::Choose_Files);
    connect(m_ui->ImportFile, &QAction::triggered, this, &Frm_Main::Choose_Files);
    connect(m_ui->Mnu_Save, &QAction::triggered, this, save);
    connect(m_ui->SaveCode, &QAction::triggered, this, save);
    connect(m_ui->Mnu_Delete, &QAction::triggered, this, &Frm_Main::Delete_Chosen);
    connect(m_ui->Mnu_Close_Tab, &QAction::triggered, this, [this] { m_tabs->Close(m_tabs->currentIndex()); });
    connect(m_ui->Mnu_DataBase, &QAction::triggered, this, &Frm_Main::Choose_Database);
    connect(m_ui->mnuComp, &QAction::triggered, m_database, &Database_Commands::Compact);
    connect(m_ui->mnu_clean_data, &QAction::triggered, m_database, &Database_Commands::Clean);
    connect(m_ui->Mnu_Exit, &QAction::triggered, this, &Frm_Main::Leave);
    connect(m_ui->Mnu_Reload, &QAction::triggered, this, &Frm_Main::Reload_All);
    connect(m_ui->Mnu_DbLog, &QAction::triggered, this,
            [this] { Forms::Show_Modal(QStringLiteral("Frm_DbLog"), {.parent = this}); });
    connect(m_ui->Mnu_About, &QAction::triggered, this,
            [this] { Forms::Show_Modal(QStringLiteral("Frm_About"), {.parent = this}); });
    connect(m_ui->RenHelp, &QAction::triggered, this, &Frm_Main::Show_Help);
    connect(m_ui->Mnu_Config, &QAction::triggered, this, [this] {
        Forms::Show_Modal(QStringLiteral("Frm_Config"), {.parent = this, .changed = [this] {
                                                             Apply_Settings();
                                                         }});
    });
    Connect_Documents();
}

void Frm_Main::Connect_Documents()
{
    connect(m_tree, &Tree_Pane::Folders_Changed, m_tabs, [this] {
        m_tabs->Follow_Folders();
        m_left->Follow_Folders();
    });
    connect(m_tree, &Tree_Pane::Folder_Chosen, m_left, &Left_Tabs::List_Folder);
    connect(m_left, &Left_Tabs::Listed, m_tabs, &Document_Tabs::Show_List);
    connect(m_left, &Left_Tabs::Listed, this, &Frm_Main::Show_Title);
    connect(m_left, &Left_Tabs::Documents_Changed, this, &Frm_Main::Show_First_Steps);
    connect(m_tabs, &QTabWidget::currentChanged, this, &Frm_Main::Show_Title);
    const auto enableDocument = [this](bool is) {
        m_ui->Mnu_Close_Tab->setEnabled(is);
    };
    const auto enableSaving = [this](bool is) {
        m_ui->Mnu_Save->setEnabled(is);
        m_ui->SaveCode->setEnabled(is);
    };
    connect(m_tabs, &Document_Tabs::Document_On_Screen, this, enableDocument);
    connect(m_tabs, &Document_Tabs::Editing, this, enableSaving);
    connect(m_tabs, &Document_Tabs::Editing, this, &Frm_Main::Show_Title);
    connect(m_tabs, &Document_Tabs::Deletable, this, [this](bool is) {
        m_ui->Mnu_Delete->setEnabled(is);
        m_ui->DelCode->setEnabled(is);
    });
    enableDocument(false);
    enableSaving(false);
}

void Frm_Main::Apply_Settings()
{
    Trap(
        QStringLiteral("Frm_Main\\Apply_Settings"), [] { Attach_Chosen_Skin(); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    m_tree->Apply_Look();
    m_list->Apply_Look();
    m_view->Check_All();
    m_hand->Settings_Changed();
    m_tabs->Adjust_Panes();
    m_left->Dates_Changed();
    m_list->Go_To_Page(1);
    Show_On_Task_Bar();
}

void Frm_Main::Show_On_Task_Bar()
{
    const Qt::WindowType kind = Is_On(&Settings_Record::CH_MAIN) ? Qt::Window : Qt::Tool;
    if (windowType() == kind)
        return;
    const bool seen = isVisible();
    setWindowFlags((windowFlags() & ~Qt::WindowType_Mask) | kind);
    setVisible(seen); // the change has hidden it
}

void Frm_Main::Choose_Files()
{
    if (Selected_Folder().isEmpty()) {
        Prompts::Message(m_lang.GetString("_SelectDir", "Frm_Doc_Standard"), App().App_Title,
                         Prompts::Icon::Exclamation);
        return;
    }
    const QStringList paths = File_Import::Ask(m_ui->ImportFile->text());
    if (!paths.isEmpty())
        m_tree->Commands().Import(paths, Selected_Folder());
}

void Frm_Main::Choose_Database()
{
    m_database->Choose([this] {
        if (Database_Chosen)
            Database_Chosen();
    });
}

void Frm_Main::Show_Help()
{
    const QString file = Files::Native_Path(App().Help_File);
    if (!QFileInfo(file).isFile() || !Links::Start(QUrl::fromLocalFile(file)))
        m_ui->Mnu_About->trigger();
}

void Frm_Main::Leave()
{
    m_leaving = true;
    close();
    m_leaving = false;
}

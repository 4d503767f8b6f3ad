// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/frm_main.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_store.h"
#include "editor/links.h"
#include "editor/text_editor.h"
#include "platform/database/database.h"
#include "platform/files/paths.h"
#include "platform/models/plain_tip.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle.h"
#include "tree/tree_loading.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/folders/tree_commands.h"
#include "ui/folders/tree_pane.h"
#include "ui/kit/forms.h"
#include "ui/kit/icons.h"
#include "ui/kit/skins.h"
#include "ui/kit/twips.h"
#include "ui/kit/work_window.h"
#include "ui/lists/due_button.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/hot_pane.h"
#include "ui/window/editor_menus.h"
#include "ui/window/left_tabs.h"
#include "ui/window/program_lock.h"
#include "ui/window/view_entries.h"
#include "ui/window/window_placement.h"
#include "ui/window/wings.h"
#include "ui_frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMenu>
#include <QProgressDialog>
#include <QSystemTrayIcon>
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
    Add_Due_Button();
    Add_Tray_Icon();
    Add_Lock();
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
}

Frm_Main::~Frm_Main() = default;

void Frm_Main::Show_As_Kept()
{
    m_list->setListPic(Config().Pic_List);
    Window_Placement::Show(*this);
    QTimer::singleShot(0, m_tabs, &Document_Tabs::Bring_Back_Unsaved);
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
    if (!m_ui->Pic_On_Left->isHidden())
        WriteIni(QStringLiteral("Page"), QStringLiteral("TrvWidth"),
                 QString::number(Twips(m_ui->Pic_Main->sizes().value(0))));
}

void Frm_Main::Save_Placement()
{
    m_list->Save_Columns();
    Window_Placement::Keep(*this);
}

void Frm_Main::Remove_Tray_Icon()
{
    if (m_tray != nullptr)
        m_tray->contextMenu()->deleteLater();
    delete m_tray;
    m_tray = nullptr;
}

void Frm_Main::Set_Status(const QString &text)
{
    m_ui->Sta_Bar->showMessage(text);
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
    const Deletion deletion = m_tabs->Delete(ids, place);
    if (deletion.gone.isEmpty())
        return;
    m_list->Reload();
    for (const QString &folder : deletion.folders)
        m_tree->Recount(folder);
    Set_Status(deletion.status);
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
    QProgressDialog progress(m_lang.GetString("_Importing"), m_lang.GetString("_Cancel", "Buttons"), 0,
                             static_cast<int>(paths.size()), this);
    progress.setWindowModality(Qt::WindowModal);
    int stored = 0;
    for (const QString &path : paths) {
        progress.setValue(stored);
        if (progress.wasCanceled())
            break;
        const QFileInfo file(path);
        if (file.isFile() &&
            !AddCodeContent_File_Ex(path, folderId, QStringLiteral("0"), file.completeBaseName(), file.suffix(), false)
                 .isEmpty())
            ++stored;
    }
    progress.setValue(static_cast<int>(paths.size()));
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

void Frm_Main::Load_Lang()
{
    m_lang.LoadControlsCaption();
    setWindowTitle(App().App_Title + QStringLiteral("  ") + m_lang.GetString("_Edition"));
}

void Frm_Main::Add_Panes()
{
    m_tree = new Tree_Pane(*this, m_ui->Left_Tree);
    m_ui->Left_Tree->layout()->addWidget(m_tree->Commands().Make_Tool_Bar(m_ui->Left_Tree));
    m_ui->Left_Tree->layout()->addWidget(m_tree);
    m_tree->Commands().Fill_Menu(*m_ui->Mnu_Node);
    m_tabs = new Document_Tabs(*this, m_ui->Pic_Main);
    m_list = new Frm_ListView(*this);
    m_tabs->Add_List(m_list, m_lang.GetString("_List_Tab"));
    m_left = new Left_Tabs(*this, *m_ui->Pic_On_Left, *m_tree, *m_list, this);
    m_ui->Pic_Main->addWidget(m_tabs);
    m_ui->Pic_Main->setStretchFactor(1, 1);
}

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

void Frm_Main::Add_Lock()
{
    m_lock = new Program_Lock(*this, findChild<QAction *>(QStringLiteral("Mnu_OnLock"))->shortcut());
    connect(m_lock, &Program_Lock::About_To_Lock, this, [this] {
        m_tabs->Keep_Drafts();
        Remove_Tray_Icon();
    });
    connect(m_lock, &Program_Lock::Unlocked, this, &Frm_Main::Add_Tray_Icon);
}

void Frm_Main::Lock()
{
    m_lock->Lock();
}

void Frm_Main::Add_Tray_Icon()
{
    if (!QSystemTrayIcon::isSystemTrayAvailable())
        return;
    m_tray = new QSystemTrayIcon(windowIcon().isNull() ? Line_Icon(QStringLiteral("home")) : windowIcon(), this);
    m_tray->setToolTip(Plain_Tip(m_lang.GetString("_Curr_User") + App().Curr_User));
    auto *menu = new QMenu(this);
    menu->addAction(m_lang.GetString("_Tray_Show"), this, &Frm_Main::Bring_Back);
    menu->addAction(m_ui->Mnu_Exit->text(), this, &Frm_Main::Leave);
    m_tray->setContextMenu(menu);
    connect(m_tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason != QSystemTrayIcon::Context)
            Bring_Back();
    });
    m_tray->show();
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
    connect(m_ui->mnuComp, &QAction::triggered, this, &Frm_Main::Compact);
    connect(m_ui->mnu_clean_data, &QAction::triggered, this, &Frm_Main::Clean);
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

    connect(m_tree, &Tree_Pane::Folders_Changed, m_tabs, [this] {
        m_tabs->Follow_Folders();
        m_left->Follow_Folders();
    });
    connect(m_tree, &Tree_Pane::Folder_Chosen, m_left, &Left_Tabs::List_Folder);
    connect(m_left, &Left_Tabs::Listed, m_tabs, &Document_Tabs::Show_List);
    connect(m_ui->Mnu_Find, &QAction::triggered, this, [this] {
        m_ui->Mnu_Left_Find->setChecked(true);
        m_left->Show_Search();
    });
    const auto enableDocument = [this](bool is) {
        m_ui->Mnu_Close_Tab->setEnabled(is);
    };
    const auto enableSaving = [this](bool is) {
        m_ui->Mnu_Save->setEnabled(is);
        m_ui->SaveCode->setEnabled(is);
    };
    connect(m_tabs, &Document_Tabs::Document_On_Screen, this, enableDocument);
    connect(m_tabs, &Document_Tabs::Editing, this, enableSaving);
    connect(m_tabs, &Document_Tabs::Deletable, this, [this](bool is) {
        m_ui->Mnu_Delete->setEnabled(is);
        m_ui->DelCode->setEnabled(is);
    });
    enableDocument(false);
    enableSaving(false);
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
    Add_Page_Entries();
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

void Frm_Main::Apply_Settings()
{
    Trap(
        QStringLiteral("Frm_Main\\Apply_Settings"), [] { Attach_Chosen_Skin(); },
        [] { Prompts::Message(Error_Text(Err()), App().App_Title, Prompts::Icon::Exclamation); });
    m_tree->Apply_Look();
    m_list->Apply_Look();
    m_view->Check_All();
    m_list->Go_To_Page(1);
}

void Frm_Main::Choose_Files()
{
    if (Selected_Folder().isEmpty()) {
        Prompts::Message(m_lang.GetString("_SelectDir", "Frm_Doc_Standard"), App().App_Title,
                         Prompts::Icon::Exclamation);
        return;
    }
    const QStringList paths =
        Prompts::Open_Files(m_ui->ImportFile->text(), GetIni(QStringLiteral("Page"), QStringLiteral("OpenPath")));
    if (paths.isEmpty())
        return;
    WriteIni(QStringLiteral("Page"), QStringLiteral("OpenPath"), QFileInfo(paths.first()).path());
    m_tree->Commands().Import(paths, Selected_Folder());
}

void Frm_Main::Choose_Database()
{
    const auto changed = [this] {
        m_left->Forget_Search();
        if (Database_Chosen)
            Database_Chosen();
        Reload_All();
    };
    // A document belongs to its database; saved from an open tab, it would be written into the other one.
    const auto mayChange = [this] {
        return m_tabs->Close_All();
    };
    if (Forms::Show_Modal(QStringLiteral("Frm_Database"),
                          {.parent = this, .changed = changed, .may_change = mayChange}) == Forms::Outcome::Accepted)
        m_tabs->Bring_Back_Unsaved();
}

void Frm_Main::Compact()
{
    m_left->Stop_Search();
    Set_Status(m_lang.GetString("_Compacting"));
    const QString answer = Trap(
        QStringLiteral("Frm_Main\\mnuComp_Click"),
        [this] {
            QString done;
            Database_Engine::Let_Go(); // the thread that compacts has a connection of its own
            Long_Work::Run_To_End(this, m_lang.GetString("_Compacting"),
                                  [&] { done = Compact_Database(Database_Path(), QStringLiteral("no")); });
            return done;
        },
        [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation); });
    Set_Status(answer);
    if (!answer.isEmpty())
        Prompts::Message(answer, App().Box_Title);
}

void Frm_Main::Clean()
{
    Set_Status(m_lang.GetString("_Cleaning"));
    const bool done = Trap(
        QStringLiteral("Frm_Main\\mnu_clean_data_Click"),
        [this] {
            const Cleaning_Count count = Count_For_Cleaning();
            if (count.documents + count.attachments > 0) {
                const QString question = m_lang.GetString("_CleanCount").arg(count.documents).arg(count.attachments);
                if (Prompts::Ask(question, App().Box_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) !=
                    Prompts::Answer::Yes)
                    return false;
            }
            Long_Work::Run_To_End(this, m_lang.GetString("_Cleaning"), [&] {
                if (count.documents + count.attachments > 0)
                    Copy_Before_Cleaning();
                Clean_Database();
            });
            return true;
        },
        [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation); });
    if (done)
        Reload_All();
    Set_Status(done ? m_lang.GetString("_Cleaned") : QString());
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

bool Frm_Main::Hides_On_Close(const QCloseEvent &event) const
{
    return event.spontaneous() && !m_leaving && Config().CH_Close == QLatin1String("1");
}

void Frm_Main::Put_Away()
{
    showMinimized();
    // Without a tray there would be no way back to a hidden window.
    if (m_tray != nullptr && m_tray->isVisible())
        hide();
}

void Frm_Main::Bring_Back()
{
    if (m_lock->Is_Locked())
        return m_lock->Bring_Back();
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

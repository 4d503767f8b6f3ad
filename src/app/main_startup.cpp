// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/main_startup.h"

#include "app/second_start.h"
#include "app/shutdown.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "core/yield.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle.h"
#include "storage/ladder.h"
#include "storage/schema_sql.h"
#include "tree/stored_icons.h"
#include "tree/tree_loading.h"
#include "ui/kit/forms.h"
#include "ui/kit/skins.h"
#include "ui/program/frm_about.h"
#include "ui/window/frm_main.h"
#include "ui/window/wings.h"
#include "users/user_start.h"
#include "views/list_engine.h"

#include <QApplication>
#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>

namespace
{
void Set_Environment()
{
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
    App().Help_File = App().App_Path + QStringLiteral("help.chm");
    App().Date_Sep = Machine::Date_Separator();
    Database_Engine::Set_Date_Separator(Machine::Date_Separator());
    Load_Built_In_Language(); // for what has to be said before the packs are in their place
}

/// @returns what went wrong, for when the packs are in their place
Pending_Error Read_Settings()
{
    Log_Mark(QStringLiteral("GetConfigInfo0"));
    Announce_List_Orders();
    Pending_Error trouble = GetConfigInfo(Database_Steps_For_Start());
    Log_Mark_Off(QStringLiteral("GetConfigInfo"));
    Log_Mark(QStringLiteral("GetConfigInfo1"));
    return trouble;
}

/// The toolkit's own dialogs speak the pack's language, where the system has their texts.
void Translate_Toolkit()
{
    static QTranslator texts;
    if (texts.load(QLocale(Pack_Text("Main", "_Locale")), QStringLiteral("qtbase"), QStringLiteral("_"),
                   QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&texts);
}

void Deploy_Runtime_Files()
{
    Yield();
    Load_Runtime_File();
    Log_Mark_Off(QStringLiteral("Load_Runtime_File"));
    Log_Mark(QStringLiteral("Load_Runtime_File"));
    // Left over by older versions; the coder is a library now.
    Files::Delete_If_Present(App().App_Path + QStringLiteral("zelqorzip.exe"));
    Clear_Temp_Directory(); // what a killed program left decoded
    Load_Language(QStringLiteral("Main()"));
    Translate_Toolkit();
}

/// A form that the user works in has the ordinary pointer, whatever start-up is doing behind it.
Forms::Outcome Show_Form(const char *name, const Forms::Opening &opening = {})
{
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    const Forms::Outcome outcome = Forms::Show_Modal(QLatin1String(name), opening);
    QGuiApplication::restoreOverrideCursor();
    return outcome;
}

bool Show_Upgrade_Window(const QString &connStr)
{
    Show_Form("Frm_Update_235", {.connection = connStr});
    return App().Update_235_Done;
}

/// A database from before the folder tree does not pass the opening test yet, but can be asked for its version. One
/// that cannot has the trouble that the opening test met, which knows more: a full disk may have kept it from being
/// made.
bool Is_To_Be_Raised()
{
    bool old = false;
    if (!Resume_Next([&] { old = Need_Update_Db(App().Conn_Str); })) {
        const Pending_Error trouble = App().Conn_OK ? Err() : App().Conn_Trouble;
        throw Run_Time_Error(trouble.number, trouble.description, trouble.failure);
    }
    return old;
}

/// @returns false when the program is to end without a message
bool Raise_Database()
{
    App().Date_Delim = Config().Op_DB_Sql == QLatin1String("0") ? QStringLiteral("#") : QStringLiteral("'");
    if (!Is_To_Be_Raised())
        return true;
    if (!Run_Ladder(App().Conn_Str, Config().Op_DB_Sql, {Show_Upgrade_Window, Yield}))
        return false;
    App().Conn_OK = App().Conn_OK || Opening_Test(App().Conn_Str);
    return true;
}

void Load_Facts()
{
    Log_Mark_Off(QStringLiteral("Icon_Down_Start"));
    Write_Stored_Icons();
    Load_Root_Facts();
}

void Create_Legacy_Table()
{
    const Pending_Error first = Err();
    Resume_Next([] { Run_Statement(Sql_Text(Schema::Test), App().Conn_Str); });
    Resume_Next([] { Run_Statement(Sql_Text(Schema::Home_Node), App().Conn_Str); });
    Err() = first;
}

void Repair_Components()
{
    for (const char *mark : {"Reg_COMDLG32", "Reg_MSCOMCTL", "Reg_RICHTX32", "Reg_zqeditor"})
        Log_Mark(QLatin1String(mark));
}
} // namespace

Start_Up::Start_Up() = default;
Start_Up::~Start_Up() = default;

bool Start_Up::Main()
{
    Join_Wings();
    try {
        const bool lives = Bring_Up();
        QGuiApplication::restoreOverrideCursor();
        return lives;
    } catch (const Run_Time_Error &error) {
        Set_Pending(error);
        return Fail(error.number, Error_Text(Err()));
    }
}

bool Start_Up::Bring_Up()
{
    Set_Environment();
    const Pending_Error trouble = Read_Settings();
    Deploy_Runtime_Files();
    if (trouble.number != 0)
        Prompts::Message(Pack_Text("Main", "_Config_Trouble") + QLatin1Char('\n') + Error_Text(trouble),
                         App().Box_Title, Prompts::Icon::Exclamation);
    Attach_Chosen_Skin();
    if (Database_Is_Gone() && !Replace_Lost_Database())
        return false;
    if (!Raise_Database())
        return false;
    Show_Splash();
    Log_Mark(App().Conn_Str);
    if (!App().Conn_OK)
        return Fail(0, Error_Text(App().Conn_Trouble));
    Load_Facts();
    Read_Last_User();
    m_about->Set_Login_Uname(App().Curr_User);
    App().Curr_User = m_about->Login_Uname();
    Repair_Users();
    if (Decide_Login() == Login_Need::Dialog && !Log_In())
        return false;
    Log_Mark(QStringLiteral("Frm_About_Start 1"));
    Show_Main();
    m_about.reset();
    m_main->activateWindow(); // the splash that just went may have had the keyboard
    Log_Mark(QStringLiteral("Show_Main"));
    return true;
}

/// What the settings name and what is gone stays named there until the user has chosen.
bool Start_Up::Replace_Lost_Database()
{
    const QString question = Pack_Text("Main", "_Db_Gone") + QLatin1Char('\n') + Config().DATABASE_NAME +
                             QStringLiteral("\n\n") + Pack_Text("Main", "_Db_Gone_Hint");
    const Prompts::Button_Texts answers{
        {}, Pack_Text("Main", "_Db_Choose"), Pack_Text("Main", "_Db_New"), Pack_Text("Main", "_Db_Quit")};
    switch (Prompts::Ask(question, App().Box_Title, Prompts::Choice::Yes_No_Cancel, Prompts::Answer::Yes, answers)) {
    case Prompts::Answer::Yes:
        return Choose_Other_Database();
    case Prompts::Answer::No:
        Use_Default_Database();
        return true;
    default:
        return false;
    }
}

void Start_Up::Show_Splash()
{
    Log_Mark_Off(QStringLiteral("Frm_About_Start"));
    Log_Mark(QStringLiteral("Frm_About_Start 1"));
    m_about = std::make_unique<Frm_About>(Frm_About::Role::Splash);
    m_about->Tmr_State.start();
    if (Is_On(&Settings_Record::CH_About))
        m_about->show();
    m_about->repaint();
    Yield();
}

bool Start_Up::Log_In()
{
    m_about->hide();
    return Show_Form("frmLogin", {.user = App().Curr_User}) == Forms::Outcome::Accepted;
}

void Start_Up::Show_Main()
{
    Log_Mark(QStringLiteral("Frm_Main start"));
    m_main = std::make_unique<Frm_Main>();
    Log_Mark(QStringLiteral("Frm_Main end"));
    m_main->Query_Unload = [this] {
        return Form_QueryUnload(*m_main);
    };
    m_main->Unloaded = [this] {
        m_main->Leave_Hand();
        m_main->Save_Placement();
        Database_Engine::Let_Go();
        QCoreApplication::quit();
    };
    m_main->Database_Chosen = [] {
        Trap(QStringLiteral("Frm_Database\\Cmd_Apply"), Raise_Database,
             [] { Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation); });
    };
    if (!Is_On(&Settings_Record::CH_MAIN))
        m_main->setWindowFlag(Qt::Tool);
    Log_Mark(QStringLiteral("ShowCodeInfoToList_Ex"));
    m_main->Select_Last_Folder();
    m_main->Come_To_Hand();
    Log_Mark(QStringLiteral("setListPic"));
    // Before the window is shown: who sees it may call it.
    m_second = std::make_unique<Second_Start>([this] {
        m_main->Bring_Back();
        // A window that is just being minimised does not know it yet.
        constexpr int Soon = 300; // milliseconds
        QTimer::singleShot(Soon, m_main.get(), &Frm_Main::Bring_Back);
    });
    m_main->Show_As_Kept();
}

bool Start_Up::Fail(qint32 number, const QString &description)
{
    QGuiApplication::setOverrideCursor(Qt::ArrowCursor);
    m_main.reset();
    if (number == Error_Number::Db_Missing_Table) {
        if (App().Conn_OK) // a file that was refused is nobody's to write
            Create_Legacy_Table();
        m_about.reset();
    } else if (number == Error_Number::File_Not_Found) {
        Error_Log(QStringLiteral("Main()"));
        Keep_Setting(&Settings_Record::CH_Style_Classic, QStringLiteral("0"));
        m_about.reset();
        Prompts::Message(Pack_Text("Main", "_LoadError"), App().Box_Title);
        return false;
    } else if (number == Error_Number::Missing_Component) {
        Repair_Components();
        m_about.reset();
        Prompts::Message(Pack_Text("Main", "_Repaired"), App().Box_Title);
        return false;
    }
    m_about.reset();
    Prompts::Message(QStringLiteral("Error:") + description, QString::number(number));
    if (Err().number == 0)
        Err() = App().Conn_Trouble;
    Error_Log(QStringLiteral("Main()"));
    return Choose_Other_Database();
}

bool Start_Up::Choose_Other_Database()
{
    m_restart = Show_Form("Frm_Database") == Forms::Outcome::Accepted;
    return false;
}

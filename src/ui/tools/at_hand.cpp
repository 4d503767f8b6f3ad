// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/at_hand.h"

#include "arrivals/arrivals.h"
#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/system_log.h"
#include "core/trouble.h"
#include "editor/links.h"
#include "platform/desktop/screen_picture.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/shell.h"
#include "ui/kit/work_window.h"
#include "ui/tools/frm_note.h"
#include "ui/tools/frm_on_top.h"
#include "ui/tools/frm_on_top_drop.h"
#include "ui/tools/frm_show_up.h"
#include "ui/tools/hand_keys.h"
#include "ui/tools/tray.h"
#include "ui/tools/version_check.h"

#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QMenu>
#include <QProcess>
#include <QTimer>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Frm_OnTop", key);
}
} // namespace

At_Hand::At_Hand(Shell &shell, QWidget &main, Window window)
    : QObject(&main), m_shell(shell), m_main(main), m_window(std::move(window)),
      m_floating(std::make_unique<Frm_OnTop>()), m_tray(std::make_unique<Tray>(*m_floating->Menu())),
      m_versions(std::make_unique<Version_Check>())
{
    Fill_Menu();
    connect(m_floating.get(), &Frm_OnTop::Window_Wanted, this, m_window.bring_back);
    connect(m_floating.get(), &Frm_OnTop::Files_Dropped, this, &At_Hand::Take_Files);
    connect(m_floating.get(), &Frm_OnTop::Content_Dropped, this, [this](const QMimeData &content) {
        Frm_OnTop_Drop *form = New_Drop();
        form->Take(content);
        if (form->Is_Empty())
            return form->deleteLater();
        form->show();
        form->activateWindow();
    });
    connect(m_tray.get(), &Tray::Wanted, this, m_window.bring_back);
    connect(m_tray.get(), &Tray::Lost, this, &At_Hand::Tray_Lost);
    connect(m_versions.get(), &Version_Check::New_Version, this, &At_Hand::Show_Notice);
    connect(m_versions.get(), &Version_Check::Told, this, [this](const QString &text) { m_shell.Set_Status(text); });
    m_tray->Add(Pack_Text("Frm_Main", "_Curr_User") + App().Curr_User, Text("_Welcome"));
}

At_Hand::~At_Hand()
{
    for (const QPointer<QWidget> &drop : m_drops)
        delete drop;
}

void At_Hand::Fill_Menu()
{
    const auto entry = [this](const char *name, const auto &run) {
        connect(m_floating->Entry(name), &QAction::triggered, this, run);
    };
    entry("Mnu_OnTop_ShowMain", m_window.bring_back);
    entry("Mnu_OnTop_New", [this] {
        m_window.bring_back();
        if (!m_window.is_locked())
            m_shell.New_Document();
    });
    entry("Mnu_OnTop_Note", [this] { Open_Note(); });
    entry("Mnu_OnTop_MyPostIt", [this] { Start_Post_It(); });
    entry("Mnu_OnTop_Snap", [this] { Snap(); });
    entry("Mnu_OnTop_Float", [this] { Main_Command("Mnu_Float"); });
    entry("Mnu_OnTop_Setting", [this] {
        m_window.bring_back();
        Main_Command("Mnu_Config");
    });
    entry("Mnu_OnTop_About", [this] {
        m_window.bring_back();
        Main_Command("Mnu_About");
    });
    entry("Mnu_OnTop_Exit", [this] { Main_Command("Mnu_Exit"); });
    m_floating->Entry("Mnu_OnTop_Float")->setChecked(Config().CH_FLOAT == QLatin1String("1"));
}

/// A command of the main window, unless it waits for the answer to a question or for a login.
void At_Hand::Main_Command(const char *action)
{
    if (QWidget *waiting = QApplication::activeModalWidget()) {
        waiting->raise();
        waiting->activateWindow();
    } else if (!m_window.is_locked()) {
        m_main.findChild<QAction *>(QLatin1String(action))->trigger();
    }
    m_floating->Entry("Mnu_OnTop_Float")->setChecked(Config().CH_FLOAT == QLatin1String("1"));
}

void At_Hand::Begin()
{
    Connect_Keys();
    Open_Link();
    Settings_Changed();
    Show_Floating(Config().CH_FLOAT == QLatin1String("1"));
    m_versions->Begin();
    // Made before it is wanted: it is to be there at once.
    QTimer::singleShot(0, this, [this] {
        m_note = std::make_unique<Frm_Note>();
        m_note->ensurePolished();
        connect(m_note.get(), &Frm_Note::Stored, this, [this](const QString &id, const QString &folder) {
            Arrived(id, folder, Text("_Note_Stored") + Arrivals::Folder_Name(folder));
        });
    });
}

void At_Hand::Connect_Keys()
{
    m_keys = std::make_unique<Hand_Keys>();
    connect(m_keys.get(), &Hand_Keys::Pressed, this, [this](Hand_Keys::Key key) {
        if (key == Hand_Keys::Note)
            Open_Note();
        else
            m_window.toggle();
    });
    m_keys->Bind();
    QTimer::singleShot(0, this, &At_Hand::Tell_Held_Keys); // the status line has to be there
}

void At_Hand::Tell_Held_Keys()
{
    for (const Hand_Keys::Key key : {Hand_Keys::Window, Hand_Keys::Note}) {
        if (m_keys->Of(key).state != Hot_Keys::State::Held)
            continue;
        const QString text = m_keys->Standing_Text(key);
        m_shell.Set_Status(text);
        m_tray->Tell(text);
        Set_Pending(Run_Time_Error(Error_Number::Permission_Denied, text));
        Error_Log(QStringLiteral("Hand_Keys\\Bind"));
    }
}

void At_Hand::Open_Link()
{
    Message_Link::Handlers handlers;
    handlers.add = [this](const QString &title, const QString &text) {
        return Take_Message(title, text);
    };
    handlers.execute = [this](const QString &command) {
        const auto parts = Arrivals::Read_Command(command);
        return parts ? Take_Message(parts->title, parts->text)
                     : Message_Link::Reply{Text("_Malformed"), Message_Link::Refusal::Malformed};
    };
    handlers.show = m_window.bring_back;
    handlers.toggle = m_window.toggle;
    handlers.note = [this] {
        Open_Note();
    };
    handlers.is_free = [] {
        return !Long_Work::Is_Under_Way();
    };
    m_link = std::make_unique<Message_Link>(std::move(handlers));
}

Message_Link::Reply At_Hand::Take_Message(const QString &title, const QString &text)
{
    if (text.trimmed().isEmpty())
        return {Text("_Malformed"), Message_Link::Refusal::Malformed};
    const QString folder = Arrivals::Folder();
    const QString id = Arrivals::Take_Text(text, title, folder);
    if (id.isEmpty())
        return {Pack_Text("Frm_Note", "_Not_Stored") + Last_Trouble(), Message_Link::Refusal::Failed};
    Arrived(id, folder, Text("_Note_Stored") + Arrivals::Folder_Name(folder));
    return {QStringLiteral("SaveDone") + id, Message_Link::Refusal::None};
}

/// The tree counts and the list shows what came.
void At_Hand::Arrived(const QString &code_id, const QString &folder, const QString &status)
{
    m_shell.Folder_Changed(folder);
    m_shell.Documents_Moved({code_id}, folder);
    m_shell.Set_Status(status);
}

void At_Hand::Take_Files(const QStringList &paths)
{
    const QString folder = Arrivals::Folder();
    for (const QString &path : paths) {
        const QString name = QFileInfo(path).fileName();
        if (!Files::Is_File(path)) {
            m_shell.Set_Status(Filled(Text("_No_File"), {name}));
            continue;
        }
        const QString id = Arrivals::Take_File(path, folder);
        if (!id.isEmpty())
            Arrived(id, folder, name + Text("_ImportFileOk"));
    }
}

Frm_OnTop_Drop *At_Hand::New_Drop()
{
    auto *form = new Frm_OnTop_Drop;
    form->setAttribute(Qt::WA_DeleteOnClose);
    m_drops.removeAll(QPointer<QWidget>());
    m_drops << form;
    connect(form, &Frm_OnTop_Drop::Stored, this, &At_Hand::Arrived);
    return form;
}

/// The program's own windows step aside for the picture, as far as they cover what is meant.
void At_Hand::Snap()
{
    constexpr int Repainted = 300; // milliseconds until the desktop shows what lies below
    const bool shown = m_floating->isVisible();
    const QPoint place = m_floating->geometry().center();
    m_floating->hide();
    QTimer::singleShot(Repainted, this, [this, shown, place] {
        Screen_Picture::Take(place, *this, [this, shown](const QImage &picture, Screen_Picture::Failure failure) {
            m_floating->setVisible(shown && !m_window.is_locked());
            if (failure == Screen_Picture::Failure::Not_Allowed)
                return Prompts::Message(Text("_No_Snap"), App().App_Title, Prompts::Icon::Exclamation);
            if (failure != Screen_Picture::Failure::None)
                return;
            Frm_OnTop_Drop *form = New_Drop();
            form->Take_Picture(picture,
                               Text("_Snap_Title") + Machine::Now().toString(QStringLiteral("yyyy-MM-dd HH:mm")));
            form->show();
            form->activateWindow();
        });
    });
}

void At_Hand::Start_Post_It()
{
    const QString program = Files::Native_Path(App().App_Path + QStringLiteral("K9.exe"));
    if (!Files::Is_File(program) || !QProcess::startDetached(program, {QStringLiteral("/n")}))
        Prompts::Message(Filled(Text("_No_K9"), {program}), App().App_Title, Prompts::Icon::Exclamation);
}

void At_Hand::Open_Note()
{
    if (m_window.is_locked())
        return m_window.bring_back();
    if (m_note != nullptr)
        m_note->Call();
}

void At_Hand::Check_Versions()
{
    m_versions->Check_Now();
}

void At_Hand::Show_Notice(const Version_Notice &notice)
{
    if (m_window.is_locked())
        return;
    auto *form = new frm_ShowUp(notice);
    m_drops << form;
    connect(form, &frm_ShowUp::Page_Wanted, this, [](const QUrl &page) { Links::Start(page); });
    form->Slide_In();
}

bool At_Hand::Is_In_Tray() const
{
    return m_tray->Is_There();
}

void At_Hand::Show_Floating(bool on)
{
    m_floating->Entry("Mnu_OnTop_Float")->setChecked(on);
    m_floating->setVisible(on);
    if (on && !m_floating->Limits_Of_Desktop().isEmpty())
        m_shell.Set_Status(m_floating->Limits_Of_Desktop());
}

void At_Hand::Settings_Changed()
{
    m_floating->Show_Folder(Arrivals::Folder_Name(Arrivals::Folder()));
}

void At_Hand::Hide()
{
    if (m_note != nullptr)
        m_note->Keep();
    m_floating->hide();
    m_tray->Remove();
}

void At_Hand::Return()
{
    m_tray->Add(Pack_Text("Frm_Main", "_Curr_User") + App().Curr_User, Text("_Welcome"));
    m_floating->setVisible(Config().CH_FLOAT == QLatin1String("1"));
}

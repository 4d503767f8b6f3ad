// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/database_commands.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle.h"
#include "ui/document/document_tabs.h"
#include "ui/kit/forms.h"
#include "ui/kit/numbers.h"
#include "ui/kit/shell.h"
#include "ui/kit/work_window.h"
#include "ui/window/left_tabs.h"

#include <QFileInfo>
#include <QWidget>
#include <algorithm>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Frm_Main", key);
}

void Show_Error()
{
    Prompts::Message(Error_Text(Err()), App().Box_Title, Prompts::Icon::Exclamation);
}
} // namespace

Database_Commands::Database_Commands(QWidget &window, Shell &shell, Left_Tabs &left, Document_Tabs &tabs)
    : QObject(&window), m_window(window), m_shell(shell), m_left(left), m_tabs(tabs)
{
}

void Database_Commands::Choose(const std::function<void()> &chosen)
{
    const auto changed = [&] {
        m_left.Forget_Search();
        if (chosen)
            chosen();
        m_shell.Reload_All();
    };
    // A document belongs to its database; saved from an open tab, it would be written into the other one.
    const auto mayChange = [this] {
        return m_tabs.Close_All();
    };
    if (Forms::Show_Modal(QStringLiteral("Frm_Database"),
                          {.parent = &m_window, .changed = changed, .may_change = mayChange}) ==
        Forms::Outcome::Accepted)
        m_tabs.Bring_Back_Unsaved();
}

void Database_Commands::Compact()
{
    m_left.Stop_Search();
    m_shell.Set_Status(Text("_Compacting"));
    const QString answer = Trap(
        QStringLiteral("Frm_Main\\mnuComp_Click"),
        [this] {
            QString done;
            const qint64 before = QFileInfo(Database_Path()).size();
            Database_Engine::Let_Go(); // the thread that compacts has a connection of its own
            Long_Work::Run_To_End(&m_window, Text("_Compacting"),
                                  [&] { done = Compact_Database(Database_Path(), QStringLiteral("no")); });
            const qint64 freed = std::max<qint64>(0, before - QFileInfo(Database_Path()).size());
            return done + QLatin1Char('\n') + Text("_Given_Back").arg(Grouped(freed));
        },
        Show_Error);
    m_shell.Set_Status(answer);
    if (!answer.isEmpty())
        Prompts::Message(answer, App().Box_Title);
}

void Database_Commands::Clean()
{
    m_shell.Set_Status(Text("_Cleaning"));
    const bool done = Trap(
        QStringLiteral("Frm_Main\\mnu_clean_data_Click"),
        [this] {
            const Cleaning_Count count = Count_For_Cleaning();
            if (count.documents + count.attachments > 0) {
                const QString question = Text("_CleanCount").arg(count.documents).arg(count.attachments);
                const Prompts::Button_Texts verbs{.yes = Pack_Text("Buttons", "_Clean_Up"),
                                                  .no = Pack_Text("Buttons", "_Cancel")};
                if (Prompts::Ask(question, App().Box_Title, Prompts::Choice::Yes_No, Prompts::Answer::No, verbs) !=
                    Prompts::Answer::Yes)
                    return false;
            }
            Long_Work::Run_To_End(&m_window, Text("_Cleaning"), [&] {
                if (count.documents + count.attachments > 0)
                    Copy_Before_Cleaning();
                Clean_Database();
            });
            return true;
        },
        Show_Error);
    if (done)
        m_shell.Reload_All();
    m_shell.Set_Status(done ? Text("_Cleaned") : QString());
}

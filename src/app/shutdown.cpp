// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/shutdown.h"

#include "core/config_store.h"
#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/settings.h"
#include "platform/files/door.h"
#include "platform/prompts/prompts.h"
#include "storage/database_lifecycle.h"
#include "ui/window/frm_main.h"

namespace
{
/// Typed text is not thrown away because a save failed, unless the user says so.
bool May_Lose_Unsaved()
{
    return Prompts::Ask(Pack_Text("Frm_Main", "_Close_Unsaved"), App().App_Title, Prompts::Choice::Yes_No,
                        Prompts::Answer::No) == Prompts::Answer::Yes;
}

/// The backup at exit. @returns false when the user keeps the program open
bool Back_Up_At_Exit(Frm_Main &window)
{
    if (!Backup_Is_Due() || Config().Cob_Exit == QLatin1String("1"))
        return true;
    if (Config().Cob_Exit == QLatin1String("2")) {
        const QString question = Pack_Text("Frm_Main", "_BackUpTips") + QLatin1Char('\n') +
                                 Pack_Text("Frm_Main", "_BackUpLast") + Config().Backup_Date;
        const Prompts::Answer answer =
            Prompts::Ask(question, Pack_Text("Frm_Main", "_BackUpTitle"), Prompts::Choice::Yes_No_Cancel);
        if (answer != Prompts::Answer::Yes)
            return answer == Prompts::Answer::No;
    }
    window.Set_Status(Pack_Text("Frm_Main", "_OnBackUp"));
    Trap(QStringLiteral("Frm_Main\\Form_QueryUnload\\BackUp"), Back_Up, [] {
        Prompts::Message(Pack_Text("Frm_Main", "_BackUpFailed") + QLatin1Char('\n') + Error_Text(Err()),
                         App().App_Title, Prompts::Icon::Exclamation);
    });
    return true;
}
} // namespace

bool Form_QueryUnload(Frm_Main &window)
{
    if (!window.Save_All_Documents() && !May_Lose_Unsaved())
        return false;
    if (!Back_Up_At_Exit(window))
        return false;
    window.hide();
    window.Save_Left_Side();
    Clear_Temp_Directory();
    Files::Delete_Files(App().App_Path + QStringLiteral("editor"), QStringLiteral("~*.htm"));
    return true;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_trouble.h"

#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/prompts/prompts.h"

namespace
{
QString &Trouble()
{
    static QString text;
    return text;
}

/// A statement joins names as they are, so a syntax error means a quote in what the user typed.
QString Reason(const Pending_Error &error)
{
    if (error.failure == Failure::Syntax)
        return Pack_Text("Frm_Main", "_Quote_In_Name");
    return Error_Text(error).section(QLatin1Char('\n'), 0, 0);
}
} // namespace

QString Folder_Trouble()
{
    return Trouble();
}

namespace Folder_Editing
{
void Forget_Trouble()
{
    Trouble().clear();
}

void Keep_Trouble()
{
    Trouble() = Pack_Text("Frm_Main", "_Action_Failed") + Reason(Err());
}

void Tell(const QString &text)
{
    Prompts::Message(text, App().App_Title);
}

bool Confirm(const QString &question)
{
    return Config().CH_Tree_Comfirm != QLatin1String("1") ||
           Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No) == Prompts::Answer::Yes;
}
} // namespace Folder_Editing

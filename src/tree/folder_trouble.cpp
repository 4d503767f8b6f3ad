// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_trouble.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/prompts/prompts.h"

namespace Folder_Editing
{
void Tell(const QString &text)
{
    Prompts::Message(text, App().App_Title);
}

bool Confirm(const QString &question)
{
    return !Is_On(&Settings_Record::CH_Tree_Comfirm) ||
           Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::Yes,
                        {.yes = Pack_Text("Buttons", "_Move"), .no = Pack_Text("Buttons", "_Cancel")}) ==
               Prompts::Answer::Yes;
}
} // namespace Folder_Editing

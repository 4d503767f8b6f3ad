// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/other_user.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/settings_table.h"
#include "platform/prompts/prompts.h"

void Tell_Of_Other_User()
{
    const Setting &language = Setting_Named(QStringLiteral("LANGUAGE"));
    const QString chosen = GetIni(QLatin1String(language.section), QLatin1String(language.key));
    Config().LANGUAGE = Acceptable(language, chosen) ? chosen : Healed_Value(language);
    Load_Built_In_Language();
    Load_Language(QStringLiteral("Main()"));
    Prompts::Message(Pack_Text("Main", "_Other_User"), App().Box_Title, Prompts::Icon::Information);
}

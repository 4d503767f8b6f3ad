// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/skins.h"

#include "core/process_state.h"
#include "core/settings.h"
#include "platform/desktop/skin_engine.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"

namespace
{
/// Opens the skin files that the program brings.
QString Password()
{
    return QStringLiteral("q3VbXk8NtRy1PzHa");
}
} // namespace

void Attach_Chosen_Skin()
{
    const QString name = Config().CH_Style_Classic + QStringLiteral(".skin");
    const QString file = Files::Native_Path(App().App_Path + QStringLiteral("skins\\") + name);
    SkinH_Set_Library(App().App_Path + QStringLiteral("tools\\SkinH_VB6.dll"));
    if (Config().CH_Style_Classic != QLatin1String("0") && Files::Is_Plain_Name(name) && Files::Is_File(file))
        SkinH_Attach_Ex(file, Password());
    else
        SkinH_Detach();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"

Process_State &App()
{
    static Process_State state;
    return state;
}

QString Version_Text()
{
    return QStringLiteral(ZELQOR_VERSION);
}

QString Version_Digits()
{
    return Version_Text().remove(QLatin1Char('.'));
}

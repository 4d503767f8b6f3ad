// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/trouble.h"

#include "core/error_text.h"
#include "core/language_pack.h"

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

QString Last_Trouble()
{
    return Trouble();
}

void Forget_Trouble()
{
    Trouble().clear();
}

void Set_Trouble(const QString &line)
{
    Trouble() = line;
}

void Keep_Trouble()
{
    Trouble() = Pack_Text("Frm_Main", "_Action_Failed") + Reason(Err());
}

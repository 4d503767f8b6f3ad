// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/error_log.h"

#include <QString>

/// Why the last procedure that tells its trouble did not do what it was asked, as one line in the user's language; ""
/// when it did, or was called off.
QString Last_Trouble();

/// What Last_Trouble answers from now on: nothing, a line, or the pending error.
void Forget_Trouble();
void Set_Trouble(const QString &line);
void Keep_Trouble();

/// As Trap, and Last_Trouble tells the error afterwards.
template <class Body>
auto Trap_Told(const QString &source, Body &&body) -> std::invoke_result_t<Body>
{
    Forget_Trouble();
    return Trap(source, std::forward<Body>(body), Keep_Trouble);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/error_log.h"

#include <QString>

/// Why the last editing procedure of this room failed, as one line in the user's language; "" when it did what it was
/// asked, or was called off.
QString Folder_Trouble();

namespace Folder_Editing
{
/// What Folder_Trouble answers from now on: nothing, or the pending error.
void Forget_Trouble();
void Keep_Trouble();

/// A notice to the user.
void Tell(const QString &text);
/// The question before a folder moves; asked only when the setting wants it. @returns whether to go on
bool Confirm(const QString &question);

/// As Trap, and Folder_Trouble tells the error afterwards.
template <class Body>
auto Trap_Editing(const QString &source, Body &&body) -> std::invoke_result_t<Body>
{
    Forget_Trouble();
    return Trap(source, std::forward<Body>(body), Keep_Trouble);
}
} // namespace Folder_Editing

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/trouble.h"

#include <QString>

/// Why the last editing procedure of this room failed, as one line in the user's language; "" when it did what it was
/// asked, or was called off.
inline QString Folder_Trouble()
{
    return Last_Trouble();
}

namespace Folder_Editing
{
using ::Forget_Trouble;
using ::Keep_Trouble;

/// A notice to the user.
void Tell(const QString &text);
/// The question before a folder moves; asked only when the setting wants it. @returns whether to go on
bool Confirm(const QString &question);

/// As Trap, and Folder_Trouble tells the error afterwards.
template <class Body>
auto Trap_Editing(const QString &source, Body &&body) -> std::invoke_result_t<Body>
{
    return Trap_Told(source, std::forward<Body>(body));
}
} // namespace Folder_Editing

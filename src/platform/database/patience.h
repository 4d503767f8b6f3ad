// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

/// What a thread does while it waits for a server: it asks its watch whether to go on, and tells whoever set its
/// patience (Database_Server::Set_Patience) how long it takes.
namespace Patience
{
/// Runs `work` and waits for its end: in a thread of its own where this one has somebody to ask or to tell.
/// @param callOff  is called beside the work, again and again until it ends, when it is not to go on
/// @returns false when it was called off
bool Wait_For(const std::function<void()> &work, const std::function<void()> &callOff);
} // namespace Patience

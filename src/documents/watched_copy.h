// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"
#include "platform/files/paths.h"

/// Copies a file over another, whole or not at all, and says how far it is.
/// @returns false when it was called off; nothing was written then. @throws Run_Time_Error
bool Copy_File_Watched(const QString &from, const QString &to, Files::Durability durability, Work &work);

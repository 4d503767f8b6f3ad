// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/errors/run_time_error.h"

#include <optional>

struct sqlite3;

/// Gives a connection the dialect's functions and collations:
/// zelqor_text compares without regard to case, zelqor_sort orders as a dictionary does (Chinese by pinyin).
/// They serve statements only; nothing that is stored in the file refers to them.
/// @param error  where a function that fails leaves its error; it must outlive the connection
void Register_Functions(sqlite3 *db, std::optional<Run_Time_Error> &error);

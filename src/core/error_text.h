// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/error_log.h"

/// What a box shows for an error: a clear text in the user's language where the kind of failure is known, followed
/// by the description; else the description alone.
QString Error_Text(const Pending_Error &error);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"
#include "ui/kit/forms.h"

/// The forms of this wing that are opened by name, and the commands that open them.
std::span<const Forms::Row> Exchange_Forms();
std::span<const Commands::Row> Exchange_Commands();

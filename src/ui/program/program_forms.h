// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"
#include "ui/kit/forms.h"

/// The forms of this wing that are opened by name.
std::span<const Forms::Row> Program_Forms();
/// Its commands in the main window.
std::span<const Commands::Row> Program_Commands();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"
#include "ui/kit/config_page.h"

/// The commands of this wing.
std::span<const Commands::Row> Tools_Commands();
/// What this wing adds to the options.
std::span<const Config_Pages::Row> Tools_Pages();

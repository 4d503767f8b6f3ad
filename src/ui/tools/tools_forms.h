// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"

/// The commands of this wing.
std::span<const Commands::Row> Tools_Commands();

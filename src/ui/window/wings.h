// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"
#include "ui/kit/left_page.h"

#include <vector>

/// Joins the tables of all wings. To be called once, before the first form.
void Join_Wings();

/// The commands of all wings, in the order of their menus.
std::vector<Commands::Row> All_Commands();

/// The left pages of all wings, in their order on screen.
std::vector<Left_Pages::Row> All_Pages();

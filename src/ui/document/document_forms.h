// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/commands.h"
#include "ui/kit/forms.h"

#include <span>

std::span<const Forms::Row> Document_Forms();
std::span<const Commands::Row> Document_Commands();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/left_page.h"

#include <span>

/// The pages that this wing brings to the left side of the main window.
std::span<const Left_Pages::Row> List_Pages();

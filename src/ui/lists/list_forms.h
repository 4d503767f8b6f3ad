// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/kit/forms.h"

/// The forms of this wing that are opened by name.
std::span<const Forms::Row> List_Forms();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Says, in the language of the settings, why the program ends: another user runs it from the same directory.
void Tell_Of_Other_User();

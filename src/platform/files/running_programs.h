// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Files
{
/// Whether a program of this user runs that was started with a file, as its command line tells; false where the system
/// does not show those.
bool Is_On_A_Command_Line(const QString &path);
} // namespace Files

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/programs/outside_program.h"

/// The compiler of help files (CHM): Free Pascal's chmcmd, where it is installed.
namespace Help
{
/// The compiler's program, "" where none is installed.
QString Compiler();

/// Compiles a project in its folder. The compiler takes in the pictures that a topic shows.
/// @param goOn  as Programs::Run asks it
Programs::End Compile(const QString &project, const std::function<bool()> &goOn);
} // namespace Help

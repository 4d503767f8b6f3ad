// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Runs `zelqorfun` on two files. A large file is coded on a thread of its own while the window is painted.
/// @returns whether the output was written. Where there was none before, the next step, which opens it, may tell.
bool Run_Coder(const char *command, const QString &input, const QString &output);

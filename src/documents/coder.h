// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Runs `zelqorfun` on two files. Its answer is not asked: the next step opens the output, and a missing one is the
/// error. A large file is coded on a thread of its own while the window is painted.
void Run_Coder(const char *command, const QString &input, const QString &output);

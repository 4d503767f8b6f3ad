// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace Desktop
{
/// Starts a program in its own folder; it goes on by itself. @returns whether it could be started
bool Start_Program(const QString &path);
} // namespace Desktop

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/work.h"

#include <QString>
#include <functional>

class QWidget;

/// Runs long work in a thread of its own and waits for its end. Nothing else can be used meanwhile, windows paint, and
/// after half a second a window shows how far the work is and lets the user call it off.
namespace Long_Work
{
/// @param title  what is being done
/// @param question  asked before it is called off; "" for none
/// @throws what `body` throws
void Run(QWidget *parent, const QString &title, const std::function<void(Work &)> &body, const QString &question = {});

/// The same for work that cannot be called off, nor say how far it is.
void Run_To_End(QWidget *parent, const QString &title, const std::function<void()> &body);

/// Runs a question of the work's in the window's thread and waits for it. Without a window it just runs.
void Ask(const std::function<void()> &question);

/// Whether such work is going on: what comes in from outside the program waits for its end.
bool Is_Under_Way();
} // namespace Long_Work

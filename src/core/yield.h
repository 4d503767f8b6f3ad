// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Lets the message loop run once in the middle of a long procedure: windows paint and timers fire, but input waits,
/// so that a click cannot start a second procedure inside the first.
void Yield();

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class Ladder_Run;

/// Moves a database from its three levels of class tables to the folder tree, in one commit, after a copy of the
/// file to data\bak\zelqor241.db. An error in it ends it silently.
/// @throws Run_Time_Error when the copy cannot be made; nothing was changed then.
void Update_241_Start(Ladder_Run &run);

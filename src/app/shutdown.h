// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class Frm_Main;

/// What happens when the main window is asked to close for good: unsaved documents are saved, the backup is made,
/// the settings of the window are kept and staging files deleted.
/// @returns false when the program is to stay open
bool Form_QueryUnload(Frm_Main &window);

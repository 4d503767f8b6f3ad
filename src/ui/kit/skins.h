// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// Gives the windows the look that the setting CH_Style_Classic names: "0" is the platform's own, any other value the
/// skin of that name in skins\, and the platform's own again when there is no such file.
/// @throws Run_Time_Error 53 when the skin library is missing
void Attach_Chosen_Skin();

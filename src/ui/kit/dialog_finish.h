// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The distances of the program's forms, in pixels.
namespace Distance
{
inline constexpr int Hair = 4;   ///< between parts of one control
inline constexpr int Near = 8;   ///< between what belongs together
inline constexpr int Group = 12; ///< between groups
inline constexpr int Edge = 16;  ///< between a form's edge and what stands in it
} // namespace Distance

/// Gives every dialog of the program, those of the toolkit among them, the same finish before it is shown for the first
/// time, whoever makes it: distances of 4, 8, 12 and 16, buttons of one width at the end, the skin's flat icons in
/// boxes, access keys. A form that sets one of these distances itself keeps it.
void Finish_Dialogs();

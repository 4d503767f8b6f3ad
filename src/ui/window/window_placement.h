// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

/// Where the main window stood last: section Settings, lengths in twips.
namespace Window_Placement
{
/// Gives the window its kept place, within the screen; without one it stands in the middle.
void Restore(QWidget &window);
/// Shows the window in its kept state; the setting CH_MIN starts it minimised.
void Show(QWidget &window);
/// Writes place and state; a minimised window leaves the kept ones alone.
void Keep(const QWidget &window);
} // namespace Window_Placement

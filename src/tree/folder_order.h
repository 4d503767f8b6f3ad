// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

/// Reordering among siblings by exchanging position numbers. Each asks first where the setting wants it and tells when
/// there is no partner. @returns whether rows were written, so that the tree has to be loaded anew.

/// Exchanges with the sibling before.
bool Move_Node_Up(const QString &id);

/// Exchanges with the sibling behind; a folder whose position is 0 finds none. When both have the same position, the
/// number of the highest sibling id stands in for the partner's.
/// @param questionKey  the text asked: "_NodeUpdate" from the button, "_NoSave" from the menu entry
bool Move_Node_Down(const QString &id, const char *questionKey);

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QDrag;

/// Gives a drag a small label that hangs below the pointer, so that the place under it is seen.
void Label_Drag(QDrag &drag, const QString &text);

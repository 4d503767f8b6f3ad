// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

/// An icon of the program's own, drawn from its vector source in the colour that text has in the palette in force.
QIcon Line_Icon(const QString &name);
/// The icon of a tree node: the file of that name in data\ico\, else the drawing of the same name.
QIcon Node_Icon(const QString &imageName);
/// Forgets drawn icons, after a change of the palette.
void Forget_Icons();

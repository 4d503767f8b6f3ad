// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIcon>
#include <QString>

/// An icon of the program's own, drawn from its vector source in the colour of the text around it, whatever the skin.
QIcon Line_Icon(const QString &name);
/// The icon of a tree node: the file of that name in data\ico\, else the drawing of the same name.
QIcon Node_Icon(const QString &imageName);
/// Forgets the pictures read from data\ico\, after one of them changed.
void Forget_Icons();
/// What the image of a node is called on screen: a word for those that the program brings, else the file's plain name.
QString Icon_Title(const QString &imageName);

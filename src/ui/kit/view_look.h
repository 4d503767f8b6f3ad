// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QTreeView;

/// Gives a view the font of two settings; an empty family and a size that is no number leave the view's own.
void Use_Setting_Font(QTreeView &view, const QString &family, const QString &pointSize);
/// Makes a column as wide as what it holds, with some air.
void Fit_Column(QTreeView &view, int column);
/// Gives a view the background of a setting, with a text colour that can be read on it, or the skin's own.
void Use_Setting_Background(QTreeView &view, const QString &colorNumber);

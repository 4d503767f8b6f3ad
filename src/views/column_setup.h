// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <vector>

/// How the columns of the list are set up, as the settings keep it: whole numbers, each followed by ",".

/// Widths of the columns in twips (1/1440 inch) from ListViewPara, in the columns' own order; 0 hides one. A column
/// that the text doesn't reach, or gives no number for, has its initial width; what is too much is left out.
std::vector<int> Widths_From_Text(const QString &text);
/// Places of the columns on screen, from left to right: each column once, whatever the text says.
std::vector<int> Order_From_Text(const QString &text);
QString Numbers_To_Text(const std::vector<int> &numbers);
/// The widths that columns have until the user sets others.
std::vector<int> Initial_Widths();
/// The same for a list that was never set up: only the columns that one reads by are shown.
std::vector<int> First_Widths();
/// Their places then: what one reads by comes first.
std::vector<int> First_Order();

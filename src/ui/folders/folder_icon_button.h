// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QPushButton;

/// The icon field of the folder dialogs: a button that shows the icon with its name and opens the picker.
namespace Folder_Icon_Button
{
void Set_Up(QPushButton &button, const QString &icon);
QString Icon(const QPushButton &button);
} // namespace Folder_Icon_Button

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QLabel;
class QToolButton;

/// The icon field of the folder dialogs: a button that shows the icon and opens the picker, its name beside it. The
/// name is kept as the button's accessible description.
namespace Folder_Icon_Button
{
void Set_Up(QToolButton &button, QLabel &name, const QString &icon);
QString Icon(const QToolButton &button);
} // namespace Folder_Icon_Button

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folder_icon_button.h"

#include "ui/frm_icon.h"
#include "ui/icons.h"

#include <QLabel>
#include <QToolButton>

namespace
{
void Show_Icon(QToolButton &button, QLabel &name, const QString &icon)
{
    button.setIcon(Node_Icon(icon));
    button.setAccessibleDescription(icon);
    name.setText(icon);
}
} // namespace

namespace Folder_Icon_Button
{
void Set_Up(QToolButton &button, QLabel &name, const QString &icon)
{
    Show_Icon(button, name, icon);
    QObject::connect(&button, &QToolButton::clicked, &button, [&button, &name] {
        Frm_icon picker(Icon(button), button.window());
        if (picker.exec() == QDialog::Accepted && !picker.Icon().isEmpty())
            Show_Icon(button, name, picker.Icon().toUpper());
    });
}

QString Icon(const QToolButton &button)
{
    return button.accessibleDescription();
}
} // namespace Folder_Icon_Button

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/folders/folder_icon_button.h"

#include "ui/folders/frm_icon.h"
#include "ui/kit/icons.h"

#include <QPushButton>

namespace
{
constexpr const char *Image = "Image"; ///< property: the image's file name, which the button's words don't tell

void Show_Icon(QPushButton &button, const QString &icon)
{
    button.setIcon(Node_Icon(icon));
    button.setText(Icon_Title(icon));
    button.setProperty(Image, icon);
}
} // namespace

namespace Folder_Icon_Button
{
void Set_Up(QPushButton &button, const QString &icon)
{
    Show_Icon(button, icon);
    QObject::connect(&button, &QPushButton::clicked, &button, [&button] {
        Frm_icon picker(Icon(button), button.window());
        if (picker.exec() == QDialog::Accepted && !picker.Icon().isEmpty())
            Show_Icon(button, picker.Icon().toUpper());
    });
}

QString Icon(const QPushButton &button)
{
    return button.property(Image).toString();
}
} // namespace Folder_Icon_Button

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

/// The control of a form with that object name.
template <class Control>
Control &Get(const QWidget &form, const char *name)
{
    auto *control = form.findChild<Control *>(QLatin1String(name));
    if (control == nullptr)
        qFatal("no control %s", name);
    return *control;
}

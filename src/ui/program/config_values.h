// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/program/config_rows.h"

/// What the controls of the options say, and why not.
namespace Config_Values
{
void Show(QWidget &control, const Setting &setting, const QString &text);
/// What a control says for its setting; null where it says nothing: an option that is not the chosen one, a list
/// without a chosen entry.
QString Of(const QWidget &control, const Setting &setting);
/// The reason against what a control says, in the user's language; "" for none.
QString Reason_Against(const Config_Row &row, const QWidget &control, const Setting &setting);
/// Calls back each time the user or the program changes what a control says.
void Watch(QWidget &control, QObject &who, const std::function<void()> &changed);
} // namespace Config_Values

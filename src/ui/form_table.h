// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QWidget;

/// The forms that can be opened by name: one table of form name and factory, so that the main window and the panes
/// include no dialog's header.
namespace Forms
{
enum class Outcome { Accepted, Rejected };

/// Shows a form modally and waits. `preset` is a text that the form starts with (the user name of frmLogin).
Outcome Show_Modal(const QString &formName, QWidget *parent, const QString &preset = {});
} // namespace Forms

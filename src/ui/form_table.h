// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <functional>

class QWidget;

/// The forms that can be opened by name: one table of form name and factory, so that the main window and the panes
/// include no dialog's header.
namespace Forms
{
enum class Outcome { Accepted, Rejected };

/// Shows a form modally and waits. `preset` is a text that the form starts with (the user name of frmLogin,
/// the connection string of Frm_Update_235, the ids of documents joined by "/" for Frm_ListView_Color,
/// the id of a document for Frm_ListView_VirCate).
/// `changed` runs each time the open form has changed what its caller shows (Frm_Database: another
/// database; Frm_Config: the settings).
/// @throws Run_Time_Error 339 when there is no form of that name, and what the form's load throws.
Outcome Show_Modal(const QString &formName, QWidget *parent, const QString &preset = {},
                   const std::function<void()> &changed = {});
} // namespace Forms

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>
#include <span>

class QWidget;
class Shell;

/// Commands of the main window that a wing brings: one row each, which becomes an entry of a menu.
namespace Commands
{
struct Row {
    const char *name; ///< the action's name; its caption stands in the section of the main window
    const char *icon; ///< "" for none
    const char *menu; ///< name of the menu
    void (*run)(Shell &shell, QWidget *parent);
    const char *key = ""; ///< "" for none
};
} // namespace Commands

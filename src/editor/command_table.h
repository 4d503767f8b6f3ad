// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

class Text_Editor;

enum class Command_Menu { Edit, Insert, Format };

/// One command of the editor.
struct Command_Row {
    const char *name;     ///< object name of its action, and its key in the language pack
    const char *words;    ///< design-time words
    const char *icon;     ///< name of its drawing, "" for none
    const char *shortcut; ///< portable text, "; " between several
    Command_Menu menu;
    void (*run)(Text_Editor &editor, bool on);
    bool (*isOn)(const Text_Editor &editor); ///< nullptr for a command that is no switch
};

/// Every command of the editor, in the order of the menus.
std::span<const Command_Row> Command_Table();

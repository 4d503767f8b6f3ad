// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <span>

class Text_Editor;

/// The menus of the editor; each but the first three is inside another one.
enum class Command_Menu { Edit, Insert, Format, Paragraph, Table, Heading, Align, Spacing, Color, Highlight };

/// What needs a form of its own, which is not this room's.
enum class Command_Request {
    None,
    Find,
    Find_Next,
    Find_Previous,
    Replace,
    Go_To,
    New_Table,
    Picture_Size,
    Special_Character
};

/// When a command can be used, and where it shows.
enum Command_Trait : unsigned {
    Reads = 1,       ///< also in a document that is locked
    Selected = 2,    ///< needs a selection
    In_Table = 4,    ///< needs the cursor in a table
    On_Bar = 8,      ///< has a button on the bar
    Anywhere = 16,   ///< its keys work in the whole form, not only in the panes
    New_Group = 32,  ///< a line stands before it in its menu
    On_Context = 64, ///< also in the context menu
    On_Picture = 128 ///< needs a selected picture, and is in the context menu then
};

/// One command of the editor.
struct Command_Row {
    const char *name;     ///< object name of its action, and its key in the language pack
    const char *words;    ///< design-time words
    const char *icon;     ///< name of its drawing, "#RRGGBB" for a colour's, "" for none
    const char *shortcut; ///< portable text, "; " between several
    Command_Menu menu;
    unsigned traits;
    void (*run)(Text_Editor &editor, bool on);
    bool (*isOn)(const Text_Editor &editor) = nullptr; ///< nullptr for a command that is no switch
    Command_Request request = Command_Request::None;   ///< instead of `run`
};

/// A menu of the editor and where it stands in the one around it.
struct Command_Menu_Row {
    Command_Menu menu;
    const char *name;
    const char *words;
    const char *icon;
    Command_Menu inside; ///< the menu itself for one that stands in the window's menu bar
    bool onBar;          ///< a button of the bar opens it
};

/// Every command of the editor, in the order of the menus.
std::span<const Command_Row> Command_Table();
std::span<const Command_Menu_Row> Command_Menus();

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/command_table.h"

#include "editor/character_commands.h"

namespace
{
namespace C = Character_Commands;
using M = Command_Menu;

constexpr Command_Row Rows[] = {
    {"Cmd_Bold", "粗体(&B)", "bold", "Ctrl+B", M::Format, C::Bold, C::Is_Bold},
    {"Cmd_Italic", "斜体(&I)", "italic", "Ctrl+I", M::Format, C::Italic, C::Is_Italic},
    {"Cmd_Underline", "下划线(&U)", "underline", "Ctrl+U", M::Format, C::Underline, C::Is_Underlined},
    {"Cmd_Strike", "删除线(&K)", "", "", M::Format, C::Strike, C::Is_Struck},
    {"Cmd_Super", "上标(&P)", "", "Ctrl+Shift+=", M::Format, C::Superscript, C::Is_Superscript},
    {"Cmd_Sub", "下标(&S)", "", "Ctrl+=", M::Format, C::Subscript, C::Is_Subscript},
};
} // namespace

std::span<const Command_Row> Command_Table()
{
    return Rows;
}

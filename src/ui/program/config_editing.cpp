// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Hdg_Save", "保存"},
    {As::Switch, "Chk_Save", "保存前确认(&S)", &R::CH_Save},
    {As::Switch, "Chk_Auto", "自动保存，间隔分钟数(&A)：", &R::CH_Auto_Save},
    {As::Number, "Spn_Auto", "", &R::COB_Auto_Save, "", Beside},
    {As::Heading, "Hdg_Open", "打开"},
    {As::Switch, "Chk_Lock", "资料以阅读方式打开(&R)", &R::CH_Lock},
    {As::Switch, "Chk_Pane_Memo", "显示备注(&M)", &R::ViewMemo},
    {As::Switch, "Chk_Pane_Sum", "显示摘要(&D)", &R::ViewSum, "", Beside},
    {As::Switch, "Chk_Pane_File", "显示附件等页(&F)", &R::M_FILE, "", Beside},
    {As::Heading, "Hdg_Write", "书写"},
    {As::Choice, "Comb_LineSpace", "默认行距(&L)：|1.0|1.15|1.5|2.0|2.5|3.0", &R::Cob_LineSpace, "Lab_LineSpace"},
    {As::Switch, "Chk_Tab", "Tab 键缩进段落(&T)", &R::CH_Tab},
    {As::Switch, "Chk_KeepWord", "粘贴时保留格式(&K)", &R::CH_KeepWord},
    {As::Switch, "Chk_HideSelect", "离开正文时不再突出显示选中的文字(&H)", &R::CH_HideSelect},
};
} // namespace

std::span<const Config_Row> Program_Pages::Editing()
{
    return Rows;
}

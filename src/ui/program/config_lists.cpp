// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Hdg_List", "资料列表"},
    {As::Choice, "Comb_Order",
     "资料排序(&O)：|创建时间，升序|创建时间，降序|标题，升序|标题，降序|关键字，升序|关键字，降序|资料日期，降序|更新"
     "日期，降序",
     &R::Cob_OrderBy, "Lab_Order"},
    {As::Number, "Spn_Max", "每页资料数(&N)：", &R::MAX_RECORD, "Lab_Max"},
    {As::Switch, "Chk_Low", "同时列出下级文件夹的资料(&L)", &R::ShowLow},
    {As::Switch, "Chk_Grid", "显示网格线(&G)", &R::CH_Lsv_Grid},
    {As::Switch, "Chk_Lsv_Tips", "列表提示显示摘要(&D)", &R::CH_Lsv_ToolTips},
    {As::Switch, "Chk_Lsv_Detail", "搜索结果显示命中位置(&H)", &R::CH_Lsv_Detail},
    {As::Heading, "Hdg_Tree", "目录树"},
    {As::Switch, "Chk_Tree_Tips", "目录树显示提示(&T)", &R::CH_Tree_ToolTips},
    {As::Switch, "Chk_Tree_Ask", "移动文件夹前确认(&M)", &R::CH_Tree_Comfirm},
    {As::Switch, "Chk_Exp", "新建的文件夹自动展开(&E)", &R::CH_Exp_Node},
};
} // namespace

std::span<const Config_Row> Program_Pages::Lists()
{
    return Rows;
}

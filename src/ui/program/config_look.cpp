// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Fra_Skin", "界面外观"},
    {As::Options, "Opt_Skin", "|系统外观|明亮|深色|高对比度|暖纸|静水", &R::CH_Style_Classic},
    {As::Heading, "Fra_Font", "字体"},
    {As::Font, "Comb_Font_0", "目录树(&T)：", &R::FontName_Tree, "Lab_Font_0"},
    {As::Size, "Spn_Font_0", "", &R::FontSize_Tree, "", Beside},
    {As::Font, "Comb_Font_1", "资料列表(&L)：", &R::FontName_LSV, "Lab_Font_1"},
    {As::Size, "Spn_Font_1", "", &R::FontSize_LSV, "", Beside},
    {As::Font, "Comb_Font_2", "正文(&D)：", &R::FontName_Cont, "Lab_Font_2"},
    {As::Size, "Spn_Font_2", "", &R::FontSize_Cont, "", Beside},
    {As::Hint, "Lab_Font", "正文的字体用于新建的资料。"},
    {As::Heading, "Fra_Color", "颜色"},
    {As::Color, "Cmd_Color_Tree", "目录树背景(&1)", &R::Col_Frm},
    {As::Color, "Cmd_Color_List", "列表背景(&2)", &R::Lsv_BColor, "", Beside},
    {As::Color, "Cmd_Color_Cont", "正文背景(&3)", &R::Col_Cont},
    {As::Color, "Cmd_Color_Mark", "标记颜色(&4)", &R::Col_List, "", Beside},
    {As::Hint, "Lab_Color", "带斜线的颜色取自界面外观。"},
};
} // namespace

std::span<const Config_Row> Program_Pages::Look()
{
    return Rows;
}

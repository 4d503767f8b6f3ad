// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Hdg_Start", "启动"},
    {As::Language, "Comb_Language", "界面语言(&L)：", &R::LANGUAGE, "Lab_Language", At_Restart},
    {As::Switch, "Chk_About", "启动时显示欢迎窗口(&W)", &R::CH_About},
    {As::Switch, "Chk_Min", "启动后最小化(&M)", &R::CH_MIN},
    {As::Switch, "Chk_Instance", "只运行一个程序(&O)", &R::CH_Instance},
    {As::Hint, "Lab_Instance", "每个程序目录始终只运行一个程序；此项只为与旧设置文件兼容而保留。"},
    {As::Heading, "Hdg_Window", "窗口和托盘"},
    {As::Switch, "Chk_Main", "在任务栏上显示(&T)", &R::CH_MAIN},
    {As::Switch, "Chk_Close", "关闭按钮只隐藏窗口(&C)", &R::CH_Close},
    {As::Switch, "Chk_Float", "显示悬浮窗(&G)", &R::CH_FLOAT},
    {As::Heading, "Hdg_Left", "左侧的页"},
    {As::Switch, "Chk_Find", "搜索(&S)", &R::CH_Find},
    {As::Switch, "Chk_ByDate", "日期(&D)", &R::CH_ByDate, "", Beside},
    {As::Switch, "Chk_Tags", "标签(&J)", &R::CH_Tags, "", Beside},
    {As::Switch, "Chk_Hot", "热门和复习(&H)", &R::CH_Hot, "", Beside},
    {As::Number, "Spn_Keys", "保留的搜索词(&K)：", &R::KEYS_NUM, "Lab_Keys"},
    {As::Number, "Spn_Hot", "热门列表的条数(&N)：", &R::Hot_NUM, "Lab_Hot"},
    {As::Heading, "Hdg_Lock", "锁定"},
    {As::Number, "Spn_LockMinutes", "空闲多少分钟后锁定，0 为从不(&I)：", &R::Lock_Minutes, "Lab_LockMinutes"},
    {As::Hint, "Lab_Lock",
     "锁定后，所有窗口在登录之前都不可见。它挡住在这台电脑上好奇翻看的人，挡不住拿到数据库文件的人。"},
};
} // namespace

std::span<const Config_Row> Program_Pages::General()
{
    return Rows;
}

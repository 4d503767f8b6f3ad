// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Hdg_Backup", "备份"},
    {As::Choice, "Comb_Exit", "退出时备份(&E)：|自动|从不|询问", &R::Cob_Exit, "Lab_Exit"},
    {As::Number, "Spn_Days", "备份间隔天数(&D)：", &R::Backup_Num, "Lab_Days"},
    {As::Folder, "Txt_Backup", "备份目录(&F)：", &R::Backup_Path, "Lab_Backup"},
    {As::Heading, "Hdg_Export", "导出"},
    {As::File, "Txt_Export", "导出到数据库(&B)：", &R::EXPORT_NAME, "Lab_Export"},
};
} // namespace

std::span<const Config_Row> Program_Pages::Backup()
{
    return Rows;
}

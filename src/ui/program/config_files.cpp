// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

namespace
{
using R = Settings_Record;
using As = Shown_As;

constexpr Config_Row Rows[] = {
    {As::Heading, "Hdg_Files", "附件和导入"},
    {As::Choice, "Comb_Addin", "拖入的附件(&A)：|内部文件 保存|相对路径 保存|快捷方式 保存|不作处理",
     &R::Cob_AddinFileType, "Lab_Addin"},
    {As::Choice, "Comb_Import", "导入的文件(&I)：|内部文件 保存|相对路径 保存|快捷方式 保存|不作处理",
     &R::Cob_ImportFileType, "Lab_Import"},
    {As::Kept_In, "Comb_K9", "接收便笺的文件夹(&N)：", &R::Cob_K9, "Lab_K9"},
    {As::Heading, "Hdg_Pictures", "图片"},
    {As::Folder, "Txt_Pic", "图片目录(&P)：", &R::Pic_Dir, "Lab_Pic"},
    {As::Hint, "Lab_Pic_Hint", "网页资料的图片存放在此。粘贴到正文中的图片总是随资料存入数据库。"},
};
} // namespace

std::span<const Config_Row> Program_Pages::Kept_Files()
{
    return Rows;
}

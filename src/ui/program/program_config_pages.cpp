// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/program/program_config_pages.h"

std::span<const Program_Pages::Row> Program_Pages::All()
{
    static const Row pages[] = {
        {"Pag_General", "常规", General()},      {"Pag_Look", "外观", Look()},
        {"Pag_Lists", "列表和目录", Lists()},    {"Pag_Editing", "编辑", Editing()},
        {"Pag_Files", "文件", Kept_Files()},     {"Pag_Backup", "备份", Backup()},
        {"Pag_Review", "复习", {}, Make_Review}, {"Pag_Keys", "快捷键", {}, Make_Keys},
        {"Pag_Tools", "工具", {}, Make_Tools},   {"Pag_Healed", "修复", {}, Make_Healed},
    };
    return pages;
}

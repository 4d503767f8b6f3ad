// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/program/config_rows.h"

/// The pages that the options have by themselves, in their order: a table of rows, or a class.
namespace Program_Pages
{
struct Row {
    const char *name;  ///< of the caption in the language packs
    const char *words; ///< of the caption at design time
    std::span<const Config_Row> rows;
    Config_Page *(*make)(QWidget *parent) = nullptr; ///< where rows are not enough
};
std::span<const Row> All();

std::span<const Config_Row> General();
std::span<const Config_Row> Look();
std::span<const Config_Row> Lists();
std::span<const Config_Row> Editing();
std::span<const Config_Row> Kept_Files();
std::span<const Config_Row> Backup();
Config_Page *Make_Review(QWidget *parent);
Config_Page *Make_Keys(QWidget *parent);
Config_Page *Make_Tools(QWidget *parent);
Config_Page *Make_Healed(QWidget *parent);
} // namespace Program_Pages

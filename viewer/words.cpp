// SPDX-License-Identifier: GPL-3.0-or-later
#include "words.h"

#include <cstdlib>
#include <string_view>

namespace
{
constexpr Words English{"Book",
                        "Password:",
                        "The password is wrong.",
                        "This book was used as often as it may be. Its data are destroyed.",
                        "This file holds no book that can be read.",
                        "This document cannot be read.",
                        "This picture cannot be shown.",
                        "(The document is too long; the rest is not shown.)",
                        "Search (Ctrl+F)",
                        "Not found",
                        "This was the last use: the data in the file are destroyed now.",
                        "OK",
                        "Cancel",
                        "Find before (Shift+F3)",
                        "Find next (F3)",
                        "Smaller (Ctrl+-)",
                        "Larger (Ctrl++)",
                        "Usual size (Ctrl+0)"};
constexpr Words Chinese{"电子书",
                        "密码：",
                        "密码错误。",
                        "本书的使用次数已用完，数据已销毁。",
                        "此文件中没有可读的电子书。",
                        "此资料无法读取。",
                        "此图片无法显示。",
                        "（资料过长，其余部分未显示。）",
                        "查找（Ctrl+F）",
                        "没有找到",
                        "这是最后一次使用：文件中的数据现已销毁。",
                        "确定",
                        "取消",
                        "查找上一处（Shift+F3）",
                        "查找下一处（F3）",
                        "缩小（Ctrl+-）",
                        "放大（Ctrl++）",
                        "原始大小（Ctrl+0）"};

bool Is_Chinese()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char *value = std::getenv(name); value != nullptr && *value != '\0')
            return std::string_view(value).starts_with("zh");
    return false;
}
} // namespace

const Words &Said()
{
    static const Words &said = Is_Chinese() ? Chinese : English;
    return said;
}

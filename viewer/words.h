// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

/// The viewer's own texts, by the locale's language.
struct Words {
    const char *title;
    const char *password;
    const char *wrong;
    const char *used_up;
    const char *no_book;
    const char *unreadable;
    const char *search;
    const char *not_found;
    const char *last_use;
    const char *ok;
    const char *cancel;
};

inline constexpr Words English{"Book",
                               "Password:",
                               "The password is wrong.",
                               "This book was used as often as it may be. Its data are destroyed.",
                               "This file holds no book that can be read.",
                               "This document cannot be read.",
                               "Search:",
                               "Nothing more was found.",
                               "This was the last use: the data in the file are destroyed now.",
                               "OK",
                               "Cancel"};
inline constexpr Words Chinese{"电子书",
                               "密码：",
                               "密码错误。",
                               "本书的使用次数已用完，数据已销毁。",
                               "此文件中没有可读的电子书。",
                               "此资料无法读取。",
                               "查找：",
                               "没有找到更多内容。",
                               "这是最后一次使用：文件中的数据现已销毁。",
                               "确定",
                               "取消"};

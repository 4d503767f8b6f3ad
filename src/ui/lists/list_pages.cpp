// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/list_pages.h"

#include "ui/lists/hot_pane.h"
#include "ui/lists/tag_pane.h"

namespace
{
constexpr Left_Pages::Row Rows[] = {
    {"Left_Tags", "CH_Tags", Left_Pages::Make<Tag_Pane>},
    {"Left_Hot", "CH_Hot", Left_Pages::Make<Hot_Pane>},
};
} // namespace

std::span<const Left_Pages::Row> List_Pages()
{
    return Rows;
}

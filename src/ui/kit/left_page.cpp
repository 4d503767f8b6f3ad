// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/left_page.h"

#include <utility>

void Left_Page::Refresh()
{
    if (std::exchange(m_stale, false))
        Fill();
}

void Left_Page::Come_Forward()
{
    Refresh();
    List_Chosen();
}

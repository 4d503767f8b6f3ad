// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_paragraph_words.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr qsizetype mostTabs = 64;
}

void Paragraph_Words::Pard()
{
    m_state.para = {};
    m_state.inTable = false;
}

void Paragraph_Words::Outline()
{
    m_state.para.outline = m_parameter.number >= 0 && m_parameter.number < 6 ? m_parameter.number : -1;
}

void Paragraph_Words::Tab_Stop_At()
{
    Tab_Stop tab = std::exchange(m_tab, {});
    tab.position = m_parameter.Length();
    QList<Tab_Stop> &tabs = m_state.para.tabs;
    const auto place = std::lower_bound(tabs.begin(), tabs.end(), tab.position,
                                        [](const Tab_Stop &one, int position) { return one.position < position; });
    if (place != tabs.end() && place->position == tab.position)
        *place = tab;
    else if (tabs.size() < mostTabs)
        tabs.insert(place, tab);
}
} // namespace Rtf

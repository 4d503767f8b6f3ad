// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_lists.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t mostLevels = 9;
constexpr int Bullet_Kind = 23; // of \levelnfc
} // namespace

/// The level that is being told of: one of a list, or of an override, which changes a list's level for one \ls.
List_Level *List_Reader::Open_Level()
{
    if (m_inOverride)
        return m_overrideLevels.empty() ? nullptr : &m_overrideLevels.back();
    return m_model.lists.empty() || m_model.lists.back().levels.empty() ? nullptr : &m_model.lists.back().levels.back();
}

void List_Reader::Begin_Level()
{
    if (m_inOverride) {
        if (!m_overrideLevels.empty())
            m_overrideLevels.back() = {};
    } else if (m_model.lists.empty() || m_model.lists.back().levels.size() == mostLevels) {
        return;
    } else {
        m_model.lists.back().levels.push_back({});
    }
    m_state.para.left = Not_Set;
    m_state.para.first = Not_Set;
    m_state.closer = Closer::Level;
}

void List_Reader::End_Level(const State &inner)
{
    List_Level *level = Open_Level();
    if (!level)
        return;
    level->left = inner.para.left;
    level->first = inner.para.first;
    level->text.truncate(64);
    if (level->kind != Bullet_Kind || level->text.size() < 2 || inner.chr.font < 0)
        return;
    const Font &font = m_model.fonts[static_cast<std::size_t>(inner.chr.font)];
    const char16_t sign = level->text[1].unicode();
    if ((sign & 0xFF00) == 0xF000 || (sign < 0x100 && font.codePage == Symbol_Code_Page))
        level->text[1] = QChar(Symbol_Glyph(static_cast<unsigned char>(sign & 0xFF), font.name));
}

void List_Reader::Add_Level_Text(QStringView text)
{
    if (List_Level *level = Open_Level())
        level->text += text;
}

void List_Reader::Level_Kind()
{
    if (List_Level *level = Open_Level())
        level->kind = m_parameter.number;
}

void List_Reader::Level_Start()
{
    if (List_Level *level = Open_Level())
        level->start = std::clamp(m_parameter.number, 0, 32'767);
}

void List_Reader::List_Id()
{
    if (m_inOverride) {
        m_overrideId = m_parameter.number;
    } else if (!m_model.lists.empty()) {
        m_model.lists.back().id = m_parameter.number;
        m_listOfId.insert(m_parameter.number, static_cast<int>(m_model.lists.size()) - 1);
    }
}

void List_Reader::Begin_Override()
{
    m_inOverride = true;
    m_overrideId = 0;
    m_overrideNumber = 0;
    m_overrideLevels.clear();
    m_state.closer = Closer::Override;
}

/// The levels that an override tells of come in order, each beginning as the list has it.
void List_Reader::Begin_Override_Level()
{
    const auto list = m_listOfId.constFind(m_overrideId);
    if (!m_inOverride || list == m_listOfId.constEnd())
        return;
    const auto &levels = m_model.lists[static_cast<std::size_t>(*list)].levels;
    if (m_overrideLevels.size() < levels.size())
        m_overrideLevels.push_back(levels[m_overrideLevels.size()]);
}

void List_Reader::End_Override()
{
    m_inOverride = false;
    const auto list = m_listOfId.constFind(m_overrideId);
    if (list == m_listOfId.constEnd())
        return;
    int index = *list;
    if (!m_overrideLevels.empty()) {
        List_Definition changed = m_model.lists[static_cast<std::size_t>(index)];
        std::copy(m_overrideLevels.begin(), m_overrideLevels.end(), changed.levels.begin());
        index = static_cast<int>(m_model.lists.size());
        m_model.lists.push_back(std::move(changed));
    }
    m_model.listOfNumber.insert(m_overrideNumber, index);
}

void List_Reader::Number()
{
    if (m_inOverride)
        m_overrideNumber = m_parameter.number;
    else
        m_state.para.list = m_parameter.number;
}

void List_Reader::Begin_Old_List()
{
    m_oldList = {};
    m_oldListContinues = true;
    m_state.destination = Destination::Nothing;
    m_state.closer = Closer::Old_List;
}

void List_Reader::Old_List_Kind(int kind)
{
    m_oldList.kind = kind;
    m_oldListContinues = kind >= 0;
}

/// Beyond the nine levels stand lists without any and bullets.
void List_Reader::Old_List_Level()
{
    m_oldList.kind = m_parameter.number == 11 ? Bullet_Kind : 0;
    m_oldList.level =
        m_parameter.number >= 1 && m_parameter.number <= static_cast<int>(mostLevels) ? m_parameter.number - 1 : 0;
}

void List_Reader::End_Old_List()
{
    if (!m_oldListContinues) {
        m_state.para.oldList = Goes_On;
        return;
    }
    std::vector<Old_List> &known = m_model.oldLists;
    const auto near = known.rbegin() + std::min<std::ptrdiff_t>(std::ssize(known), mostLevels);
    const auto same = std::find(known.rbegin(), near, m_oldList); // of the levels around it
    m_state.para.oldList = static_cast<int>(same != near ? known.rend() - same : std::ssize(known) + 1) - 1;
    if (same == near)
        known.push_back(m_oldList);
}
} // namespace Rtf

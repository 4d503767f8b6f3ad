// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// The tables of lists and of their overrides, to which paragraphs refer by number, and the older lists that each of
/// their paragraphs tells of.
class List_Reader : public Reader_Part
{
public:
    using Reader_Part::Reader_Part;

    void Begin_List() { m_model.lists.push_back({}); }
    void Begin_Level();
    /// @param inner  the state of the level's group
    void End_Level(const State &inner);
    void Add_Level_Text(QStringView text);
    void Level_Kind();
    void Level_Start();
    void List_Id();
    void Begin_Override();
    void Begin_Override_Level();
    void End_Override();

    void Number();
    void Depth() { m_state.para.level = std::clamp(m_parameter.number, 0, 8); }

    void Begin_Old_List();
    void Old_List_Kind(int kind);
    void Old_List_Start() { m_oldList.start = std::clamp(m_parameter.number, 0, 32'767); }
    void Old_List_Level();
    void Add_Text_Before(QStringView text) { m_oldList.before += text; }
    void Add_Text_After(QStringView text) { m_oldList.after += text; }
    void End_Old_List();

private:
    List_Level *Open_Level();

    QHash<int, int> m_listOfId;
    int m_overrideId = 0;
    int m_overrideNumber = 0;
    bool m_inOverride = false;
    std::vector<List_Level> m_overrideLevels;
    Old_List m_oldList;
    bool m_oldListContinues = false;
};
} // namespace Rtf

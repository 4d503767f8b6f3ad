// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// What is beside the body: headers and footers, the page's measures, what the document says of itself.
class Page_Parts : public Reader_Part
{
public:
    Page_Parts(Reading &reading, Text_Flow &flow) : Reader_Part(reading), m_flow(flow) {}

    void Begin_Page_Text(int kind);
    void Add_Page_Text(QStringView text);
    void Add_Mark(char16_t mark) { m_model.pageTexts[m_pageText] += QChar(mark); }
    void Page_Number();
    /// The row of a table is a line of its cells with tabs between them.
    void End_Row();

    void Info_Field(int field);
    void Add_Info(QStringView text) { m_model.info[m_info] += text; }
    void Page_Measure(int index);

private:
    Text_Flow &m_flow;
    int m_pageText = 0;     ///< the kind of header or footer that is read
    std::size_t m_info = 0; ///< the field of the document's information likewise
};
} // namespace Rtf

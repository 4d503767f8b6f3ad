// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_page_parts.h"

#include "platform/richtext/rtf_page_texts.h"

namespace Rtf
{
/// Of several sections the first one's counts.
void Page_Parts::Begin_Page_Text(int kind)
{
    m_model.pageTexts.resize(std::size(Page_Text_Words));
    if (m_state.destination != Destination::Body || !m_model.pageTexts[kind].isEmpty())
        return m_flow.Skip();
    m_state.destination = Destination::Page_Text;
    m_pageText = kind;
}

void Page_Parts::Add_Page_Text(QStringView text)
{
    m_model.pageTexts[m_pageText] += Page_Text(text, m_state.Is_Hidden());
}

void Page_Parts::Page_Number()
{
    if (m_state.destination == Destination::Page_Text)
        Add_Mark(Page_Number_Mark);
}

void Page_Parts::End_Row()
{
    QString &text = m_model.pageTexts[m_pageText];
    if (text.endsWith(u'\t'))
        text.chop(1);
    m_flow.Emit(u"\n");
}

void Page_Parts::Info_Field(int field)
{
    if (m_state.destination != Destination::Info)
        return;
    m_state.destination = Destination::Info_Text;
    m_info = static_cast<std::size_t>(field);
}

void Page_Parts::Page_Measure(int index)
{
    int &measure = m_model.pageMeasures[static_cast<std::size_t>(index)];
    if (measure == Not_Set && m_state.destination == Destination::Body)
        measure = m_parameter.isGiven ? m_parameter.Length() : 1;
}
} // namespace Rtf

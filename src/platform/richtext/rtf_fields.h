// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_page_parts.h"
#include "platform/richtext/rtf_state.h"

namespace Rtf
{
/// Fields: links become links, SYMBOL a sign, page numbers of a header their marks, and any other shows its result.
class Field_Reader : public Reader_Part
{
public:
    Field_Reader(Reading &reading, Text_Flow &flow, Page_Parts &page) : Reader_Part(reading), m_flow(flow), m_page(page)
    {
    }

    void Begin_Field();
    void Add_Instruction(QStringView text);
    void Field_Result();
    /// @param inner  the state of the field's group
    void End_Field(const State &inner);

private:
    struct Field {
        QString instruction; ///< empty once the link is known
        int link = -1;
        Destination outside = Destination::Body;
    };

    int Link_Of(const QString &instruction);

    Text_Flow &m_flow;
    Page_Parts &m_page;
    std::vector<Field> m_fields;
    QHash<QString, int> m_links;
};
} // namespace Rtf

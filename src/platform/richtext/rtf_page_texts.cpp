// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_page_texts.h"

#include "platform/richtext/rtf_model.h"
#include "platform/richtext/rtf_writer.h"

#include <algorithm>
#include <iterator>

namespace
{
struct Page_Field {
    char16_t mark;
    const char *name;
};

constexpr Page_Field Page_Fields[] = {{Rtf::Page_Number_Mark, "PAGE"}, {Rtf::Page_Count_Mark, "NUMPAGES"}};

void Append_Text(QByteArray &out, QStringView text)
{
    for (const QChar c : text) {
        const auto *field = std::find_if(std::begin(Page_Fields), std::end(Page_Fields),
                                         [c](const Page_Field &one) { return c == one.mark; });
        if (field != std::end(Page_Fields))
            out += QByteArray("{\\field{\\*\\fldinst ") + field->name + "}{\\fldrslt 1}}";
        else if (c == u'\n')
            out += "\\par ";
        else if (c == Rtf::Hidden_Begin_Mark)
            out += "{\\v ";
        else if (c == Rtf::Hidden_End_Mark)
            out += '}';
        else
            Rtf::Append_Escaped(out, QStringView(&c, 1));
    }
}
} // namespace

QString Rtf::Page_Text(QStringView text, bool isHidden)
{
    QString kept;
    std::copy_if(text.begin(), text.end(), std::back_inserter(kept),
                 [](QChar c) { return c >= u' ' || c == u'\t' || c == u'\n'; });
    return isHidden ? QChar(Hidden_Begin_Mark) + kept + QChar(Hidden_End_Mark) : kept;
}

char16_t Rtf::Page_Mark_Of(const QString &instruction)
{
    const QString word = instruction.trimmed().section(QLatin1Char(' '), 0, 0).toUpper();
    for (const Page_Field &field : Page_Fields) {
        if (word == QLatin1String(field.name))
            return field.mark;
    }
    return 0;
}

QByteArray Rtf::Head_Of(const Model &model)
{
    QByteArray info, page;
    for (std::size_t i = 0; i < model.info.size(); ++i) {
        if (model.info[i].isEmpty())
            continue;
        info += QByteArray("{\\") + Info_Words[i] + ' ';
        Append_Escaped(info, model.info[i]);
        info += '}';
    }
    for (std::size_t i = 0; i < model.pageMeasures.size(); ++i) {
        if (model.pageMeasures[i] == Not_Set)
            continue;
        page += QByteArray("\\") + Page_Measure_Words[i];
        if (i != Landscape_Measure)
            page += QByteArray::number(model.pageMeasures[i]);
    }
    return (info.isEmpty() ? info : "{\\info" + info + "}\r\n") + (page.isEmpty() ? page : page + "\r\n");
}

QByteArray Rtf::Write_Page_Texts(const QStringList &texts)
{
    QByteArray groups;
    bool facing = false, first = false;
    for (qsizetype i = 0; i < texts.size() && i < qsizetype(std::size(Page_Text_Words)); ++i) {
        if (texts[i].isEmpty())
            continue;
        const QByteArray word(Page_Text_Words[i]);
        facing = facing || word.endsWith("rl") || word.endsWith("rr");
        first = first || word.endsWith("rf");
        groups += "{\\" + word + "\\pard\\plain ";
        Append_Text(groups, texts[i]);
        groups += "\\par}\r\n";
    }
    return (facing ? "\\facingp" : "") + QByteArray(first ? "\\sectd\\titlepg" : "") + groups;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/rtf_formats.h"
#include "platform/richtext/rtf_writer.h"

#include <QTextBlock>
#include <QTextList>

#include <algorithm>

namespace Rtf
{
namespace
{
constexpr int listLevels = 9;
constexpr qsizetype longestText = 80;

void Append_Byte(QByteArray &out, qsizetype value)
{
    out += "\\'" + QByteArray::number(value, 16).rightJustified(2, '0');
}

bool Is_Family(const QTextListFormat &format)
{
    return format.hasProperty(Rich_Text::List_Family);
}

int Level_Of(const QTextListFormat &format)
{
    const int level = Is_Family(format) ? format.intProperty(Rich_Text::List_Level) : format.indent() - 1;
    return std::clamp(level, 0, listLevels - 1);
}

/// The template and the places of the numbers in it, which the levels of a family share.
void Append_Text(QByteArray &out, QStringView text)
{
    QByteArray places;
    out += "{\\leveltext";
    Append_Byte(out, text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].unicode() < listLevels) {
            Append_Byte(out, text[i].unicode());
            Append_Byte(places, i + 1);
        } else {
            Append_Escaped(out, text.sliced(i, 1));
        }
    }
    out += ";}{\\levelnumbers" + places + ";}";
}

/// @param left where the text of its items begins
void Append_Level(QByteArray &out, const QTextListFormat &format, int level, int left)
{
    Rich_Text::Label_Rule rule = Rich_Text::Rule_Of(format);
    rule.text.truncate(longestText);
    if (!Is_Family(format) && rule.kind != Rich_Text::Bullet_Kind)
        rule.text.replace(QChar(0), QChar(level));
    out += "{\\listlevel";
    Append_Word(out, "\\levelnfc", rule.kind);
    Append_Word(out, "\\levelnfcn", rule.kind);
    Append_Word(out, "\\leveljc0\\leveljcn0\\levelfollow0\\levelstartat", rule.start);
    out += "\\levelspace0\\levelindent0";
    Append_Text(out, rule.text);
    Append_Word(out, "\\fi", First_Of(format));
    Append_Word(out, "\\li", left);
    out += '}';
}
} // namespace

int List_Tables::New_Number()
{
    m_lists.push_back({});
    return static_cast<int>(m_lists.size());
}

List_Tables::Place List_Tables::Place_Of(const QTextList &list)
{
    const QTextListFormat format = list.format();
    const int level = Level_Of(format);
    const auto slot = static_cast<std::size_t>(level);
    int &number = Is_Family(format) ? m_families[format.intProperty(Rich_Text::List_Family)] : m_numbers[&list];
    if (number == 0)
        number = New_Number();
    Written_List *written = &m_lists[static_cast<std::size_t>(number) - 1];
    const auto isOther = [&](const QTextList *before) {
        return before && before != &list;
    };
    if (isOther(written->open[slot]) || (isOther(written->levels[slot]) && written->levels[slot]->format() != format)) {
        number = New_Number();
        written = &m_lists.back();
    }
    written->levels[slot] = written->open[slot] = &list;
    std::fill(written->open.begin() + level + 1, written->open.end(), nullptr);
    return {number, level};
}

QByteArray List_Tables::Bytes() const
{
    if (m_lists.empty())
        return {};
    QByteArray lists = "{\\*\\listtable", overrides = "{\\*\\listoverridetable";
    for (std::size_t i = 0; i < m_lists.size(); ++i) {
        const auto &levels = m_lists[i].levels;
        const QTextList *any = *std::find_if(levels.begin(), levels.end(), [](const QTextList *list) { return list; });
        const int id = static_cast<int>(i) + 1;
        Append_Word(lists, "{\\list\\listtemplateid", id);
        for (std::size_t level = 0; level < levels.size(); ++level) {
            const QTextListFormat plain;
            const bool isPlain = !levels[level] && Is_Family(any->format());
            Append_Level(lists,
                         levels[level] ? levels[level]->format()
                         : isPlain     ? plain
                                       : any->format(),
                         static_cast<int>(level),
                         levels[level] ? Left_Of(levels[level]->item(0))
                                       : Twips_Per_List_Indent * (static_cast<int>(level) + 1));
        }
        Append_Word(lists, "{\\listname ;}\\listid", id);
        lists += "}\r\n";
        Append_Word(overrides, "{\\listoverride\\listid", id);
        Append_Word(overrides, "\\listoverridecount0\\ls", id);
        overrides += '}';
    }
    return lists + "}\r\n" + overrides + "}\r\n";
}
} // namespace Rtf

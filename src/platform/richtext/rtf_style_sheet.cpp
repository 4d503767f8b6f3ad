// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_style_sheet.h"

#include "platform/richtext/rtf_words.h"

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t mostStyleWords = 256;
constexpr qsizetype longestName = 32; // of interest

qint64 Style_Key(int number, bool isCharacter)
{
    return (static_cast<qint64>(number) << 1) | (isCharacter ? 1 : 0);
}
} // namespace

void Style_Sheet::Begin_Style(bool isCharacter)
{
    m_style = {.words = {}, .name = {}, .number = m_parameter.number, .base = -1, .isCharacter = isCharacter};
    m_state.closer = Closer::Style;
}

void Style_Sheet::Based_On()
{
    if (m_state.destination == Destination::Style_Sheet)
        m_style.base = m_parameter.number;
}

void Style_Sheet::Add_Name(QStringView text)
{
    if (m_style.name.size() < longestName)
        m_style.name += text;
}

/// Word processors know headings by these names, whether the style tells of its outline level or not.
void Style_Sheet::Name_Heading()
{
    static const QString heading = QStringLiteral("heading ");
    const QString name = m_style.name.trimmed();
    if (!name.startsWith(heading, Qt::CaseInsensitive) || m_style.isCharacter)
        return;
    const int level = name.sliced(heading.size()).chopped(name.endsWith(u';') ? 1 : 0).toInt();
    if (level > 0)
        m_style.words.insert(m_style.words.begin(), {Find_Word("outlinelevel"), {level - 1, true}});
}

void Style_Sheet::End_Style()
{
    Name_Heading();
    m_style.words.resize(std::min(m_style.words.size(), mostStyleWords));
    Style &kept = m_styles[Style_Key(m_style.number, m_style.isCharacter)];
    kept = std::exchange(m_style, {});
}

std::size_t Style_Sheet::Chain_Of(int number, bool isCharacter, Chain &chain) const
{
    std::size_t length = 0, words = 0;
    for (int next = number; next >= 0 && length < chain.size(); ++length) {
        const auto style = m_styles.constFind(Style_Key(next, isCharacter));
        if (style == m_styles.constEnd() || (words += style->words.size()) > mostStyleWords)
            break;
        chain[length] = &*style;
        next = style->base;
    }
    return length;
}
} // namespace Rtf

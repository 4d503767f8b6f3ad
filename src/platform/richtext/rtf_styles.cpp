// SPDX-License-Identifier: GPL-3.0-or-later
// The style sheet, and what the style of a text or paragraph sets.
#include "platform/richtext/rtf_reader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Rtf
{
namespace
{
constexpr std::size_t mostStyleWords = 256;
constexpr std::size_t mostBases = 32; // of one style, each based on the next

qint64 Style_Key(int number, bool isCharacter)
{
    return (static_cast<qint64>(number) << 1) | (isCharacter ? 1 : 0);
}
} // namespace

void Reader::Style_Number(int isCharacter)
{
    if (m_state.destination != Destination::Style_Sheet)
        return Apply_Style(m_parameter, isCharacter != 0);
    m_style = {.words = {}, .name = {}, .number = m_parameter, .base = -1, .isCharacter = isCharacter != 0};
    m_state.closer = Closer::Style;
}

void Reader::Based_On(int)
{
    if (m_state.destination == Destination::Style_Sheet)
        m_style.base = m_parameter;
}

/// Word processors know headings by these names, whether the style tells of its outline level or not.
void Reader::Name_Heading()
{
    static const QString heading = QStringLiteral("heading ");
    const QString name = m_style.name.trimmed();
    if (!name.startsWith(heading, Qt::CaseInsensitive) || m_style.isCharacter)
        return;
    const int level = name.sliced(heading.size()).chopped(name.endsWith(u';') ? 1 : 0).toInt();
    if (level > 0)
        m_style.words.insert(m_style.words.begin(), {Find_Word("outlinelevel"), level - 1, true});
}

void Reader::End_Style()
{
    Name_Heading();
    m_style.words.resize(std::min(m_style.words.size(), mostStyleWords));
    Style &kept = m_styles[Style_Key(m_style.number, m_style.isCharacter)];
    kept = std::exchange(m_style, {});
}

void Reader::Apply_Style(int number, bool isCharacter)
{
    if (m_state.destination != Destination::Body)
        return;
    std::array<const Style *, mostBases> chain{};
    std::size_t length = 0, words = 0;
    for (int next = number; next >= 0 && length < chain.size(); ++length) {
        const auto style = m_styles.constFind(Style_Key(next, isCharacter));
        if (style == m_styles.constEnd() || (words += style->words.size()) > mostStyleWords)
            break;
        chain[length] = &*style;
        next = style->base;
    }
    while (length > 0) {
        for (const Style_Word &word : chain[--length]->words) {
            m_parameter = word.parameter;
            m_hasParameter = word.hasParameter;
            (this->*word.row->action)(word.row->value);
        }
    }
}
} // namespace Rtf

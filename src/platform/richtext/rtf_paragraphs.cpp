// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_paragraphs.h"

#include "platform/richtext/kept_properties.h"

#include <QHashFunctions>

#include <algorithm>
#include <utility>

namespace Rtf
{
namespace
{
constexpr qsizetype mostTabsOfStyles = 1 << 18;
constexpr qsizetype farthestBlank = 1000; // for a cut, beyond the longest block

/// The rest of a paragraph has no beginning: no label, and nothing between it and what it belongs to.
void Make_Rest(Para_Style &style)
{
    style.isRest = true;
    style.list = 0;
    style.oldList = Goes_On;
    style.first = 0;
    style.before = 0;
    style.pageBreakBefore = false;
}
} // namespace

size_t qHash(const Char_Style &style, size_t seed)
{
    return qHashMulti(seed, style.font, style.halfPoints, style.color, style.back, style.underlineColor, style.link,
                      style.anchor, style.note, style.spacing, style.stretchPercent, style.flags,
                      static_cast<int>(style.underline), static_cast<int>(style.script));
}

size_t qHash(const Tab_Stop &tab, size_t seed)
{
    return qHashMulti(seed, tab.position, static_cast<int>(tab.kind), static_cast<int>(tab.leader));
}

QStringView Paragraph_Maker::Add_Text(QStringView text, const Char_Style &style)
{
    const qsizetype room = style.flags & Out_Of_Sight ? text.size() : Room_Left(text);
    if (room > 0) {
        Open_Run(style);
        Append(text.first(room));
    }
    return text.sliced(room);
}

bool Paragraph_Maker::Is_Full()
{
    Close_Run();
    return m_content.length >= Rich_Text::Longest_Block + farthestBlank;
}

void Paragraph_Maker::Add_Picture(Picture &&picture, const Char_Style &style)
{
    Close_Run();
    m_content.runs.push_back({.begin = m_model.text.size(),
                              .length = 0,
                              .style = Interned(style),
                              .picture = static_cast<int>(m_model.pictures.size())});
    ++m_content.length;
    m_model.pictures.push_back(std::move(picture));
}

int Paragraph_Maker::End(Para_Style style, const Char_Style &mark)
{
    return Add_Paragraph(std::move(style), Anchored(mark));
}

int Paragraph_Maker::Cut(Para_Style style, const Char_Style &mark)
{
    const int nesting = style.nesting;
    const int index = Add_Paragraph(std::move(style), mark);
    m_content.restIn = nesting;
    return index;
}

int Paragraph_Maker::Add_Paragraph(Para_Style &&style, const Char_Style &mark)
{
    Close_Run();
    if (m_content.restIn == style.nesting)
        Make_Rest(style);
    const std::vector<Run> &runs = m_content.runs;
    m_model.paragraphs.push_back({.firstRun = static_cast<int>(m_model.runs.size()),
                                  .runCount = static_cast<int>(runs.size()),
                                  .style = Interned(std::move(style)),
                                  .markStyle = Interned(mark)});
    m_model.runs.insert(m_model.runs.end(), runs.begin(), runs.end());
    m_content.runs.clear();
    m_content.length = 0;
    m_content.restIn = -1;
    return static_cast<int>(m_model.paragraphs.size()) - 1;
}

void Paragraph_Maker::Begin_Inner()
{
    Close_Run();
    m_outer.push_back(std::exchange(m_content, {}));
}

void Paragraph_Maker::End_Inner()
{
    m_content = std::move(m_outer.back());
    m_outer.pop_back();
}

/// How much of the text the paragraph takes before it is cut, at a blank if there is one.
qsizetype Paragraph_Maker::Room_Left(QStringView text) const
{
    const bool isOpenInSight = m_runOpen && (m_runStyle.flags & Out_Of_Sight) == 0;
    const qsizetype length = m_content.length + (isOpenInSight ? m_model.text.size() - m_runBegin : m_runOpen ? 1 : 0);
    const qsizetype room = std::max<qsizetype>(0, Rich_Text::Longest_Block - length);
    if (room >= text.size())
        return text.size();
    if (length > Rich_Text::Longest_Block && m_model.text.endsWith(u' '))
        return 0;
    const qsizetype most = Rich_Text::Longest_Block + farthestBlank - length;
    const qsizetype blank = text.first(std::clamp<qsizetype>(most, 0, text.size())).indexOf(u' ', room);
    if (blank >= 0)
        return blank + 1;
    if (most > text.size() || m_highSurrogate != 0)
        return text.size();
    return std::max<qsizetype>(0, most - (most > 0 && text[most - 1].isHighSurrogate() ? 1 : 0));
}

void Paragraph_Maker::Append(QStringView text)
{
    const bool plain = !m_highSurrogate && std::none_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() < 0x20 || c.unicode() >= 0xD800 || c.unicode() == 0x2029;
    });
    if (plain) {
        m_model.text.append(text);
        return;
    }
    for (const QChar c : text)
        Append(c.unicode());
}

void Paragraph_Maker::Append(char16_t unit)
{
    QString &text = m_model.text;
    if (const char16_t high = std::exchange(m_highSurrogate, u'\0')) {
        text += QChar(QChar::isLowSurrogate(unit) ? high : u'\uFFFD');
        if (QChar::isLowSurrogate(unit)) {
            text += QChar(unit);
            return;
        }
    }
    if (unit < 0x20) {
        if (unit == u'\t' || (unit == u'\n' && m_runStyle.flags & Out_Of_Sight))
            text += QChar(unit);
    } else if (QChar::isHighSurrogate(unit)) {
        m_highSurrogate = unit;
    } else if (unit == 0x2029) {
        text += QChar(0x2028);
    } else { // QTextDocument gives U+FFFC, U+FDD0 and U+FDD1 a meaning of their own
        const bool unusable = QChar::isLowSurrogate(unit) || unit == 0xFFFC || unit == 0xFDD0 || unit == 0xFDD1;
        text += QChar(unusable ? u'\uFFFD' : unit);
    }
}

/// The first text behind a bookmark is its place.
Char_Style Paragraph_Maker::Anchored(Char_Style style)
{
    if (m_anchors.isEmpty())
        return style;
    style.anchor = static_cast<int>(m_model.anchors.size());
    m_model.anchors.push_back(std::exchange(m_anchors, {}));
    return style;
}

void Paragraph_Maker::Open_Run(Char_Style style)
{
    if (m_runOpen && m_anchors.isEmpty()) {
        style.anchor = m_runStyle.anchor; // it is the whole run's
        if (m_runStyle == style)
            return;
        style.anchor = -1;
    }
    Close_Run();
    m_runOpen = true;
    m_runStyle = Anchored(style);
    m_runBegin = m_model.text.size();
}

void Paragraph_Maker::Close_Run()
{
    if (!m_runOpen)
        return;
    m_runOpen = false;
    if (std::exchange(m_highSurrogate, u'\0'))
        m_model.text += u'\uFFFD';
    const qsizetype length = m_model.text.size() - m_runBegin;
    if (length == 0)
        return;
    m_content.runs.push_back({.begin = m_runBegin, .length = length, .style = Interned(m_runStyle)});
    m_content.length += m_runStyle.flags & Out_Of_Sight ? 1 : length;
}

bool Paragraph_Maker::Has_Content() const
{
    return (m_runOpen && m_model.text.size() > m_runBegin) || !m_content.runs.empty();
}

int Paragraph_Maker::Interned(const Char_Style &style)
{
    if (!m_model.charStyles.empty() && m_model.charStyles.back() == style)
        return static_cast<int>(m_model.charStyles.size()) - 1;
    const auto known = m_charStyles.constFind(style);
    if (known != m_charStyles.constEnd())
        return *known;
    const int index = static_cast<int>(m_model.charStyles.size());
    m_model.charStyles.push_back(style);
    m_charStyles.insert(style, index);
    return index;
}

int Paragraph_Maker::Interned(Para_Style style)
{
    if (m_paraStyle >= 0 && m_model.paraStyles[static_cast<std::size_t>(m_paraStyle)] == style)
        return m_paraStyle;
    const size_t key =
        qHashMulti(qHashRange(style.tabs.begin(), style.tabs.end()), style.left, style.right, style.first, style.before,
                   style.after, style.line, style.back, style.list, style.level, style.oldList, style.outline,
                   style.nesting, static_cast<int>(style.align), style.pageBreakBefore, style.isRest);
    QList<int> &same = m_paraStyles[key];
    for (const int index : std::as_const(same)) {
        if (m_model.paraStyles[static_cast<std::size_t>(index)] == style)
            return m_paraStyle = index;
    }
    m_tabCount += style.tabs.size();
    if (m_tabCount > mostTabsOfStyles)
        style.tabs.clear();
    m_paraStyle = static_cast<int>(m_model.paraStyles.size());
    m_model.paraStyles.push_back(std::move(style));
    if (same.size() < 16) // what differs in the rest only is not worth a longer search
        same.append(m_paraStyle);
    return m_paraStyle;
}
} // namespace Rtf

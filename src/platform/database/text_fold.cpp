// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/text_fold.h"

#include <QChar>
#include <QList>
#include <algorithm>
#include <cstring>

namespace Text_Fold
{
namespace
{
constexpr char32_t First_Beyond_Ascii = 0x80;

std::vector<char32_t> Code_Points(const QString &text)
{
    std::vector<char32_t> points;
    for (const uint c : text.toUcs4()) {
        points.push_back(c);
    }
    return points;
}

/// The bit that tells an upper case ASCII letter from a lower case one.
constexpr char Case_Bit = 0x20;
/// Bytes compared at once, a whole number of any processor's vectors.
constexpr size_t Block = 64;

/// How common a folded byte is in texts: the higher, the more.
int Commonness(char c)
{
    constexpr std::string_view letters = "zqxjkvbpygfwmucldrhsnioate"; // the rarest first
    const auto byte = static_cast<unsigned char>(c);
    if (byte >= First_Beyond_Ascii) {
        return byte >= 0xC0U ? 200 : 50; // a lead byte begins many characters
    }
    const size_t letter = letters.find(c);
    return letter != std::string_view::npos ? 20 + 5 * static_cast<int>(letter) : c == ' ' ? 190 : 30;
}

/// No character differs from this one in case only, in either direction.
bool Is_Caseless(char32_t c)
{
    if (c < First_Beyond_Ascii) {
        return !((c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'));
    }
    switch (QChar::category(c)) {
    case QChar::Letter_Other:
    case QChar::Number_DecimalDigit:
    case QChar::Separator_Space:
    case QChar::Punctuation_Other:
    case QChar::Punctuation_Open:
    case QChar::Punctuation_Close:
    case QChar::Punctuation_Dash:
        return true;
    default:
        return false;
    }
}
} // namespace

char32_t Fold(char32_t c)
{
    if (c < First_Beyond_Ascii) {
        return c >= U'A' && c <= U'Z' ? c + (U'a' - U'A') : c;
    }
    const char32_t lower = QChar::toLower(c);
    return lower < First_Beyond_Ascii ? c : lower;
}

QString Folded(const QString &text)
{
    std::vector<char32_t> points = Code_Points(text);
    std::transform(points.begin(), points.end(), points.begin(), Fold);
    return QString::fromUcs4(points.data(), static_cast<qsizetype>(points.size()));
}

bool Is_Ascii(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return c.unicode() != 0 && c.unicode() < First_Beyond_Ascii; });
}

char32_t Next_Code_Point(std::string_view text, size_t &at)
{
    const auto byte = [&](size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const unsigned char first = byte(at++);
    if (first < First_Beyond_Ascii) {
        return first;
    }
    const size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC0 ? 1 : 0;
    if (more == 0 || at + more > text.size()) {
        return first;
    }
    char32_t c = first & (0x3FU >> more);
    for (size_t i = 0; i < more; ++i) {
        if ((byte(at + i) & 0xC0U) != 0x80U) {
            return first;
        }
        c = (c << 6U) | (byte(at + i) & 0x3FU);
    }
    at += more;
    return c;
}

int Compare(std::string_view a, std::string_view b)
{
    // Sorts and groupings live here, and nearly all that they compare is ASCII.
    const size_t both = std::min(a.size(), b.size());
    size_t i = 0;
    for (; i < both; ++i) {
        const auto x = static_cast<unsigned char>(a[i]);
        const auto y = static_cast<unsigned char>(b[i]);
        if (x >= First_Beyond_Ascii || y >= First_Beyond_Ascii) {
            break;
        }
        if (x != y && Fold(x) != Fold(y)) {
            return Fold(x) < Fold(y) ? -1 : 1;
        }
    }
    size_t j = i;
    while (i < a.size() && j < b.size()) {
        const char32_t x = Fold(Next_Code_Point(a, i));
        const char32_t y = Fold(Next_Code_Point(b, j));
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return static_cast<int>(i < a.size()) - static_cast<int>(j < b.size());
}

qsizetype Utf16_Length(std::string_view text)
{
    qsizetype units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        units += (byte & 0xC0U) != 0x80U ? 1 : 0;
        units += byte >= 0xF0U ? 1 : 0;
    }
    return units;
}

Needle::Needle(const QString &text) : m_bytes(Folded(text).toUtf8()), m_points(Code_Points(Folded(text)))
{
    m_bytewise = std::all_of(m_points.begin(), m_points.end(),
                             [](char32_t c) { return c < First_Beyond_Ascii || Is_Caseless(c); });
    for (const char c : m_bytes) {
        m_masks += c >= 'a' && c <= 'z' ? Case_Bit : '\0';
    }
    Choose_Rare_Bytes();
}

void Needle::Choose_Rare_Bytes()
{
    const auto rarer = [this](size_t a, size_t b) {
        return Commonness(m_bytes[static_cast<qsizetype>(a)]) < Commonness(m_bytes[static_cast<qsizetype>(b)]);
    };
    const auto size = static_cast<size_t>(m_bytes.size());
    for (size_t i = 1; i < size; ++i) {
        m_rarest = rarer(i, m_rarest) ? i : m_rarest;
    }
    m_rare = m_rarest == 0 && size > 1 ? 1 : 0;
    for (size_t i = 0; i < size; ++i) {
        m_rare = i != m_rarest && rarer(i, m_rare) ? i : m_rare;
    }
}

size_t Needle::Find(std::string_view hay, size_t from) const
{
    if (m_bytes.isEmpty()) {
        return from <= hay.size() ? from : std::string_view::npos;
    }
    if (m_bytewise) {
        return Find_Bytes(hay, from);
    }
    for (size_t at = from; at < hay.size();) {
        if (Matches_At(hay, at)) {
            return at;
        }
        Next_Code_Point(hay, at);
    }
    return std::string_view::npos;
}

/// Looks for two rare bytes at their distance, a block of places at once, and compares the rest where both stand.
size_t Needle::Find_Bytes(std::string_view hay, size_t from) const
{
    const auto size = static_cast<size_t>(m_bytes.size());
    if (hay.size() < size) {
        return std::string_view::npos;
    }
    const size_t end = hay.size() - size + 1; // behind the last place where it can begin
    const auto at = [](const QByteArray &bytes, size_t place) {
        return static_cast<unsigned char>(bytes[static_cast<qsizetype>(place)]);
    };
    const unsigned char byteA = at(m_bytes, m_rarest);
    const unsigned char byteB = at(m_bytes, m_rare);
    const unsigned char maskA = at(m_masks, m_rarest);
    const unsigned char maskB = at(m_masks, m_rare);
    size_t place = from;
    for (; place + Block <= end; place += Block) {
        const auto *a = reinterpret_cast<const unsigned char *>(hay.data()) + place + m_rarest;
        const auto *b = reinterpret_cast<const unsigned char *>(hay.data()) + place + m_rare;
        unsigned char hits = 0;
        for (size_t i = 0; i < Block; ++i) {
            const bool hit = ((a[i] | maskA) == byteA) & ((b[i] | maskB) == byteB);
            hits = static_cast<unsigned char>(hits | static_cast<unsigned char>(hit));
        }
        for (size_t i = 0; hits != 0 && i < Block; ++i) {
            if ((a[i] | maskA) == byteA && Bytes_At(hay.data() + place + i)) {
                return place + i;
            }
        }
    }
    for (; place < end; ++place) {
        if (Bytes_At(hay.data() + place)) {
            return place;
        }
    }
    return std::string_view::npos;
}

bool Needle::Bytes_At(const char *place) const
{
    const char *bytes = m_bytes.constData();
    const char *masks = m_masks.constData();
    for (qsizetype i = 0; i < m_bytes.size(); ++i) {
        if ((place[i] | masks[i]) != bytes[i]) {
            return false;
        }
    }
    return true;
}

bool Needle::Matches_At(std::string_view hay, size_t at) const
{
    for (const char32_t point : m_points) {
        if (at >= hay.size() || Fold(Next_Code_Point(hay, at)) != point) {
            return false;
        }
    }
    return true;
}

Pattern::Pattern(const QString &text)
{
    const std::vector<char32_t> points = Code_Points(text);
    for (size_t at = 0; at < points.size();) {
        const char32_t c = points[at];
        if (c == U'[') {
            const size_t end = Read_Set(points, at);
            if (end != at) {
                at = end;
                continue;
            }
        }
        ++at;
        Element element;
        element.kind = c == U'%' ? Element::Kind::Any_Run : c == U'_' ? Element::Kind::Any_One : Element::Kind::One;
        element.point = Fold(c);
        m_elements.push_back(std::move(element));
    }
    const auto isRun = [](const Element &e) {
        return e.kind == Element::Kind::Any_Run;
    };
    m_contains = m_elements.size() >= 2 && isRun(m_elements.front()) && isRun(m_elements.back()) &&
                 std::all_of(m_elements.begin() + 1, m_elements.end() - 1,
                             [](const Element &e) { return e.kind == Element::Kind::One; });
    if (m_contains) {
        m_middle = Needle(text.mid(1, text.size() - 2));
    }
}

/// Reads "[...]" at `at` and returns the place behind it, or `at` when no bracket closes it.
size_t Pattern::Read_Set(const std::vector<char32_t> &points, size_t at)
{
    Element set;
    set.kind = Element::Kind::Set;
    size_t i = at + 1;
    if (i < points.size() && (points[i] == U'!' || points[i] == U'^')) {
        set.negated = true;
        ++i;
    }
    while (i < points.size() && points[i] != U']') {
        const bool range = i + 2 < points.size() && points[i + 1] == U'-' && points[i + 2] != U']';
        set.ranges.emplace_back(Fold(points[i]), Fold(points[range ? i + 2 : i]));
        i += range ? 3 : 1;
    }
    if (i >= points.size()) {
        return at;
    }
    if (!set.ranges.empty()) {
        m_elements.push_back(std::move(set));
    }
    return i + 1;
}

bool Pattern::Accepts(const Element &element, char32_t point)
{
    switch (element.kind) {
    case Element::Kind::Any_One:
        return true;
    case Element::Kind::Set:
        return element.negated != std::any_of(element.ranges.begin(), element.ranges.end(), [point](const auto &range) {
                   return range.first <= point && point <= range.second;
               });
    default:
        return element.point == point;
    }
}

bool Pattern::Matches(std::string_view text) const
{
    if (m_contains) {
        return m_middle.Find(text) != std::string_view::npos;
    }
    size_t element = 0;
    size_t at = 0;
    size_t afterRun = std::string_view::npos; // where to go on when the rest fails behind the last "%"
    size_t retryAt = 0;
    while (at < text.size()) {
        if (element < m_elements.size() && m_elements[element].kind == Element::Kind::Any_Run) {
            afterRun = ++element;
            retryAt = at;
            continue;
        }
        size_t next = at;
        const char32_t point = Fold(Next_Code_Point(text, next));
        if (element < m_elements.size() && Accepts(m_elements[element], point)) {
            ++element;
            at = next;
        } else if (afterRun != std::string_view::npos) {
            element = afterRun;
            Next_Code_Point(text, retryAt);
            at = retryAt;
        } else {
            return false;
        }
    }
    while (element < m_elements.size() && m_elements[element].kind == Element::Kind::Any_Run) {
        ++element;
    }
    return element == m_elements.size();
}
} // namespace Text_Fold

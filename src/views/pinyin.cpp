// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/pinyin.h"

#include <QCollator>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace
{
constexpr char16_t First_Han = 0x4E00;
constexpr char16_t Last_Han = 0x9FA5;

struct Boundary {
    char16_t character; ///< sorts first among those of its initial
    char16_t initial;
};
/// In the order of the collation (CLDR's pinyin order); no syllable begins with i, u or v.
constexpr Boundary Boundaries[] = {
    {u'阿', u'a'}, {u'八', u'b'}, {u'嚓', u'c'}, {u'咑', u'd'}, {u'妸', u'e'}, {u'发', u'f'},
    {u'旮', u'g'}, {u'哈', u'h'}, {u'丌', u'j'}, {u'咔', u'k'}, {u'垃', u'l'}, {u'妈', u'm'},
    {u'拏', u'n'}, {u'噢', u'o'}, {u'妑', u'p'}, {u'七', u'q'}, {u'呥', u'r'}, {u'仨', u's'},
    {u'他', u't'}, {u'屲', u'w'}, {u'夕', u'x'}, {u'丫', u'y'}, {u'帀', u'z'},
};

bool Is_Han(QChar character)
{
    return character.unicode() >= First_Han && character.unicode() <= Last_Han;
}

class Initials
{
public:
    Initials() : m_collator(QLocale(QLocale::Chinese, QLocale::China))
    {
        for (const Boundary &boundary : Boundaries)
            m_bounds.push_back(m_collator.sortKey(QString(QChar(boundary.character))));
    }
    QChar Of(QChar han)
    {
        char16_t &known = m_known[static_cast<size_t>(han.unicode() - First_Han)];
        if (known == 0)
            known = Find(han);
        return known;
    }

private:
    [[nodiscard]] char16_t Find(QChar han) const
    {
        const QCollatorSortKey key = m_collator.sortKey(QString(han));
        const auto above = std::upper_bound(m_bounds.begin(), m_bounds.end(), key,
                                            [](const auto &a, const auto &b) { return a.compare(b) < 0; });
        return above == m_bounds.begin() ? han.unicode() : Boundaries[above - m_bounds.begin() - 1].initial;
    }

    QCollator m_collator;
    std::vector<QCollatorSortKey> m_bounds;
    std::array<char16_t, Last_Han - First_Han + 1> m_known{}; ///< 0 for one that was not asked for yet
};
} // namespace

QChar Pinyin_Initial(QChar character)
{
    thread_local const auto initials = std::make_unique<Initials>();
    return Is_Han(character) ? initials->Of(character) : character;
}

QString Pinyin_Initials(const QString &text)
{
    if (std::none_of(text.begin(), text.end(), Is_Han))
        return {};
    QString initials(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), initials.begin(), Pinyin_Initial);
    return initials;
}

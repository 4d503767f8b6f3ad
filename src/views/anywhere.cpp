// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/anywhere.h"

#include "views/pinyin.h"

#include <algorithm>

namespace
{
// What a word is worth where it is found; letters with gaps lose a point for each gap.
constexpr int At_Beginning = 1000;
constexpr int At_Word = 800;
constexpr int Within = 600;
constexpr int Initials_At_Beginning = 500;
constexpr int Initials_Within = 400;
constexpr int With_Gaps = 300;
constexpr int Most_Gaps = 200;
/// Of two texts that hold a word alike the shorter one fits better.
constexpr int Full_Length = 64;

quint64 Letter_Bit(QChar letter)
{
    constexpr unsigned Bits = 64;
    return quint64(1) << (letter.unicode() % Bits);
}

quint64 Letters_Of(const QString &text)
{
    quint64 letters = 0;
    for (const QChar letter : text)
        letters |= Letter_Bit(letter);
    return letters;
}

/// The gaps between the letters of a word in a text, taken at their first places; -1 when they do not all follow.
int Gaps(const QString &word, const QString &text)
{
    int gaps = 0;
    qsizetype at = 0;
    for (qsizetype i = 0; i < word.size(); ++i) {
        const qsizetype found = text.indexOf(word[i], at);
        if (found < 0)
            return -1;
        gaps += i > 0 && found > at ? 1 : 0;
        at = found + 1;
    }
    return gaps;
}

bool Begins_Word(const QString &text, qsizetype at)
{
    return at == 0 || !text[at - 1].isLetterOrNumber();
}

int Score(const QStringList &words, const QString &text, const QString &initials)
{
    int sum = 0;
    for (const QString &word : words) {
        const int score = Word_Score(word, text, initials);
        if (score == 0)
            return 0;
        sum += score;
    }
    return sum + std::max<int>(0, Full_Length - static_cast<int>(text.size()));
}

struct Hit {
    int score;
    const Place *place;
};

bool Is_Better(const Hit &a, const Hit &b)
{
    if (a.score != b.score)
        return a.score > b.score;
    if (a.place->why_not.isEmpty() != b.place->why_not.isEmpty())
        return a.place->why_not.isEmpty();
    if (a.place->used != b.place->used)
        return a.place->used > b.place->used;
    return a.place < b.place; // as they were added
}
} // namespace

int Word_Score(const QString &word, const QString &text, const QString &initials)
{
    const qsizetype at = text.indexOf(word);
    if (at == 0)
        return At_Beginning;
    if (at > 0) {
        for (qsizetype next = at; next >= 0; next = text.indexOf(word, next + 1)) {
            if (Begins_Word(text, next))
                return At_Word;
        }
        return Within;
    }
    if (const qsizetype place = initials.indexOf(word); place >= 0)
        return place == 0 ? Initials_At_Beginning : Initials_Within;
    for (const QString *where : {&text, &initials}) {
        if (const int gaps = Gaps(word, *where); gaps >= 0)
            return With_Gaps - std::min(gaps, Most_Gaps);
    }
    return 0;
}

void Place_Index::Add(Place place)
{
    QString folded = place.text.toLower();
    QString initials = Pinyin_Initials(folded);
    const quint64 letters = Letters_Of(folded) | Letters_Of(initials);
    m_entries.push_back({std::move(place), std::move(folded), std::move(initials), letters});
}

void Place_Index::Clear()
{
    m_entries.clear();
}

std::vector<const Place *> Place_Index::Find(const QString &typed, int limit) const
{
    const QStringList words = typed.toLower().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    const quint64 letters = Letters_Of(words.join(QString()));
    std::vector<Hit> hits;
    for (const Entry &entry : m_entries) {
        if ((entry.letters & letters) != letters || (words.isEmpty() && entry.place.used == 0))
            continue;
        const int score = words.isEmpty() ? 1 : Score(words, entry.folded, entry.initials);
        if (score > 0)
            hits.push_back({score, &entry.place});
    }
    const auto shown = std::min(hits.size(), static_cast<size_t>(std::max(limit, 0)));
    std::partial_sort(hits.begin(), hits.begin() + static_cast<qsizetype>(shown), hits.end(), Is_Better);
    std::vector<const Place *> places;
    for (size_t i = 0; i < shown; ++i)
        places.push_back(hits[i].place);
    return places;
}

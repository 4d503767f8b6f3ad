// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

/// Places where one can go from anywhere, found by what is remembered of their names.

enum class Place_Kind { Command, Document, Folder, Tag, Bookmark };

struct Place {
    Place_Kind kind = Place_Kind::Command;
    QString key;     ///< what its kind is gone to by
    QString text;    ///< a title, a folder's path, a name
    QString detail;  ///< what stands beside it: a folder, a key; it is not looked into
    QString why_not; ///< why it does not apply now, "" where it does; such places come last among equals
    qint64 used = 0; ///< a greater number was used later
};

class Place_Index
{
public:
    void Add(Place place);
    void Clear();
    [[nodiscard]] int Count() const { return static_cast<int>(m_entries.size()); }

    /// The best places for what is typed, best first. Each of its words must be found, in any order: at the beginning
    /// of the text, of one of its words, within it, in the pinyin initials, or letter by letter with gaps, in this
    /// order of worth. With nothing typed, those that were used last. The answers hold until a place is added.
    [[nodiscard]] std::vector<const Place *> Find(const QString &typed, int limit) const;

private:
    struct Entry {
        Place place;
        QString folded;
        QString initials; ///< "" for a text without Chinese characters
        quint64 letters;  ///< a bit for each letter that stands in either, so that most entries need no look
    };
    std::vector<Entry> m_entries;
};

/// What a word is worth in a text, 0 when it is not in it. Both in lower case.
int Word_Score(const QString &word, const QString &text, const QString &initials);

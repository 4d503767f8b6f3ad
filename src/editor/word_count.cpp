// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/word_count.h"

#include <QChar>
#include <QList>

namespace
{
bool Counts_Alone(char32_t letter)
{
    switch (QChar::script(letter)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
        return QChar::isLetterOrNumber(letter);
    default:
        return false;
    }
}

/// What may stand inside a word between two of its letters.
bool Joins(char32_t letter)
{
    return letter == U'\'' || letter == U'\u2019' || letter == U'-' || letter == U'_' || letter == U'.' ||
           letter == U',';
}

bool Ends_Paragraph(char32_t letter)
{
    return letter == U'\n' || letter == QChar::ParagraphSeparator;
}
} // namespace

Word_Count Count_Words(QStringView text)
{
    enum class Word { No, Inside, Joined } word = Word::No;
    Word_Count count;
    bool filled = false;
    for (const char32_t letter : text.toUcs4()) {
        if (Ends_Paragraph(letter)) {
            filled = false;
            word = Word::No;
            continue;
        }
        if (QChar::isSpace(letter)) {
            ++count.blanks;
            word = Word::No;
            continue;
        }
        if (letter == QChar::ObjectReplacementCharacter)
            continue;
        ++count.characters;
        if (!filled)
            ++count.paragraphs;
        filled = true;
        if (Counts_Alone(letter)) {
            ++count.words;
            ++count.ideographs;
            word = Word::No;
        } else if (QChar::isLetterOrNumber(letter) || QChar::isMark(letter)) {
            count.words += word == Word::No ? 1 : 0;
            word = Word::Inside;
        } else {
            word = word == Word::Inside && Joins(letter) ? Word::Joined : Word::No;
        }
    }
    return count;
}

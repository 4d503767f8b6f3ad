// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

/// How much text there is. Scripts without blanks count letter by letter, as their readers do.
struct Word_Count {
    int words = 0;      ///< letters of scripts without blanks, and words and numbers of the others
    int ideographs = 0; ///< the former alone
    int characters = 0; ///< without blanks; a letter outside the basic plane is one
    int blanks = 0;
    int paragraphs = 0; ///< with something in them

    bool operator==(const Word_Count &) const = default;
};

/// @param text  paragraphs with "\n" or U+2029 between them
Word_Count Count_Words(QStringView text);

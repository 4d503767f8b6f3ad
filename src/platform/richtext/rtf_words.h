// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace Rtf
{
class Reader;

/// One row of the table of control words: what a word does, and the constant that tells it from its siblings.
struct Word_Row {
    std::string_view name;
    void (*action)(Reader &reader, int value);
    int value = 0;
};
/// The row of a control word, or nullptr for one that means nothing here.
const Word_Row *Find_Word(std::string_view name);
/// Whether the word sets character or paragraph properties, as the definition of a style may.
bool Is_Formatting(const Word_Row &row);
/// Whether the word stands for a sign that may be seen.
bool Is_Sign(const Word_Row &row);
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_state.h"

#include <array>

namespace Rtf
{
struct Word_Row;

/// The style sheet: for each style the words that it sets, to be run again where a text or paragraph names it.
class Style_Sheet : public Reader_Part
{
public:
    using Reader_Part::Reader_Part;
    struct Style_Word {
        const Word_Row *row;
        Parameter parameter;
    };

    /// A style's definition: its number, what it adds to, its words and name.
    void Begin_Style(bool isCharacter);
    void Based_On();
    void Add_Word(const Word_Row &row) { m_style.words.push_back({&row, m_parameter}); }
    void Add_Name(QStringView text);
    void End_Style();

    /// Runs the words of a style, after those of the styles that it is based on.
    template <typename Run>
    void For_Words_Of(int number, bool isCharacter, Run &&run) const
    {
        Chain chain{};
        for (std::size_t left = Chain_Of(number, isCharacter, chain); left > 0;) {
            for (const Style_Word &word : chain[--left]->words)
                run(word);
        }
    }

private:
    static constexpr std::size_t mostBases = 32; // of one style, each based on the next
    struct Style {
        std::vector<Style_Word> words;
        QString name; ///< as much of it as tells of a heading
        int number = 0;
        int base = -1; ///< number of the style that this one adds to
        bool isCharacter = false;
    };
    using Chain = std::array<const Style *, mostBases>;

    void Name_Heading();
    std::size_t Chain_Of(int number, bool isCharacter, Chain &chain) const;

    QHash<qint64, Style> m_styles;
    Style m_style; ///< that is defined
};
} // namespace Rtf

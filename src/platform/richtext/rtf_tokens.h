// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace Rtf
{
enum class Token_Kind { Open, Close, Word, Symbol, Hex, Text, Binary, End };

/// One piece of an RTF stream; `text` points into the bytes being read.
struct Token {
    Token_Kind kind = Token_Kind::End;
    std::string_view text = {}; ///< a word's letters, a run of plain bytes, or the bytes that follow \bin
    int parameter = 0;          ///< a word's number, held within 32 bits
    bool hasParameter = false;
    unsigned char byte = 0; ///< a symbol's character, or the byte that \'hh stands for
};

/// Cuts RTF bytes into tokens (Rich Text Format 1.9.1, "RTF syntax"). Every byte sequence has a reading; each call
/// takes at least one byte until the end.
class Tokenizer
{
public:
    explicit Tokenizer(std::string_view bytes) : m_bytes(bytes) {}

    Token Next();
    /// Moves to the brace that closes the group that is open now, minding \bin data and escaped braces.
    void Skip_Group();
    /// Whether a control word stands in the group that is open now; only its first bytes are looked at.
    [[nodiscard]] bool Group_Has(std::string_view word) const;

private:
    Token Control();
    Token Word();
    Token Hex_Byte();
    Token Binary(int length);
    Token Text();

    std::string_view m_bytes;
    std::size_t m_at = 0;
};

/// Value of a hexadecimal digit, or -1.
int Hex_Value(char digit);
} // namespace Rtf

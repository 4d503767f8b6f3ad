// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringView>
#include <vector>

enum class Token_Kind { Name, Bracketed, Text, Number, Date, Symbol, End };

/// What the translation of a like pattern depends on.
enum class Pattern_Class {
    None,          // no text behind "like"
    Everything,    // %
    Digits_Prefix, // 001%
    Date_Prefix,   // 2023-05%, with the present date separator
    Digits_Other,  // 001[0-9][0-9][0-9] and others that begin with digits
    Other,
};

/// A token of a statement; `raw` lies in the statement's own text, quotes included.
struct Token {
    Token_Kind kind = Token_Kind::End;
    QStringView raw;
    int literal = -1;                            ///< running number among the literals of the statement
    Pattern_Class pattern = Pattern_Class::None; ///< of a text right behind "like", parentheses between them or not

    /// A bare word or a symbol, without regard to case.
    [[nodiscard]] bool Is(QLatin1StringView word) const;
    [[nodiscard]] bool Is_Literal() const { return literal >= 0; }
    /// The name without brackets and blanks, the text without its quotes, the date without its signs.
    [[nodiscard]] QString Value() const;
};

/// @throws Run_Time_Error Db_Syntax for an unclosed quote or a character of no meaning. Ends with an End token.
std::vector<Token> Tokenize(QStringView statement);

/// A text that is equal for statements which differ only in the values of their literals, as far as the translation
/// is the same for them.
QString Statement_Shape(const std::vector<Token> &tokens);

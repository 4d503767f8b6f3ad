// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/server_text.h"

#include "platform/database/catalog.h"
#include "platform/database/text_fold.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr double Most_Whole = 9007199254740992.0;

QString Number_Literal(double number)
{
    if (std::isfinite(number) && std::floor(number) == number && std::abs(number) < Most_Whole) {
        return u"("_s + QString::number(static_cast<qint64>(number)) + u')';
    }
    const QString text = std::isnan(number) ? u"NaN"_s : QString::number(number, 'g', 17);
    return u"'"_s + text + u"'::double precision"_s;
}

/// A piece of a pattern: a wildcard, a set with what stands in it, or a character.
struct Piece {
    enum class Kind { Run, One, Set, Character } kind = Kind::Character;
    QString text;
};

/// The pieces of a pattern; a bracket that nothing closes is a character.
std::vector<Piece> Pieces_Of(const QString &pattern)
{
    std::vector<Piece> pieces;
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar c = pattern[at];
        qsizetype close = c == u'[' ? at + 1 : -1;
        if (close > 0 && close < pattern.size() && (pattern[close] == u'!' || pattern[close] == u'^')) {
            ++close;
        }
        while (close > 0 && close < pattern.size() && pattern[close] != u']') {
            const bool range = close + 2 < pattern.size() && pattern[close + 1] == u'-' && pattern[close + 2] != u']';
            close += range ? 3 : 1;
        }
        if (close > 0 && close < pattern.size()) {
            pieces.push_back({Piece::Kind::Set, pattern.mid(at + 1, close - at - 1)});
            at = close + 1;
            continue;
        }
        const int units = c.isHighSurrogate() && at + 1 < pattern.size() ? 2 : 1;
        pieces.push_back({c == u'%'   ? Piece::Kind::Run
                          : c == u'_' ? Piece::Kind::One
                                      : Piece::Kind::Character,
                          pattern.mid(at, units)});
        at += units;
    }
    return pieces;
}

/// A set without its mark of negation holds nothing: then it is left out of the pattern, as if it were not there.
bool Is_Empty_Set(const Piece &piece)
{
    return piece.kind == Piece::Kind::Set && (piece.text.isEmpty() || piece.text == u"!"_s || piece.text == u"^"_s);
}

QString Escaped(const QString &text)
{
    QString escaped;
    for (const QChar c : text) {
        const bool word = c.isLetterOrNumber() || c.unicode() > 0x7F || c == u' ';
        escaped += word ? QString(c) : u'\\' + QString(c);
    }
    return escaped;
}

QString Set_Expression(QString set)
{
    const bool negated = set.startsWith(u'!') || set.startsWith(u'^');
    set.remove(0, negated ? 1 : 0);
    QString inside;
    for (qsizetype at = 0; at < set.size();) {
        const bool range = at + 2 < set.size() && set[at + 1] == u'-';
        const QString from = Escaped(set.mid(at, 1));
        const bool ordered = range && set[at] <= set[at + 2];
        inside += ordered ? from + u'-' + Escaped(set.mid(at + 2, 1)) : range ? QString() : from;
        at += range ? 3 : 1;
    }
    if (inside.isEmpty()) {
        return negated ? u"."_s : u"(?!)"_s;
    }
    return (negated ? u"[^"_s : u"["_s) + inside + u']';
}
} // namespace

namespace Server_Text
{
QString Literal(const Cell &cell)
{
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return u"("_s + QString::number(*whole) + u')';
    }
    if (const auto *number = std::get_if<double>(&cell)) {
        return Number_Literal(*number);
    }
    if (const auto *text = std::get_if<QString>(&cell)) {
        QString kept = *text;
        return Quoted_Text(kept.replace(QChar(0), QChar::ReplacementCharacter)) + u"::text"_s;
    }
    if (const auto *bytes = std::get_if<QByteArray>(&cell)) {
        return u"'\\x"_s + QString::fromLatin1(bytes->toHex()) + u"'::bytea"_s;
    }
    return u"NULL"_s;
}

QString Filled(const QByteArray &sql, const std::function<QString(size_t)> &value)
{
    const QString text = QString::fromUtf8(sql);
    QString filled;
    QChar quote;
    qsizetype from = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar c = text[at];
        if (!quote.isNull()) {
            quote = c == quote ? QChar() : quote;
        } else if (c == u'\'' || c == u'"') {
            quote = c;
        } else if (c == u'?') {
            filled += QStringView(text).mid(from, at - from);
            size_t number = 0;
            while (at + 1 < text.size() && text[at + 1].isDigit()) {
                number = number * 10 + static_cast<size_t>(text[++at].digitValue());
            }
            filled += value(number - 1);
            from = at + 1;
        }
    }
    return filled += QStringView(text).mid(from);
}

QString Like_Text(const QString &pattern)
{
    QString like;
    for (const Piece &piece : Pieces_Of(pattern)) {
        if (piece.kind == Piece::Kind::Set) {
            like += Is_Empty_Set(piece) ? QString() : u"_"_s;
        } else if (piece.kind == Piece::Kind::Character) {
            like += piece.text == u"\\"_s ? u"\\\\"_s : Text_Fold::Folded(piece.text);
        } else {
            like += piece.text;
        }
    }
    return like;
}

QString Like_Classes(const QString &pattern)
{
    QString expression = u"^"_s;
    bool hasSet = false;
    for (const Piece &piece : Pieces_Of(pattern)) {
        switch (piece.kind) {
        case Piece::Kind::Run:
            expression += u".*"_s;
            break;
        case Piece::Kind::One:
            expression += u'.';
            break;
        case Piece::Kind::Set:
            if (!Is_Empty_Set(piece)) {
                hasSet = true;
                expression += Set_Expression(Text_Fold::Folded(piece.text));
            }
            break;
        case Piece::Kind::Character:
            expression += Escaped(Text_Fold::Folded(piece.text));
            break;
        }
    }
    return hasSet ? expression + u'$' : QString();
}
} // namespace Server_Text

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/number_format.h"

#include <QDateTime>
#include <QList>
#include <QLocale>
#include <cmath>

namespace ExtractText
{
namespace
{
/// A piece of a format code: literal text, or a run of one letter or digit place.
struct Piece {
    QChar letter; ///< lower case; null for literal text
    QString text;
};

QStringList Sections(const QString &format)
{
    QStringList sections(QString{});
    bool quoted = false;
    for (const QChar c : format) {
        if (c == QLatin1Char('"'))
            quoted = !quoted;
        if (c == QLatin1Char(';') && !quoted)
            sections << QString();
        else
            sections.last() += c;
    }
    return sections;
}

/// Place behind a bracketed part; an elapsed time, as "[h]", keeps its letter.
qsizetype Skip_Bracket(const QString &section, qsizetype at, QList<Piece> &pieces)
{
    const qsizetype end = section.indexOf(QLatin1Char(']'), at);
    if (end < 0)
        return section.size();
    const QString inside = section.mid(at + 1, end - at - 1).toLower();
    if (!inside.isEmpty() && (inside.count(QLatin1Char('h')) == inside.size()))
        pieces.append({QLatin1Char('h'), inside});
    return end + 1;
}

QList<Piece> Pieces(const QString &section)
{
    QList<Piece> pieces;
    const auto literal = [&](const QString &text) {
        pieces.append({QChar(), text});
    };
    for (qsizetype i = 0; i < section.size();) {
        const QChar c = section[i];
        if (c == QLatin1Char('"')) {
            const qsizetype end = section.indexOf(QLatin1Char('"'), i + 1);
            literal(section.mid(i + 1, end < 0 ? -1 : end - i - 1));
            i = end < 0 ? section.size() : end + 1;
        } else if (c == QLatin1Char('\\')) {
            literal(section.mid(i + 1, 1));
            i += 2;
        } else if (c == QLatin1Char('_') || c == QLatin1Char('*')) {
            i += 2; // blank as wide as a character, or filling with one
        } else if (c == QLatin1Char('[')) {
            i = Skip_Bracket(section, i, pieces);
        } else if (section.mid(i, 5).compare(QLatin1String("AM/PM"), Qt::CaseInsensitive) == 0) {
            pieces.append({QLatin1Char('a'), section.mid(i, 5)});
            i += 5;
        } else if (QStringLiteral("ymdhsYMDHS0#?.,%@E").contains(c)) {
            qsizetype end = i;
            while (end < section.size() && section[end].toLower() == c.toLower())
                ++end;
            pieces.append({c.toLower(), section.mid(i, end - i)});
            i = end;
        } else {
            literal(QString(c));
            ++i;
        }
    }
    return pieces;
}

bool Has(const QList<Piece> &pieces, const QString &letters)
{
    for (const Piece &piece : pieces) {
        if (!piece.letter.isNull() && letters.contains(piece.letter))
            return true;
    }
    return false;
}

QString General(double number)
{
    return QString::number(number, 'g', 15);
}

QString Padded(int value, qsizetype width)
{
    return QStringLiteral("%1").arg(value, static_cast<int>(width), 10, QLatin1Char('0'));
}

/// Letters of months stand for minutes behind hours and before seconds.
bool Means_Minutes(const QList<Piece> &pieces, qsizetype at)
{
    for (qsizetype i = at - 1; i >= 0; --i) {
        if (!pieces[i].letter.isNull() && QStringLiteral("ymdhs").contains(pieces[i].letter))
            return pieces[i].letter == QLatin1Char('h');
    }
    for (qsizetype i = at + 1; i < pieces.size(); ++i) {
        if (!pieces[i].letter.isNull() && QStringLiteral("ymdhs").contains(pieces[i].letter))
            return pieces[i].letter == QLatin1Char('s');
    }
    return false;
}

QString Date_Piece(const QList<Piece> &pieces, qsizetype at, const QDateTime &moment, bool halfDays)
{
    const Piece &piece = pieces[at];
    const qsizetype width = piece.text.size();
    const QLocale english(QLocale::C);
    switch (piece.letter.toLatin1()) {
    case 'y':
        return width > 2 ? Padded(moment.date().year(), 4) : Padded(moment.date().year() % 100, 2);
    case 'm':
        if (Means_Minutes(pieces, at))
            return Padded(moment.time().minute(), width);
        if (width > 2)
            return english.monthName(moment.date().month(), width == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        return Padded(moment.date().month(), width);
    case 'd':
        if (width > 2)
            return english.dayName(moment.date().dayOfWeek(), width == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        return Padded(moment.date().day(), width);
    case 'h': {
        const int hour = moment.time().hour();
        return Padded(halfDays ? (hour + 11) % 12 + 1 : hour, std::min<qsizetype>(width, 2));
    }
    case 's':
        return Padded(moment.time().second(), width);
    case 'a':
        return moment.time().hour() < 12 ? QStringLiteral("AM") : QStringLiteral("PM");
    default:
        return piece.text;
    }
}

QString Date_Text(double number, const QList<Piece> &pieces, bool date1904)
{
    constexpr double Most_Days = 2958466; // the year 10000
    if (number < 0 || number >= Most_Days)
        return General(number);
    const QDate origin = date1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    const qint64 seconds = std::llround(number * 86400);
    const QDateTime moment = QDateTime(origin, QTime(0, 0), Qt::UTC).addSecs(seconds);
    const bool halfDays = Has(pieces, QStringLiteral("a"));
    QString text;
    for (qsizetype i = 0; i < pieces.size(); ++i)
        text += Date_Piece(pieces, i, moment, halfDays);
    return text;
}

/// The digits of a number format and what stands around them.
QString Number_Text(double number, const QList<Piece> &pieces, bool sign)
{
    QString before;
    QString after;
    int decimals = 0;
    bool thousands = false;
    bool point = false;
    bool digits = false;
    for (const Piece &piece : pieces) {
        const bool place = piece.letter == QLatin1Char('0') || piece.letter == QLatin1Char('#');
        if (place && point)
            decimals += static_cast<int>(piece.text.size());
        digits = digits || place;
        point = point || piece.letter == QLatin1Char('.');
        thousands = thousands || (piece.letter == QLatin1Char(',') && digits && !point);
        if (piece.letter.isNull() || piece.letter == QLatin1Char('%'))
            (digits ? after : before) += piece.text;
        if (piece.letter == QLatin1Char('%'))
            number *= 100;
    }
    QLocale locale(QLocale::C);
    locale.setNumberOptions(thousands ? QLocale::DefaultNumberOptions : QLocale::OmitGroupSeparator);
    const QString minus = sign && number < 0 ? QStringLiteral("-") : QString();
    return minus + before + locale.toString(std::abs(number), 'f', decimals) + after;
}
} // namespace

QString Built_In_Format(int id)
{
    static const QHash<int, QString> formats{
        {1, QStringLiteral("0")},           {2, QStringLiteral("0.00")},        {3, QStringLiteral("#,##0")},
        {4, QStringLiteral("#,##0.00")},    {9, QStringLiteral("0%")},          {10, QStringLiteral("0.00%")},
        {14, QStringLiteral("yyyy-mm-dd")}, {15, QStringLiteral("d-mmm-yy")},   {16, QStringLiteral("d-mmm")},
        {17, QStringLiteral("mmm-yy")},     {18, QStringLiteral("h:mm AM/PM")}, {19, QStringLiteral("h:mm:ss AM/PM")},
        {20, QStringLiteral("h:mm")},       {21, QStringLiteral("h:mm:ss")},    {22, QStringLiteral("yyyy-mm-dd h:mm")},
        {45, QStringLiteral("mm:ss")},
    };
    return formats.value(id);
}

QString Formatted_Number(double number, const QString &format, bool date1904)
{
    const QStringList sections = Sections(format);
    const bool ownNegative = number < 0 && sections.size() > 1 && !sections[1].isEmpty();
    const QList<Piece> pieces = Pieces(ownNegative ? sections[1] : sections[0]);
    if (format.compare(QLatin1String("General"), Qt::CaseInsensitive) == 0 || Has(pieces, QStringLiteral("@?e")))
        return General(number);
    if (Has(pieces, QStringLiteral("ymdhs")))
        return Date_Text(number, pieces, date1904);
    return Has(pieces, QStringLiteral("0#")) ? Number_Text(number, pieces, !ownNegative) : General(number);
}
} // namespace ExtractText

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
    bool elapsed = false; ///< counts all hours, minutes or seconds, as "[h]" does
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

/// Place behind a bracketed part; an elapsed time keeps its letters.
qsizetype Skip_Bracket(const QString &section, qsizetype at, QList<Piece> &pieces)
{
    const qsizetype end = section.indexOf(QLatin1Char(']'), at);
    if (end < 0)
        return section.size();
    const QString inside = section.mid(at + 1, end - at - 1).toLower();
    if (!inside.isEmpty() && QStringLiteral("hms").contains(inside[0]) && inside.count(inside[0]) == inside.size())
        pieces.append({inside[0], inside, true});
    return end + 1;
}

/// The words for the halves of a day that stand at a place, as "AM/PM"; "" when there are none.
QString Halves_At(const QString &section, qsizetype at)
{
    for (const QString &halves : {QStringLiteral("AM/PM"), QStringLiteral("A/P"), QStringLiteral("上午/下午")}) {
        if (QStringView(section).sliced(at).startsWith(halves, Qt::CaseInsensitive))
            return halves;
    }
    return {};
}

QList<Piece> Pieces(const QString &section)
{
    QList<Piece> pieces;
    const auto literal = [&](const QString &text) {
        pieces.append({QChar(), text});
    };
    QString halves;
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
        } else if (halves = Halves_At(section, i); !halves.isEmpty()) {
            pieces.append({QLatin1Char('a'), halves});
            i += halves.size();
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

QString Padded(qint64 value, qsizetype width)
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

/// A moment as its pieces show it.
struct Moment {
    QDateTime date;
    qint64 milliseconds = 0; ///< since the first day
    bool halfDays = false;
};

QString Elapsed(const Piece &piece, qint64 milliseconds)
{
    const qint64 unit = piece.letter == QLatin1Char('h') ? 3'600'000 : piece.letter == QLatin1Char('m') ? 60'000 : 1000;
    return Padded(milliseconds / unit, piece.text.size());
}

/// Zeros behind the point of seconds.
bool Means_Fraction(const QList<Piece> &pieces, qsizetype at)
{
    return at >= 2 && pieces[at].letter == QLatin1Char('0') && pieces[at - 1].letter == QLatin1Char('.') &&
           pieces[at - 2].letter == QLatin1Char('s');
}

QString Date_Piece(const QList<Piece> &pieces, qsizetype at, const Moment &moment)
{
    const Piece &piece = pieces[at];
    const qsizetype width = piece.text.size();
    const QLocale english(QLocale::C);
    const QDate date = moment.date.date();
    const QTime time = moment.date.time();
    if (piece.elapsed)
        return Elapsed(piece, moment.milliseconds);
    switch (piece.letter.toLatin1()) {
    case 'y':
        return width > 2 ? Padded(date.year(), 4) : Padded(date.year() % 100, 2);
    case 'm':
        if (Means_Minutes(pieces, at))
            return Padded(time.minute(), width);
        if (width > 2)
            return english.monthName(date.month(), width == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        return Padded(date.month(), width);
    case 'd':
        if (width > 2)
            return english.dayName(date.dayOfWeek(), width == 3 ? QLocale::ShortFormat : QLocale::LongFormat);
        return Padded(date.day(), width);
    case 'h':
        return Padded(moment.halfDays ? (time.hour() + 11) % 12 + 1 : time.hour(), std::min<qsizetype>(width, 2));
    case 's':
        return Padded(time.second(), width);
    case '0':
        return Means_Fraction(pieces, at) ? Padded(time.msec(), 3).left(width) : piece.text;
    case 'a':
        return piece.text.section(QLatin1Char('/'), time.hour() < 12 ? 0 : -1);
    default:
        return piece.text;
    }
}

/// The moment is rounded to the last place that is shown of its seconds.
QString Date_Text(double number, const QList<Piece> &pieces, bool date1904)
{
    constexpr double Most_Days = 2958466; // the year 10000
    if (!(number >= 0 && number < Most_Days))
        return General(number);
    qint64 unit = 1000;
    for (qsizetype i = 0; i < pieces.size(); ++i) {
        if (Means_Fraction(pieces, i))
            unit = pieces[i].text.size() == 1 ? 100 : pieces[i].text.size() == 2 ? 10 : 1;
    }
    const QDate origin = date1904 ? QDate(1904, 1, 1) : QDate(1899, 12, 30);
    Moment moment;
    moment.milliseconds = std::llround(number * 86'400'000 / static_cast<double>(unit)) * unit;
    moment.date = QDateTime(origin, QTime(0, 0), Qt::UTC).addMSecs(moment.milliseconds);
    moment.halfDays = Has(pieces, QStringLiteral("a"));
    QString text;
    for (qsizetype i = 0; i < pieces.size(); ++i)
        text += Date_Piece(pieces, i, moment);
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
    struct Row {
        QList<int> ids;
        QString format;
    };
    static const Row rows[] = {
        {{1}, QStringLiteral("0")},
        {{2}, QStringLiteral("0.00")},
        {{3}, QStringLiteral("#,##0")},
        {{4}, QStringLiteral("#,##0.00")},
        {{9}, QStringLiteral("0%")},
        {{10}, QStringLiteral("0.00%")},
        {{14}, QStringLiteral("yyyy-mm-dd")},
        {{15}, QStringLiteral("d-mmm-yy")},
        {{16}, QStringLiteral("d-mmm")},
        {{17}, QStringLiteral("mmm-yy")},
        {{18}, QStringLiteral("h:mm AM/PM")},
        {{19}, QStringLiteral("h:mm:ss AM/PM")},
        {{20}, QStringLiteral("h:mm")},
        {{21}, QStringLiteral("h:mm:ss")},
        {{22}, QStringLiteral("yyyy-mm-dd h:mm")},
        {{27, 36, 50, 52, 57}, QStringLiteral("yyyy年m月")},
        {{28, 29, 51, 53, 54, 58}, QStringLiteral("m月d日")},
        {{30}, QStringLiteral("m-d-yy")},
        {{31}, QStringLiteral("yyyy年m月d日")},
        {{32}, QStringLiteral("h时mm分")},
        {{33}, QStringLiteral("h时mm分ss秒")},
        {{34, 55}, QStringLiteral("上午/下午h时mm分")},
        {{35, 56}, QStringLiteral("上午/下午h时mm分ss秒")},
        {{37, 38}, QStringLiteral("#,##0;(#,##0)")},
        {{39, 40}, QStringLiteral("#,##0.00;(#,##0.00)")},
        {{45}, QStringLiteral("mm:ss")},
        {{46}, QStringLiteral("[h]:mm:ss")},
        {{47}, QStringLiteral("mm:ss.0")},
    };
    for (const Row &row : rows) {
        if (row.ids.contains(id))
            return row.format;
    }
    return {};
}

QString Formatted_Number(double number, const QString &format, bool date1904)
{
    constexpr qsizetype Longest_Format = 1024;
    if (format.size() > Longest_Format)
        return General(number);
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

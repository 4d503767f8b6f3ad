// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/dates.h"

#include <array>

using namespace Qt::StringLiterals;

namespace
{
QChar g_separator = u'-';

/// Reads numbers and the marks between them from the front of a text.
class Scanner
{
public:
    explicit Scanner(QStringView text) : m_text(text) {}
    std::optional<int> Digits(qsizetype most)
    {
        int value = 0;
        const qsizetype start = m_at;
        while (m_at < m_text.size() && m_at - start < most && m_text[m_at] >= u'0' && m_text[m_at] <= u'9') {
            value = value * 10 + (m_text[m_at++].unicode() - u'0');
        }
        return m_at > start ? std::optional(value) : std::nullopt;
    }
    QChar Mark() { return m_at < m_text.size() ? m_text[m_at++] : QChar(); }
    void Skip_Blanks()
    {
        while (m_at < m_text.size() && m_text[m_at] == u' ') {
            ++m_at;
        }
    }
    [[nodiscard]] bool Done() const { return m_at == m_text.size(); }
    [[nodiscard]] qsizetype At() const { return m_at; }

private:
    QStringView m_text;
    qsizetype m_at = 0;
};

std::optional<QDate> Read_Date(Scanner &scan)
{
    const auto year = scan.Digits(4);
    if (!year || scan.At() != 4) {
        return std::nullopt;
    }
    const QChar mark = scan.Mark();
    if (mark != u'-' && mark != u'/' && mark != u'.') {
        return std::nullopt;
    }
    const auto month = scan.Digits(2);
    if (!month || scan.Mark() != mark) {
        return std::nullopt;
    }
    const auto day = scan.Digits(2);
    if (!day || !QDate::isValid(*year, *month, *day)) {
        return std::nullopt;
    }
    return QDate(*year, *month, *day);
}

std::optional<QTime> Read_Time(Scanner &scan)
{
    const auto hour = scan.Digits(2);
    if (!hour || scan.Mark() != u':') {
        return std::nullopt;
    }
    const auto minute = scan.Digits(2);
    int second = 0;
    if (!minute) {
        return std::nullopt;
    }
    if (!scan.Done()) {
        if (scan.Mark() != u':') {
            return std::nullopt;
        }
        const auto read = scan.Digits(2);
        if (!read) {
            return std::nullopt;
        }
        second = *read;
    }
    return QTime::isValid(*hour, *minute, second) ? std::optional(QTime(*hour, *minute, second)) : std::nullopt;
}

struct Parts {
    QDate date;
    QTime time;
};

std::optional<Parts> Read_Parts(QStringView text)
{
    Scanner scan(text.trimmed());
    const auto date = Read_Date(scan);
    if (!date) {
        return std::nullopt;
    }
    if (scan.Done()) {
        return Parts{*date, QTime(0, 0)};
    }
    const QChar mark = scan.Mark();
    if (mark != u' ' && mark != u'T') {
        return std::nullopt;
    }
    scan.Skip_Blanks();
    const auto time = Read_Time(scan);
    if (!time || !scan.Done()) {
        return std::nullopt;
    }
    return Parts{*date, *time};
}

void Append_Padded(QString &out, int value, int width)
{
    std::array<char16_t, 8> digits{};
    for (int i = width; i-- > 0; value /= 10) {
        digits[static_cast<size_t>(i)] = static_cast<char16_t>(u'0' + value % 10);
    }
    out += QStringView(digits.data(), width);
}

QString Written(const QDate &date, const QTime &time, QChar separator)
{
    QString out;
    out.reserve(19);
    Append_Padded(out, date.year(), 4);
    out += separator;
    Append_Padded(out, date.month(), 2);
    out += separator;
    Append_Padded(out, date.day(), 2);
    if (time.hour() != 0 || time.minute() != 0 || time.second() != 0) {
        out += u' ';
        Append_Padded(out, time.hour(), 2);
        out += u':';
        Append_Padded(out, time.minute(), 2);
        out += u':';
        Append_Padded(out, time.second(), 2);
    }
    return out;
}

bool Year_Is_Stored(const QDate &date)
{
    return date.isValid() && date.year() >= 0 && date.year() <= 9999;
}
} // namespace

namespace Stored_Date
{
QString From_Date(const QDateTime &date)
{
    const QDateTime local = date.toLocalTime();
    return Year_Is_Stored(local.date()) ? Written(local.date(), local.time(), u'-') : QString();
}

std::optional<QString> From_Text(QStringView text)
{
    const auto parts = Read_Parts(text);
    return parts ? std::optional(Written(parts->date, parts->time, u'-')) : std::nullopt;
}

QString To_Short(const QString &stored)
{
    if (g_separator == u'-') {
        return stored;
    }
    const auto parts = Read_Parts(stored);
    return parts ? Written(parts->date, parts->time, g_separator) : stored;
}

QChar Separator()
{
    return g_separator;
}

QString Format(const QDateTime &date, const QString &pattern)
{
    const QDate day = date.date();
    const QTime time = date.time();
    QString out;
    bool afterHour = false;
    for (qsizetype at = 0; at < pattern.size();) {
        const QChar letter = pattern[at].toLower();
        qsizetype end = at + 1;
        while (end < pattern.size() && pattern[end].toLower() == letter) {
            ++end;
        }
        const int count = static_cast<int>(end - at);
        const int width = count > 1 ? 2 : 1;
        const auto number = [&](int value) {
            out += u"%1"_s.arg(value, width, 10, QChar(u'0'));
        };
        if (letter == u'y') {
            out += count > 2 ? u"%1"_s.arg(day.year(), 4, 10, QChar(u'0'))
                             : u"%1"_s.arg(day.year() % 100, 2, 10, QChar(u'0'));
        } else if (letter == u'm') {
            number(afterHour ? time.minute() : day.month());
        } else if (letter == u'd') {
            number(day.day());
        } else if (letter == u'h') {
            number(time.hour());
        } else if (letter == u'n') {
            number(time.minute());
        } else if (letter == u's') {
            number(time.second());
        } else {
            out += pattern.mid(at, count);
        }
        if (letter.isLetter()) {
            afterHour = letter == u'h';
        }
        at = end;
    }
    return out;
}
} // namespace Stored_Date

namespace Database_Engine
{
QString Short_Date(const QDateTime &date)
{
    const QDateTime local = date.toLocalTime();
    return Year_Is_Stored(local.date()) ? Written(local.date(), local.time(), g_separator) : QString();
}

void Set_Date_Separator(QChar separator)
{
    g_separator = separator;
}

QDateTime Date_From_Text(const QString &text)
{
    const auto parts = Read_Parts(text);
    return parts ? QDateTime(parts->date, parts->time) : QDateTime();
}
} // namespace Database_Engine

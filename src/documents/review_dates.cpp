// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/review_dates.h"

#include "platform/database/database.h"

#include <QDateTime>
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace
{
constexpr int First_Year = 100;
constexpr int Last_Year = 9999;

enum class Unit { Minute, Hour, Day, Week, Month };

struct Interval {
    const char *name;
    Unit whole;
    Unit part;   ///< the unit of the fraction
    float parts; ///< of it in one; a month counts as 30 days
};
constexpr Interval Intervals[] = {
    {"h", Unit::Hour, Unit::Minute, 60}, {"d", Unit::Day, Unit::Hour, 24},  {"ww", Unit::Week, Unit::Day, 7},
    {"m", Unit::Month, Unit::Day, 30},   {"y", Unit::Day, Unit::Month, 12},
};

QDateTime Moved(const QDateTime &date, Unit unit, qint64 amount)
{
    constexpr qint64 Seconds_In_Minute = 60;
    constexpr qint64 Seconds_In_Hour = 3600;
    constexpr qint64 Days_In_Week = 7;
    switch (unit) {
    case Unit::Minute:
        return date.addSecs(amount * Seconds_In_Minute);
    case Unit::Hour:
        return date.addSecs(amount * Seconds_In_Hour);
    case Unit::Day:
        return date.addDays(amount);
    case Unit::Week:
        return date.addDays(amount * Days_In_Week);
    case Unit::Month:
        return date.addMonths(static_cast<int>(amount));
    }
    return date;
}

/// One call of the date-add routine, whose amount is a 32-bit number; no value where it raises an error.
std::optional<QDateTime> Date_Add(Unit unit, double amount, const QDateTime &date)
{
    const double rounded = std::nearbyint(amount);
    if (!(std::abs(rounded) <= std::numeric_limits<qint32>::max()))
        return std::nullopt;
    // Local clocks change by the hour twice a year; an hour more is an hour more on the clock.
    const QDateTime moved = Moved(QDateTime(date.date(), date.time(), Qt::UTC), unit, static_cast<qint64>(rounded));
    if (!moved.isValid() || moved.date().year() < First_Year || moved.date().year() > Last_Year)
        return std::nullopt;
    return QDateTime(moved.date(), moved.time());
}
} // namespace

void DateAddEx(const QString &interval, qint16 whole, float &fraction, const QString &base, QString &result)
{
    const QString name = interval.toLower();
    const auto row = std::find_if(std::begin(Intervals), std::end(Intervals),
                                  [&](const Interval &one) { return name == QLatin1String(one.name); });
    const QDateTime start = Database_Engine::Date_From_Text(base);
    if (row == std::end(Intervals) || !start.isValid())
        return;
    const std::optional<QDateTime> moved = Date_Add(row->whole, whole, start);
    if (!moved)
        return;
    result = Database_Engine::Short_Date(*moved);
    fraction *= row->parts;
    if (fraction == 0)
        return;
    if (const std::optional<QDateTime> further = Date_Add(row->part, static_cast<double>(fraction), *moved))
        result = Database_Engine::Short_Date(*further);
}

Review_Dates Curve_Dates(const QString &period, float factor, const QString &base)
{
    const QString letter = period.trimmed().toLower();
    const QString interval = letter == QLatin1String("w") ? QStringLiteral("ww") : letter;
    Review_Dates dates;
    for (int score = 0; score < Scores; ++score) {
        float fraction = factor;
        DateAddEx(interval, static_cast<qint16>(Scores - 1 - score), fraction, base, dates[static_cast<size_t>(score)]);
    }
    return dates;
}

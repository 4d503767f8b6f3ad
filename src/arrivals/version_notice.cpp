// SPDX-License-Identifier: GPL-3.0-or-later
#include "arrivals/version_notice.h"

#include "platform/database/database.h"

#include <QVersionNumber>

namespace
{
constexpr int Most_Lines = 200;

/// Up to four numbers of up to five digits, with dots between; none for anything else.
QVersionNumber Number_Of(const QString &text)
{
    constexpr qsizetype Most_Parts = 4, Most_Digits = 5;
    const QStringList parts = text.split(QLatin1Char('.'));
    const bool well =
        parts.size() <= Most_Parts && std::all_of(parts.begin(), parts.end(), [](const QString &part) {
            return !part.isEmpty() && part.size() <= Most_Digits &&
                   std::all_of(part.begin(), part.end(), [](QChar digit) { return digit >= u'0' && digit <= u'9'; });
        });
    return well ? QVersionNumber::fromString(text) : QVersionNumber();
}

bool Is_Page(const QUrl &page)
{
    return page.isValid() && (page.scheme() == QLatin1String("https") || page.scheme() == QLatin1String("http")) &&
           !page.host().isEmpty() && page.userInfo().isEmpty();
}
} // namespace

std::optional<Version_Notice> Version_Notice::Read(const QByteArray &file)
{
    if (file.size() > Longest_File)
        return std::nullopt;
    Version_Notice notice;
    for (const QString &line : QString::fromUtf8(file).split(QLatin1Char('\n')).mid(0, Most_Lines)) {
        const QString key = line.section(QLatin1Char('='), 0, 0).trimmed().remove(QChar::ByteOrderMark);
        const QString value = line.section(QLatin1Char('='), 1).trimmed();
        if (key.compare(QLatin1String("Version"), Qt::CaseInsensitive) == 0 && notice.version.isEmpty())
            notice.version = value;
        if (key.compare(QLatin1String("Page"), Qt::CaseInsensitive) == 0 && notice.page.isEmpty())
            notice.page = QUrl(value, QUrl::StrictMode);
    }
    if (Number_Of(notice.version).isNull() || !Is_Page(notice.page))
        return std::nullopt;
    return notice;
}

bool Version_Notice::Is_Newer_Than(const QString &other) const
{
    return Number_Of(version).normalized() > Number_Of(other).normalized();
}

bool Is_Check_Due(const QString &period, const QString &last, const QDateTime &now)
{
    const QDateTime before = Database_Engine::Date_From_Text(last);
    if (period.trimmed().isEmpty())
        return false;
    if (!before.isValid() || before > now)
        return true;
    const QDate next = period == QLatin1String("D")   ? before.date().addDays(1)
                       : period == QLatin1String("M") ? before.date().addMonths(1)
                                                      : before.date().addDays(7);
    return now.date() >= next;
}

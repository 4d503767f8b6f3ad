// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/html/style_bounds.h"

#include <QRegularExpression>

namespace
{
constexpr double Most_Length = 4000;   // pixels or points
constexpr double Most_Font_Size = 999; // and steps of an indent

/// Every number but those of a colour's digits is at most `most`.
QString With_Numbers(const QString &text, double most)
{
    static const QRegularExpression number(QStringLiteral("(?<![#\\w.])\\d+(?:\\.\\d*)?"));
    QString bounded;
    qsizetype done = 0;
    for (auto found = number.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch one = found.next();
        if (one.captured().toDouble() <= most)
            continue;
        bounded += QStringView(text).mid(done, one.capturedStart() - done);
        bounded += QString::number(most);
        done = one.capturedEnd();
    }
    return bounded.append(QStringView(text).mid(done));
}

QString With_Font_Sizes(const QString &text)
{
    static const QRegularExpression font(QStringLiteral("(?:\\bfont(?:-size)?|-indent)\\s*:[^;{}]*"),
                                         QRegularExpression::CaseInsensitiveOption);
    QString bounded;
    qsizetype done = 0;
    for (auto found = font.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch one = found.next();
        bounded += QStringView(text).mid(done, one.capturedStart() - done);
        bounded += With_Numbers(one.captured(), Most_Font_Size);
        done = one.capturedEnd();
    }
    return bounded.append(QStringView(text).mid(done));
}
} // namespace

QString Html::Bounded_Style(const QString &style)
{
    static const QRegularExpression comment(QStringLiteral("/\\*.*?(?:\\*/|$)"),
                                            QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression loading(QStringLiteral("@import[^;{}]*;?|\\b(?:url|image)\\s*\\([^);{}]*\\)?"),
                                            QRegularExpression::CaseInsensitiveOption);
    QString bounded = style;
    bounded.remove(QLatin1Char('\\')); // a word may not be spelled in escapes
    bounded.remove(comment);
    bounded.replace(loading, QStringLiteral(" "));
    return With_Font_Sizes(With_Numbers(bounded, Most_Length));
}

QString Html::Bounded_Number(const QString &value, double most)
{
    static const QRegularExpression number(QStringLiteral("^\\s*([+-]?\\d+(?:\\.\\d*)?)\\s*(%|px|pt)?\\s*$"));
    const QRegularExpressionMatch match = number.match(value);
    if (!match.hasMatch())
        return {};
    return QString::number(std::clamp(match.captured(1).toDouble(), -most, most), 'g', 10) + match.captured(2);
}

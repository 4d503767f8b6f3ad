// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/models/plain_tip.h"

#include <QTextDocument>

QString Plain_Tip(const QString &text)
{
    constexpr qsizetype Longest = 2000; // more than a screen shows
    constexpr qsizetype Longest_Line = 80;
    QString shown = text.size() > Longest ? text.left(Longest) + QChar(u'…') : text;
    if (!Qt::mightBeRichText(shown))
        return shown;
    return QStringLiteral("<span style='white-space:%1'>%2</span>")
        .arg(shown.size() > Longest_Line ? QStringLiteral("pre-wrap") : QStringLiteral("pre"), shown.toHtmlEscaped());
}

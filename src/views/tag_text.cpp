// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tag_text.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{
constexpr qsizetype Shortest_With_Slip = 4;

QString Singular(const QString &name)
{
    if (name.size() > 4 && name.endsWith(QLatin1String("ies")))
        return name.chopped(3) + QLatin1Char('y');
    static const QRegularExpression hissing(QStringLiteral("(s|x|z|ch|sh)es$"));
    if (name.contains(hissing))
        return name.chopped(2);
    const bool plural = name.size() > 2 && name.endsWith(QLatin1Char('s')) && !name.endsWith(QLatin1String("ss"));
    return plural ? name.chopped(1) : name;
}

bool Has_Digit(QStringView text)
{
    return std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isDigit(); });
}

/// What is left of two texts without their common beginning and end is one letter at most.
bool One_Letter_Off(QStringView one, QStringView other)
{
    if (std::min(one.size(), other.size()) < Shortest_With_Slip || qAbs(one.size() - other.size()) > 1)
        return false;
    while (!one.isEmpty() && !other.isEmpty() && one.front() == other.front()) {
        one = one.mid(1);
        other = other.mid(1);
    }
    while (!one.isEmpty() && !other.isEmpty() && one.back() == other.back()) {
        one.chop(1);
        other.chop(1);
    }
    return one.size() <= 1 && other.size() <= 1 && !Has_Digit(one) && !Has_Digit(other);
}
} // namespace

QString Tag_Name(const QString &text)
{
    return text.trimmed().toLower();
}

QString Tag_Token(int tagId)
{
    return QStringLiteral("{%1}").arg(tagId);
}

QList<int> Tag_Ids(const QString &field)
{
    QList<int> ids;
    for (const QString &part : QString(field).remove(QLatin1Char('{')).trimmed().split(QLatin1Char('}'))) {
        bool number = false;
        const int id = part.toInt(&number);
        if (number)
            ids << id;
    }
    return ids;
}

QList<int> Tags_In(const QString &field)
{
    static const QRegularExpression token(QStringLiteral("\\{([0-9]+)\\}"));
    QList<int> ids;
    for (const QRegularExpressionMatch &match : token.globalMatch(field)) {
        bool number = false;
        const int id = match.captured(1).toInt(&number);
        if (number && !ids.contains(id))
            ids << id;
    }
    return ids;
}

QString Changed_Tags(QString field, const QList<int> &give, const QList<int> &take)
{
    for (const int tag : take)
        field.remove(Tag_Token(tag));
    for (const int tag : give) {
        if (!field.contains(Tag_Token(tag)))
            field += Tag_Token(tag);
    }
    return field;
}

QString Merged_Tags(QString field, const QList<int> &from, int into)
{
    for (const int tag : from) {
        const qsizetype at = field.indexOf(Tag_Token(tag));
        if (at >= 0 && !field.contains(Tag_Token(into)))
            field.replace(at, Tag_Token(tag).size(), Tag_Token(into));
        field.remove(Tag_Token(tag));
    }
    return field;
}

bool Are_Alike(const QString &one, const QString &other)
{
    const QString a = Singular(Tag_Name(one));
    const QString b = Singular(Tag_Name(other));
    return a == b || One_Letter_Off(a, b);
}

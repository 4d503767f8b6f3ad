// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_ids.h"

#include <algorithm>

QString GetKeyPart(const QString &text, Key_Part mode)
{
    const bool underscore = mode == Key_Part::After_Underscore || mode == Key_Part::Before_Underscore;
    const qsizetype at = text.indexOf(underscore ? QLatin1Char('_') : QLatin1Char('['));
    if (at < 0)
        return {};
    switch (mode) {
    case Key_Part::After_Underscore:
        return text.mid(at + 1);
    case Key_Part::From_Bracket:
        return text.mid(at);
    case Key_Part::Before_Underscore:
    case Key_Part::Before_Bracket:
        return text.left(at);
    }
    return {};
}

QString PadLeft(const QString &value, int width, QChar padChar)
{
    const QString trimmed = value.trimmed();
    if (trimmed.isEmpty() || trimmed == QLatin1String("0"))
        return {};
    return trimmed.rightJustified(width, padChar);
}

QString Folder_Key(const QString &id)
{
    return QStringLiteral("C_") + id;
}

QString Parent_Key(const QString &id)
{
    return id.size() == 3 ? Root_Key : Folder_Key(Parent_Id(id));
}

QString Parent_Id(const QString &id)
{
    return id.left(std::max<qsizetype>(id.size() - 3, 0));
}

bool Is_Folder_Id(const QString &id)
{
    return !id.isEmpty() && id.size() % 3 == 0 &&
           std::all_of(id.begin(), id.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

bool In_Recycle_Bin(const QString &id)
{
    return id.startsWith(Recycle_Bin_Id);
}

int Order_Of_Id(const QString &id)
{
    return id.right(3).toInt();
}

bool Is_Folder_Key(const QString &key)
{
    return key.startsWith(QLatin1Char('C'));
}

QString Clean_Name(const QString &text)
{
    QString name;
    for (const QChar c : text) {
        if (c == u'\r' || c == u'\n')
            continue;
        name += QStringView(u"\\/:*?\"<>|").contains(c) ? QChar(u'_') : c;
    }
    return name;
}

QString Make_Caption(const QString &name, qint64 count)
{
    return name + QLatin1Char('[') + QString::number(count) + QLatin1Char(']');
}

QString Caption_Name(const QString &caption)
{
    return caption.contains(u'[') ? GetKeyPart(caption, Key_Part::Before_Bracket) : caption;
}

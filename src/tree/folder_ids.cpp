// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/folder_ids.h"

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
    return id.size() == 3 ? Root_Key : Folder_Key(id.chopped(3));
}

bool Is_Folder_Key(const QString &key)
{
    return key.startsWith(QLatin1Char('C'));
}

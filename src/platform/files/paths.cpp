// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/paths.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <algorithm>

namespace Files
{
namespace
{
constexpr QChar Slash = u'/';
constexpr QChar Backslash = u'\\';

bool Is_Separator(QChar character)
{
    return character == Slash || character == Backslash;
}

/// The name in `directory` that differs from `name` in case only; null when there is none.
QString Name_In_Other_Case(const QString &directory, const QString &name)
{
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    // Names only, unsorted: folders of temporary files hold thousands.
    QDirIterator entries(directory.isEmpty() ? QStringLiteral(".") : directory, all);
    QString found;
    while (entries.hasNext()) {
        entries.next();
        const QString entry = entries.fileName();
        if (entry.compare(name, Qt::CaseInsensitive) == 0 && (found.isEmpty() || entry < found))
            found = entry;
    }
    return found;
}

/// Walks down from the root as far as names can be matched; from the first unknown name on the path stays as it is.
QString Matched_Name_By_Name(const QString &path)
{
    const QStringList names = path.split(Slash);
    QString matched;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString &name = names.at(i);
        const QString asSpelled = matched + name;
        QString found = asSpelled;
        if (!name.isEmpty() && !QFileInfo::exists(asSpelled)) {
            const QString other = Name_In_Other_Case(matched, name);
            if (other.isNull())
                return matched + names.mid(i).join(Slash);
            found = matched + other;
        }
        matched = i + 1 < names.size() ? found + Slash : found;
    }
    return matched;
}
} // namespace

QString With_Slashes(const QString &path)
{
    QString native;
    native.reserve(path.size());
    for (const QChar character : path) {
        const bool separator = Is_Separator(character);
#ifdef Q_OS_WIN
        const bool joined = separator && native.size() > 1 && native.endsWith(Slash); // "//server" keeps both
#else
        const bool joined = separator && native.endsWith(Slash);
#endif
        if (!joined)
            native += separator ? Slash : character;
    }
    while (native.endsWith(u' '))
        native.chop(1);
    return native;
}

QString Native_Path(const QString &path)
{
    const QString native = With_Slashes(path);
#ifdef Q_OS_WIN
    return native; // the file system itself looks names up without regard to case
#else
    return native.isEmpty() || QFileInfo::exists(native) ? native : Matched_Name_By_Name(native);
#endif
}

bool Is_Absolute(const QString &path)
{
    if (path.size() >= 3 && path.at(1) == u':' && path.at(2) == Backslash)
        return true;
#ifdef Q_OS_WIN
    return false;
#else
    return path.startsWith(Slash);
#endif
}

QString With_Final_Separator(const QString &directory)
{
    if (directory.isEmpty() || Is_Separator(directory.back()))
        return directory;
    const bool native = directory.contains(Slash) && !directory.contains(Backslash);
    return directory + (native ? Slash : Backslash);
}

QString Short_Path(const QString &path)
{
    return path;
}

bool Is_Plain_Name(const QString &name)
{
    const auto forbidden = [](QChar character) {
#ifdef Q_OS_WIN
        if (character == u':') // would name a stream of another file
            return true;
#endif
        return Is_Separator(character) || character.category() == QChar::Other_Control;
    };
    if (std::any_of(name.begin(), name.end(), forbidden) || (name.size() >= 2 && name.at(1) == u':'))
        return false;
    // Blanks at the end are dropped from a path, so that ".. " would be ".." again.
    return std::any_of(name.begin(), name.end(),
                       [](QChar character) { return character != u'.' && character != u' '; });
}

QString Name_For(const QString &text, const QString &otherwise)
{
    constexpr qsizetype Longest = 80;
    QString name = text.simplified().left(Longest);
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1); // half a character
    for (QChar &character : name) {
        if (character.category() == QChar::Other_Control || QStringView(u"/\\:*?\"<>|").contains(character))
            character = u'_';
    }
    name = name.trimmed();
    return name.isEmpty() ? otherwise : name;
}
} // namespace Files

// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachment_place.h"

#include "core/process_state.h"
#include "platform/files/paths.h"

#include <QStringList>
#include <QUrl>

namespace Attachment_Place
{
namespace
{
const QString Program = QStringLiteral("<P>");
const QString Drive = QStringLiteral("<D>");
const QString Folder = QStringLiteral("<F>");
const QString Page = QStringLiteral("<W>");

QString Rest(const QString &path, const QString &mark)
{
    return path.mid(mark.size());
}

/// A letter and its colon, or the leading separator of a path without letters.
qsizetype Length_Of_Drive(const QString &path)
{
    return path.size() > 1 && path.at(1) == QLatin1Char(':') ? 2 : 1;
}
} // namespace

Place Expanded(const QString &path)
{
    if (path.startsWith(Page))
        return {Kind::Page, Rest(path, Page)};
    if (path.startsWith(Folder))
        return {Kind::Folder, Files::Native_Path(Rest(path, Folder))};
    QString whole = path;
    if (path.startsWith(Program))
        whole = App().App_Path + Rest(path, Program);
    else if (path.startsWith(Drive))
        whole = App().App_Path.left(1) + Rest(path, Drive);
    return {Kind::File, Files::Native_Path(whole)};
}

QString Reduced(const QString &path)
{
    QString reduced = Files::With_Slashes(path);
    const QString program = Files::With_Slashes(App().App_Path);
    if (reduced.contains(program))
        return reduced.replace(program, Program);
    if (!program.isEmpty() && reduced.startsWith(program.front(), Qt::CaseInsensitive))
        return Drive + reduced.mid(Length_Of_Drive(reduced));
    return reduced;
}

QString Folder_Link(const QString &folder)
{
    return Folder + folder;
}

QString Page_Link(const QString &address)
{
    return Page + address;
}

bool Is_Safe_Address(const QString &address)
{
    static const QStringList schemes{QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("mailto"),
                                     QStringLiteral("ftp")};
    return schemes.contains(QUrl(address.trimmed()).scheme().toLower());
}
} // namespace Attachment_Place

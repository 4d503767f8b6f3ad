// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QDir>
#include <QFileInfo>

namespace
{
constexpr qsizetype Own_Buffer = 512;
constexpr qsizetype Foreign_Buffer = 128;
} // namespace

void WriteIni(const QString &section, const QString &key, const QString &value, const QString &file)
{
    Trap(QStringLiteral("WriteIni"), [&] { Profile::Write(App().App_Path + file, section, key, value); });
}

QString GetIni(const QString &section, const QString &key, const QString &file)
{
    QString value;
    if (!Resume_Next([&] { value = Profile::Read(App().App_Path + file, section, key); }))
        Clear_Pending();
    return value.left(Own_Buffer);
}

QString GetIniA(const QString &section, const QString &key, const QString &path)
{
    return Trap(QStringLiteral("GetIniA"), [&] {
        const QString value = Profile::Read(Files::Native_Path(path), section, key);
        return value.left(Foreign_Buffer).remove(QChar(QChar::Null)).trimmed();
    });
}

bool Exists(const QString &path, int attr)
{
    return Trap(QStringLiteral("Exists"), [&] {
        const QFileInfo found(Files::Native_Path(path));
        const bool directory = attr == Attr_Directory;
        if (found.fileName().contains(QLatin1Char('*')))
            return !found.dir().entryList({found.fileName()}, directory ? QDir::Dirs : QDir::Files).isEmpty();
        return directory ? found.isDir() : found.isFile();
    });
}

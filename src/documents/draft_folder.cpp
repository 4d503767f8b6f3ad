// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/draft_folder.h"

#include "core/process_state.h"
#include "platform/database/database.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLockFile>
#include <QRandomGenerator>
#include <algorithm>
#include <map>
#include <memory>

namespace
{
const QString Lock_Suffix = QStringLiteral(".lock");

QString Folder()
{
    const QString database = Database_Engine::File_Of(App().Conn_Str);
    QString folder =
        database.isEmpty() ? App().App_Path + QStringLiteral("data/drafts/") : database + QStringLiteral("-drafts/");
    Files::Guard(folder);
    return folder;
}

/// This process's mark in a directory of drafts: the beginning of its files' names, and a lock that dies with it.
class Process_Mark
{
public:
    explicit Process_Mark(const QString &folder)
        : name(QStringLiteral("%1-%2")
                   .arg(QCoreApplication::applicationPid())
                   .arg(QRandomGenerator::system()->generate(), 8, 16, QLatin1Char('0'))),
          m_lock(folder + name + Lock_Suffix)
    {
        m_lock.setStaleLockTime(0);
        m_lock.tryLock(0);
    }

    const QString name;
    int number = 0;

private:
    QLockFile m_lock;
};

std::map<QString, std::unique_ptr<Process_Mark>> &Marks()
{
    static std::map<QString, std::unique_ptr<Process_Mark>> marks;
    return marks;
}

bool Is_Left(const QString &folder, const QString &name)
{
    const QString owner = name.section(QLatin1Char('_'), 0, 0);
    const auto own = Marks().find(folder);
    if (own != Marks().end() && own->second->name == owner)
        return false;
    const QString path = folder + owner + Lock_Suffix;
    if (QFileInfo::exists(path) && !Files::Is_File(path)) // a pipe would keep the program waiting
        return false;
    QLockFile lock(path);
    lock.setStaleLockTime(0);
    return lock.tryLock(0);
}
} // namespace

QString Draft_Folder::New_Path(const QString &suffix)
{
    const QString folder = Folder();
    Files::Make_Directory(folder);
    std::unique_ptr<Process_Mark> &mark = Marks()[folder];
    if (mark == nullptr)
        mark = std::make_unique<Process_Mark>(folder);
    return folder + mark->name + QStringLiteral("_%1").arg(++mark->number) + suffix;
}

QStringList Draft_Folder::Left(const QString &suffix)
{
    QStringList paths;
    const QString folder = Folder();
    QList<Files::Entry> entries = Files::Entries(folder);
    std::sort(entries.begin(), entries.end(),
              [](const Files::Entry &one, const Files::Entry &other) { return one.changed > other.changed; });
    for (const Files::Entry &entry : entries) {
        // What somebody else put there is nothing that this user wrote.
        if (entry.is_own && entry.name.endsWith(suffix) && Is_Left(folder, entry.name))
            paths.append(folder + entry.name);
    }
    return paths;
}

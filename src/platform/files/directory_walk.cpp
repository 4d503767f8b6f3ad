// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/files/directory_walk.h"

#include "platform/files/paths.h"

#include <QStringList>
#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace Files
{
namespace
{
/// An entry of a directory as the file system has it.
struct Entry {
    QByteArray name;
    qint64 size = 0;
    mode_t mode = 0;
    bool known = false; ///< its kind could be asked for
};

using Directory = std::unique_ptr<DIR, decltype([](DIR *directory) { closedir(directory); })>;

Directory Open_Directory(const QByteArray &path)
{
    return Directory(opendir(path.constData()));
}

Entry Entry_Of(DIR *directory, const char *name)
{
    Entry entry{QByteArray(name), 0, 0, false};
    struct stat facts = {};
    if (fstatat(dirfd(directory), name, &facts, AT_SYMLINK_NOFOLLOW) == 0) {
        entry.size = facts.st_size;
        entry.mode = facts.st_mode;
        entry.known = true;
    }
    return entry;
}

std::vector<Entry> Entries(DIR *directory)
{
    std::vector<Entry> entries;
    while (const dirent *next = readdir(directory)) {
        const QByteArrayView name(next->d_name);
        if (name != "." && name != "..")
            entries.push_back(Entry_Of(directory, next->d_name));
    }
    std::sort(entries.begin(), entries.end(), [](const Entry &a, const Entry &b) { return a.name < b.name; });
    return entries;
}

/// A name that the program's paths can hold: valid UTF-8, no "\\", which parts names there, no line break, which
/// would tear a report, and no blank at its end.
bool Can_Be_Held(const QByteArray &name)
{
    const QString text = QString::fromUtf8(name);
    return text.toUtf8() == name && Is_Plain_Name(text) && !text.endsWith(QLatin1Char(' '));
}

bool Matches(const QString &name, const QString &pattern)
{
    return pattern == QLatin1String("*.*") ||
           pattern.contains(name.mid(name.lastIndexOf(QLatin1Char('.')) + 1), Qt::CaseInsensitive);
}

class Walk
{
public:
    Walk(const QString &pattern, bool subFolders, const Walk_Step &step)
        : m_pattern(pattern), m_subFolders(subFolders), m_step(step)
    {
    }

    /// The folders that are still to be walked stand on a list, not on the stack: a tree may be of any depth.
    void Run(const QString &root);
    Found_Files found;

private:
    void Walk_Folder(const QString &path);
    void Take(const QString &folder, const Entry &entry);
    void Pass(const QString &folder, const QByteArray &name, Passed_Over reason)
    {
        found.passed.push_back({folder + QString::fromUtf8(name), reason});
    }
    void Count(qint16 &counter);

    QString m_pattern;
    bool m_subFolders;
    const Walk_Step &m_step;
    QStringList m_waiting;
};

void Walk::Run(const QString &root)
{
    m_waiting = {root};
    while (!m_waiting.isEmpty() && !found.stopped) {
        const QString folder = m_waiting.takeLast();
        found.stopped = !m_step(folder, static_cast<qint64>(found.files.size()));
        if (!found.stopped)
            Walk_Folder(folder);
    }
}

void Walk::Walk_Folder(const QString &path)
{
    const Directory directory = Open_Directory(path.toUtf8());
    if (directory == nullptr) {
        found.passed.push_back({path, Passed_Over::Unreadable});
        return;
    }
    QStringList folders;
    for (const Entry &entry : Entries(directory.get())) {
        if (!entry.known)
            Pass(path, entry.name, Passed_Over::Unreadable);
        else if (!Can_Be_Held(entry.name))
            Pass(path, entry.name, Passed_Over::Name);
        else if (S_ISDIR(entry.mode) && m_subFolders && !entry.name.toLower().endsWith(".sys"))
            folders.prepend(path + QString::fromUtf8(entry.name) + QLatin1Char('/'));
        else if (!S_ISDIR(entry.mode))
            Take(path, entry);
    }
    for (qsizetype i = 0; i < folders.size(); ++i)
        Count(found.folder_count);
    m_waiting += folders;
}

void Walk::Take(const QString &folder, const Entry &entry)
{
    if (!S_ISREG(entry.mode))
        return Pass(folder, entry.name, S_ISLNK(entry.mode) ? Passed_Over::Link : Passed_Over::Special);
    found.bytes += entry.size;
    const QString name = QString::fromUtf8(entry.name);
    if (!Matches(name, m_pattern))
        return;
    found.files.push_back({folder + name, entry.size});
    Count(found.file_count);
}

void Walk::Count(qint16 &counter)
{
    if (counter < std::numeric_limits<qint16>::max())
        ++counter;
    else
        found.overflown = true;
}
} // namespace

Found_Files Walk_Directory(const QString &path, const QString &pattern, bool subFolders, const Walk_Step &step)
{
    Walk walk(pattern, subFolders, step);
    const QString root = Native_Path(path);
    walk.Run(root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/'));
    return std::move(walk.found);
}
} // namespace Files

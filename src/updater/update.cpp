// SPDX-License-Identifier: GPL-3.0-or-later
#include "updater/update.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/atomic_file.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <memory>
#include <vector>

namespace Update
{
namespace
{
[[noreturn]] void Refuse(const QString &what)
{
    throw Run_Time_Error(Error_Number::Path_Access, what, Failure::Path_Access);
}

/// The deepest part of a path that exists, with links resolved.
QString Real_Ground(const QString &path)
{
    QString part = path;
    while (!QFileInfo::exists(part) && !QFileInfo(part).isSymLink() && part != QFileInfo(part).path())
        part = QFileInfo(part).path();
    return QFileInfo(part).canonicalFilePath();
}

/// The full path of a name below a folder. Neither ".." nor a link may lead out of it.
QString Below(const QString &folder, const QString &name)
{
    const QString relative = QString(name).replace(QLatin1Char('\\'), QLatin1Char('/'));
    const QStringList parts = relative.split(QLatin1Char('/'));
    if (!std::all_of(parts.begin(), parts.end(), Files::Is_Plain_Name))
        Refuse(QStringLiteral("Not a name below the folder: %1").arg(name));
    // The file that is there is the one that is meant, however its name is spelled.
    QString path = Files::Native_Path(QDir(folder).filePath(relative));
    const QString root = QFileInfo(folder).exists() ? QFileInfo(folder).canonicalFilePath() : QString();
    const QString ground = Real_Ground(path);
    if (!root.isEmpty() && ground != root && !ground.startsWith(root + QLatin1Char('/')))
        Refuse(QStringLiteral("The name leads out of the folder: %1").arg(name));
    return path;
}

Item Read_Item(const Profile::Snapshot &list, const QString &section, const QString &from, const QString &to)
{
    const QString source = list.Value(section, QStringLiteral("Source"));
    const QString target = list.Value(section, QStringLiteral("Target"));
    return {Below(from, source), Below(to, target.isEmpty() ? source : target),
            list.Value(section, QStringLiteral("Sha256")).toLower()};
}

QByteArray Checked_Bytes(const Item &item)
{
    QByteArray bytes = Files::Read_Bytes(item.source);
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    if (!item.sha256.isEmpty() && item.sha256 != QLatin1String(digest))
        Refuse(QStringLiteral("The file is damaged: %1").arg(item.source));
    return bytes;
}
/// The files that an update replaces, kept beside their places until all are replaced. Going out of scope before
/// that, it puts them back.
class Way_Back
{
public:
    Way_Back() = default;
    Way_Back(const Way_Back &) = delete;
    Way_Back &operator=(const Way_Back &) = delete;
    ~Way_Back()
    {
        for (const QString &target : m_targets) {
            QFile::remove(target);
            QFile::rename(Kept(target), target); // nothing for a file that is new
        }
    }

    void Keep(const QString &target)
    {
        Files::Delete_If_Present(Kept(target));
        if (QFileInfo(target).isFile() && !QFile::copy(target, Kept(target)))
            Refuse(QStringLiteral("Not enough room to keep the old file: %1").arg(target));
        m_targets << target;
    }

    void Close()
    {
        for (const QString &target : m_targets)
            QFile::remove(Kept(target));
        m_targets.clear();
    }

private:
    static QString Kept(const QString &target) { return target + QStringLiteral(".old"); }
    QStringList m_targets;
};
} // namespace

QList<Item> Read_List(const QString &listFile, const QString &programDirectory)
{
    const Profile::Snapshot list(listFile);
    const QString setup = list.Value(QStringLiteral("Setup"), QStringLiteral("Source"));
    const QString from = Below(programDirectory, setup.isEmpty() ? QStringLiteral("update") : setup);
    QList<Item> items;
    for (int number = 1;; ++number) {
        const QString section = QStringLiteral("File %1").arg(number, 2, 10, QLatin1Char('0'));
        if (!list.Contains(section, QStringLiteral("Source")))
            return items;
        const Item item = Read_Item(list, section, from, programDirectory);
        if (std::any_of(items.begin(), items.end(), [&](const Item &other) { return other.target == item.target; }))
            Refuse(QStringLiteral("Two files for one place: %1").arg(item.target));
        items << item;
    }
}

void Apply(const QList<Item> &items)
{
    std::vector<std::unique_ptr<Files::Atomic_File>> staged;
    for (const Item &item : items) {
        const QByteArray bytes = Checked_Bytes(item);
        Files::Make_Directory(QFileInfo(item.target).path());
        staged.push_back(std::make_unique<Files::Atomic_File>(item.target));
        staged.back()->Write(bytes);
    }
    Way_Back wayBack;
    for (const Item &item : items)
        wayBack.Keep(item.target);
    for (size_t i = 0; i < staged.size(); ++i) {
        const Item &item = items.at(static_cast<qsizetype>(i));
        staged[i]->Commit();
        QFile::setPermissions(item.target, QFile::permissions(item.source) | QFile::ReadOwner | QFile::WriteOwner);
    }
    wayBack.Close();
}
} // namespace Update

// SPDX-License-Identifier: GPL-3.0-or-later
#include "updater/update.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/atomic_file.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QCryptographicHash>
#include <QDir>
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
    if (item.sha256 != QLatin1String(digest))
        Refuse(QStringLiteral("The file is not the one that the list means: %1").arg(item.source));
    return bytes;
}

/// What the user has written is never a part of an update: his settings, and databases wherever they lie.
void Check_Target(const Item &item, const QString &programDirectory)
{
    static const QStringList usersOwn{QStringLiteral("data"),     QStringLiteral("backup"),
                                      QStringLiteral("Addin"),    QStringLiteral("Pic"),
                                      QStringLiteral("report"),   QStringLiteral("Config.ini"),
                                      QStringLiteral("odbc.udl"), QStringLiteral("Error.log")};
    const QString below = QDir::cleanPath(item.target).mid(QDir::cleanPath(programDirectory).size() + 1);
    const bool isDatabase =
        Files::Is_File(item.target) && Files::Read_Bytes(item.target).startsWith(QByteArrayLiteral("SQLite format 3"));
    if (isDatabase || usersOwn.contains(below.section(QLatin1Char('/'), 0, 0), Qt::CaseInsensitive))
        Refuse(QStringLiteral("No update replaces what the user has written: %1").arg(item.target));
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
        for (const QString &target : m_targets)
            Put_Back(target);
    }

    void Keep(const QString &target)
    {
        Files::Delete_If_Present(Kept(target));
        if (const std::optional<Files::Entry> old = Files::Look(target)) {
            Files::Copy_File(target, Kept(target));
            if (old->is_runnable)
                Files::Make_Runnable(Kept(target));
        }
        m_targets << target;
    }

    void Close()
    {
        for (const QString &target : m_targets)
            Files::Delete_If_Present(Kept(target));
        m_targets.clear();
    }

private:
    /// As far as it goes: the error that led here is the one to tell.
    static void Put_Back(const QString &target)
    {
        try {
            if (Files::Is_File(Kept(target)))
                Files::Rename_File(Kept(target), QFileInfo(target).fileName());
            else
                Files::Delete_If_Present(target);
        } catch (const Run_Time_Error &) {
        }
    }
    static QString Kept(const QString &target) { return target + QStringLiteral(".old"); }
    QStringList m_targets;
};
} // namespace

QList<Item> Read_List(const QString &listFile, const QString &programDirectory)
{
    Files::Guard(programDirectory);
    const Profile::Snapshot list(listFile);
    const QString setup = list.Value(QStringLiteral("Setup"), QStringLiteral("Source"));
    const QString from = Below(programDirectory, setup.isEmpty() ? QStringLiteral("update") : setup);
    QList<Item> items;
    for (int number = 1;; ++number) {
        const QString section = QStringLiteral("File %1").arg(number, 2, 10, QLatin1Char('0'));
        if (!list.Contains(section, QStringLiteral("Source")))
            return items;
        const Item item = Read_Item(list, section, from, programDirectory);
        Check_Target(item, programDirectory);
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
        if (const std::optional<Files::Entry> source = Files::Look(item.source); source && source->is_runnable)
            Files::Make_Runnable(item.target);
    }
    wayBack.Close();
}
} // namespace Update

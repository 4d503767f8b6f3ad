// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/directory_import.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/system_log.h"
#include "documents/document_store.h"
#include "exchange/directory_import_sql.h"
#include "exchange/report.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "tree/folder_editing.h"

#include <QHash>
#include <QLocale>
#include <QSet>
#include <numeric>

namespace
{
constexpr QChar Slash = u'/';

QString Text(const char *key)
{
    return Pack_Text("Frm_FileImport", key);
}

QString Name_Of(const QString &path)
{
    return path.mid(path.lastIndexOf(Slash) + 1).trimmed();
}

QString Extension_Of(const QString &name)
{
    return name.mid(name.lastIndexOf(QLatin1Char('.')) + 1).toUpper();
}

QString Title_Of(const QString &name, Title_Rule rule)
{
    constexpr qsizetype Last_Letters = 4;
    return rule == Title_Rule::Whole_Name ? name : name.left(std::max<qsizetype>(name.size() - Last_Letters, 0));
}

/// Names of the folders between the directory and the file. An empty one, as a directory without a final separator
/// leaves in front, ends them.
QStringList Folder_Names(const QString &path, const QString &directory)
{
    QString relative = path;
    QStringList names = relative.remove(Files::With_Slashes(directory)).trimmed().split(Slash);
    names.removeLast();
    const qsizetype end = names.indexOf(QString());
    return end < 0 ? names : names.first(end);
}

/// The sizes of the plan's files, as they were found.
QList<qint64> Sizes_Of(const Directory_Import &plan)
{
    QHash<QString, qint64> found;
    for (const Files::Found_File &file : plan.found.files)
        found.insert(Row_Of(file).Path(), file.size);
    QList<qint64> sizes;
    for (const QString &path : plan.paths)
        sizes << found.value(path);
    return sizes;
}

/// One run of the import.
class Import
{
public:
    Import(const Directory_Import &plan, const std::function<void(const QString &, const QString &)> &added)
        : m_plan(plan), m_added(added), m_report(QStringLiteral("Log_"))
    {
    }

    void Write_Head() const;
    void Take(qsizetype number, const QString &path);
    void Write_End();
    Import_Result result;

private:
    QString Make_Folders(const QString &path);
    void Write_Sum(qint64 leftOut) const;

    const Directory_Import &m_plan;
    const std::function<void(const QString &, const QString &)> &m_added;
    Report m_report;
    QString m_lastFolder; ///< name of the folder that was made or found last
};

void Import::Write_Head() const
{
    m_report.Line(QStringLiteral("-------Zelqor--------"));
    m_report.Line(QStringLiteral("Count:") + Found_Text(m_plan.found));
    m_report.Line(QStringLiteral(" Start：") + Report_Time());
    m_report.Line(QStringLiteral("log："));
}

/// @returns the id of the folder that the file goes to, "" when it cannot be made
QString Import::Make_Folders(const QString &path)
{
    QString folder = m_plan.folder;
    for (const QString &name : Folder_Names(path, m_plan.directory)) {
        folder = MakeExistCateId(folder, name);
        if (folder.isEmpty())
            return {};
        m_lastFolder = name;
    }
    return folder;
}

void Import::Take(qsizetype number, const QString &path)
{
    const QString name = Name_Of(path);
    const QString folder = Make_Folders(path);
    Stored_File stored;
    if (folder.isEmpty())
        stored.trouble.description = Text("_No_Folder");
    else
        stored = Store_File(path, folder, QString(), Title_Of(name, m_plan.title), Extension_Of(name), false);
    if (stored.id.isEmpty()) {
        result.failed.append({path, Error_Text(stored.trouble).replace(QLatin1Char('\n'), QLatin1Char(' '))});
    } else {
        ++result.done;
        if (m_added)
            m_added(name, stored.id);
    }
    const QString line = QString::number(number + 1) + QLatin1Char(' ') + path + Text("_Node") + m_lastFolder +
                         Text(stored.id.isEmpty() ? "_OK" : "_No");
    m_report.Line(line);
    Add_Log(Log_Type::Imported, line);
}

/// What was found is what was imported, failed and left out. The four are counted apart, so that a file that got lost
/// would show.
void Import::Write_Sum(qint64 leftOut) const
{
    const auto failed = static_cast<qint64>(result.failed.size());
    const auto found = static_cast<qint64>(m_plan.found.files.size()) + static_cast<qint64>(m_plan.found.passed.size());
    QString sum = Text("_Sum").arg(found).arg(result.done).arg(failed).arg(leftOut);
    if (found != result.done + failed + leftOut)
        sum += Text("_Sum_Differs");
    m_report.Line(sum);
}

void Import::Write_End()
{
    for (const Failed_Item &item : std::as_const(result.failed))
        m_report.Line(item.name + Text("_Reason") + item.reason);
    if (m_plan.found.overflown)
        m_report.Line(Overflow_Text());
    qint64 leftOut = 0;
    for (const Files::Passed_Entry &entry : m_plan.found.passed) {
        m_report.Line(entry.path + Text("_Reason") + Passed_Text(entry.why));
        ++leftOut;
    }
    QSet<QString> taken;
    for (qsizetype i = 0; i < result.done + result.failed.size(); ++i)
        taken.insert(m_plan.paths[i]);
    for (const Files::Found_File &file : m_plan.found.files)
        leftOut += taken.contains(Row_Of(file).Path()) ? 0 : 1;
    Write_Sum(leftOut);
    m_report.Line(QStringLiteral(" End：") + Report_Time());
    result.report = m_report.Path();
}
} // namespace

Import_Row Row_Of(const Files::Found_File &file)
{
    Import_Row row;
    row.name = Name_Of(file.path);
    row.folder = file.path;
    row.folder.remove(row.name);
    row.size = QString::number(file.size) + Text("_Byte");
    row.type = Extension_Of(row.name);
    return row;
}

QString Overflow_Text()
{
    constexpr int Overflow = 6; // the run-time's own number
    return Text("_ErrNo") + QString::number(Overflow);
}

QString Found_Text(const Files::Found_Files &found)
{
    return Text("_FileNum") + QString::number(found.file_count) + Text("_DirNum") + QString::number(found.folder_count);
}

QString Passed_Text(Files::Passed_Over why)
{
    constexpr const char *keys[] = {"_Passed_Link", "_Passed_Special", "_Passed_Name", "_Passed_Unreadable"};
    return Text(keys[static_cast<int>(why)]);
}

QStringList Known_Paths(const Directory_Import &plan)
{
    QHash<QString, QSet<QString>> titles; // by folder
    const auto titlesIn = [&](const QString &folder) -> const QSet<QString> & {
        if (const auto known = titles.constFind(folder); known != titles.constEnd())
            return *known;
        QSet<QString> found;
        Recordset rows;
        for (rows.Open(Sql_Text(Sql::Titles_In_Folder, folder), App().Conn_Str); !rows.Eof(); rows.MoveNext())
            found.insert(rows[0].Text());
        return *titles.insert(folder, found);
    };
    QStringList known;
    for (const QString &path : plan.paths) {
        Resume_Next([&] {
            QString folder = plan.folder;
            for (const QString &name : Folder_Names(path, plan.directory)) {
                folder = Find_Cate_Id(folder, name);
                if (folder.isEmpty())
                    return;
            }
            if (titlesIn(folder).contains(Title_Of(Name_Of(path), plan.title)))
                known.append(path);
        });
    }
    Clear_Pending();
    return known;
}

Import_Result Import_Directory(const Directory_Import &plan, Work &work,
                               const std::function<void(const QString &name, const QString &code_id)> &added)
{
    Import import(plan, added);
    import.Write_Head();
    const QList<qint64> sizes = Sizes_Of(plan);
    const qint64 all = std::accumulate(sizes.begin(), sizes.end(), qint64(0));
    qint64 behind = 0;
    for (qsizetype i = 0; i < plan.paths.size(); behind += sizes[i++]) {
        const QString bytes =
            QStringLiteral("  (%1 / %2)").arg(QLocale().formattedDataSize(behind), QLocale().formattedDataSize(all));
        if (!work.Next(i, plan.paths.size(), Name_Of(plan.paths[i]) + bytes)) {
            import.result.stopped = true;
            break;
        }
        import.Take(i, plan.paths[i]);
    }
    import.Write_End();
    return import.result;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/directory_export.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/stored_stream.h"
#include "exchange/directory_export_sql.h"
#include "exchange/report.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "users/scrambling.h"

#include <QFileInfo>
#include <QStorageInfo>
#include <optional>

namespace
{
/// The coder does not say why it failed: with less room on the disk than this, that is why.
constexpr qint64 Least_Room = 1 << 20;

QString Text(const char *key)
{
    return Pack_Text("Frm_DataExport_Node_Files", key);
}

/// A folder of the picked one's tree.
struct Folder {
    QString id;
    QString name;
    QString lock;
};

QList<Folder> Folders_Of(const QString &id)
{
    QList<Folder> folders;
    Recordset rows;
    for (rows.Open(Sql_Text(Sql::Exported_Folders, id), App().Conn_Str); !rows.Eof(); rows.MoveNext())
        folders.append({rows[QStringLiteral("cate_ID")].Text(), rows[QStringLiteral("cate_Name")].Text(),
                        rows[QStringLiteral("Cate_pass")].Text()});
    return folders;
}

[[noreturn]] void Refuse_Name(const QString &name)
{
    throw Run_Time_Error(Error_Number::Path_Access, Text("_Bad_Name") + name);
}

/// One run of the export.
class Export
{
public:
    Export(const QString &folderId, const QString &directory, const Export_Questions &ask, Work &work)
        : m_top(folderId), m_root(Files::Native_Path(directory)), m_ask(ask), m_work(work),
          m_report(QStringLiteral("Export_"))
    {
    }

    void Write_Head() const;
    void Walk();
    void Write_End();
    Export_Result result;

private:
    [[nodiscard]] bool Opens(const Folder &folder) const;
    [[nodiscard]] QString Directory_Of(const Folder &folder) const;
    void Take_Folder(const Folder &folder);
    void Take_Document(Recordset &row, const QString &directory);
    void Write_Document(const QString &staging, const QString &target, Field stream);
    [[nodiscard]] QString Target(const QString &directory, const QString &title, const QString &type);
    [[nodiscard]] Replacing Ask_To_Replace(const QString &title);
    void Fail(const QString &name, const QString &reason);

    QString m_top;
    QString m_root;
    const Export_Questions &m_ask;
    Work &m_work;
    Report m_report;
    qint64 m_all = 0;
    qint64 m_behind = 0;
    std::optional<Replacing> m_always; ///< what the user has said for all files
    bool m_over = false;               ///< nothing more is written
};

void Export::Write_Head() const
{
    m_report.Line(QStringLiteral("-------Log--------"));
    m_report.Line(QStringLiteral("Node: ") + m_top);
    m_report.Line(QStringLiteral(" Start:") + Report_Time());
    m_report.Line(QStringLiteral("------："));
}

void Export::Walk()
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Of_Exported, m_top), App().Conn_Str);
    m_all = count[0].Number();
    for (const Folder &folder : Folders_Of(m_top)) {
        if (m_over)
            return;
        if (!Opens(folder)) {
            result.wrong_password = true;
            return;
        }
        Take_Folder(folder);
    }
}

bool Export::Opens(const Folder &folder) const
{
    return folder.lock.isEmpty() || m_ask.password(folder.name) == Unscramble_Text(folder.lock);
}

/// The names from the picked folder down to this one.
QString Export::Directory_Of(const Folder &folder) const
{
    constexpr qsizetype Segment = 3;
    QString directory = m_root;
    for (qsizetype length = std::max(m_top.size(), Segment); length <= folder.id.size(); length += Segment) {
        Recordset step;
        step.Open(Sql_Text(Sql::Name_On_The_Way, folder.id.left(length)), App().Conn_Str);
        const QString name = step.Eof() ? QString() : step[QStringLiteral("Cate_Name")].Text();
        if (!Files::Is_Plain_Name(name))
            Refuse_Name(name);
        directory += QLatin1Char('/') + name;
    }
    return directory;
}

void Export::Take_Folder(const Folder &folder)
{
    QString directory;
    const bool made = Resume_Next([&] {
        directory = Directory_Of(folder);
        Files::Make_Directory(directory);
    });
    if (!made)
        Fail(folder.name, Error_Text(Err()));
    Recordset rows;
    for (rows.Open(Sql_Text(Sql::Exported_Documents, folder.id), App().Conn_Str); !rows.Eof() && !m_over;
         rows.MoveNext()) {
        const QString title = rows[QStringLiteral("Code_Title")].Text();
        result.stopped = !m_work.Next(m_behind++, m_all, title);
        m_over = result.stopped;
        if (!m_over && made)
            Take_Document(rows, directory);
        else if (!m_over)
            Fail(title, Text("_No_Directory"));
    }
}

Replacing Export::Ask_To_Replace(const QString &title)
{
    if (m_always)
        return *m_always;
    const Replacing answer = m_ask.replace(title);
    if (answer == Replacing::All || answer == Replacing::None)
        m_always = answer;
    return answer;
}

/// The file that a document becomes. One that stands there is replaced only when the user says so; the second name is
/// taken whatever stands there. @returns "" when the user ends the run
QString Export::Target(const QString &directory, const QString &title, const QString &type)
{
    const QString name = title + QLatin1Char('.') + type;
    if (!Files::Is_Plain_Name(name))
        Refuse_Name(name);
    QString first = directory + QLatin1Char('/') + name;
    if (!QFileInfo::exists(first))
        return first;
    switch (Ask_To_Replace(title)) {
    case Replacing::Yes:
    case Replacing::All:
        return first;
    case Replacing::Stop:
        return {};
    case Replacing::No:
    case Replacing::None:
        break;
    }
    return directory + QLatin1Char('/') + title + QStringLiteral("~1.") + type;
}

void Export::Take_Document(Recordset &row, const QString &directory)
{
    const QString title = row[QStringLiteral("Code_Title")].Text();
    const bool written = Resume_Next([&] {
        const QString type = row[QStringLiteral("Code_Type")].Is_Null() ? QStringLiteral("RTF")
                                                                        : row[QStringLiteral("Code_Type")].Text();
        const QString target = Target(directory, title, type);
        if (target.isEmpty()) {
            m_over = result.stopped = true;
            return;
        }
        const bool hasStream = !row[QStringLiteral("Code_Content_IO")].Is_Null();
        Write_Document(directory + QLatin1Char('/') + title + QLatin1Char('.') + type + QStringLiteral(".dd"), target,
                       row[hasStream ? QStringLiteral("Code_Content_IO") : QStringLiteral("Code_Content")]);
        m_report.Line(Text("_ExpFile") + QFileInfo(target).fileName() + Text("_ExpOK"));
        ++result.done;
    });
    if (!written) {
        m_over = result.disk_full = Err().failure == Failure::Disk_Full;
        Fail(title, Error_Text(Err()));
        Error_Log(QStringLiteral("Frm_DataExport_Node_Files\\Cmd_Export"));
    }
}

/// A document with a password is never written.
void Export::Write_Document(const QString &staging, const QString &target, Field stream)
{
    struct Staged {
        ~Staged()
        {
            Resume_Next([this] { Files::Delete_If_Present(path); });
        }
        QString path;
    };
    Files::Delete_If_Present(staging);
    const Staged staged{staging};
    Files::Write_Bytes(staging, stream.Bytes(), Files::Durability::Staging);
    if (!Read_Pass_Tail(staging).isEmpty())
        throw Run_Time_Error(Error_Number::Permission_Denied, Text("_ExpNo"));
    if (!Run_Coder("d", staging, target)) {
        const bool full = QStorageInfo(m_root).bytesAvailable() < Least_Room;
        throw Run_Time_Error(Error_Number::Path_Access, target, full ? Failure::Disk_Full : Failure::No_Output);
    }
    Files::Give_Away(target);
}

void Export::Fail(const QString &name, const QString &reason)
{
    result.failed.append({name, reason});
    QString line = reason;
    m_report.Line(Text("_ExpFile") + name + line.replace(QLatin1Char('\n'), QLatin1Char(' ')));
}

void Export::Write_End()
{
    const qint64 failed = static_cast<qint64>(result.failed.size());
    result.sum = Text("_Sum").arg(m_all).arg(result.done).arg(failed).arg(m_all - result.done - failed);
    m_report.Line(result.sum);
    m_report.Line(QStringLiteral(" End：") + Report_Time());
    result.report = m_report.Path();
}
} // namespace

Export_Result Export_Directory(const QString &folderId, const QString &directory, const Export_Questions &ask,
                               Work &work)
{
    Files::Guard(Files::Native_Path(directory)); // no link in it leads elsewhere
    Export run(folderId, directory, ask, work);
    run.Write_Head();
    run.Walk();
    run.Write_End();
    return run.result;
}

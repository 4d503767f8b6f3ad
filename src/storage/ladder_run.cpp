// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/ladder_run.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"

#include <QFileInfo>
#include <utility>

namespace
{
/// Opens a statement as a rung does and asks it something; the given answer when it does not open.
template <class Answer, class Question>
Answer Ask(const QString &connStr, const char16_t *statement, Answer without, Question question)
{
    const bool opened = Resume_Next([&] {
        Recordset rows;
        rows.CursorType = Cursor_Type::Keyset;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(Sql_Text(statement), connStr);
        without = question(rows);
    });
    if (!opened)
        Clear_Pending();
    return without;
}

bool Is_Of_The_Machine(Failure failure)
{
    return failure == Failure::Disk_Full || failure == Failure::Locked || failure == Failure::Read_Only ||
           failure == Failure::Path_Access;
}
} // namespace

Ladder_Run::Ladder_Run(QString connStr, const Ladder_Callbacks &callbacks)
    : m_connStr(std::move(connStr)), m_file(Database_Engine::File_Of(m_connStr)), m_callbacks(callbacks)
{
}

bool Ladder_Run::Opens(const char16_t *statement, const QString &column) const
{
    return Ask(m_connStr, statement, false, [&](Recordset &rows) {
        if (!column.isEmpty())
            static_cast<void>(rows[column]);
        return true;
    });
}

bool Ladder_Run::Has_Row(const char16_t *statement) const
{
    return Ask(m_connStr, statement, false, [](const Recordset &rows) { return !rows.Eof(); });
}

qint32 Ladder_Run::Defined_Size(const char16_t *statement, const QString &column) const
{
    return Ask(m_connStr, statement, -1, [&](Recordset &rows) { return rows[column].Defined_Size(); });
}

qint64 Ladder_Run::Count(const char16_t *statement) const
{
    return Ask(m_connStr, statement, qint64(-1), [](Recordset &rows) { return rows[0].Number(); });
}

void Ladder_Run::Act(const std::function<void()> &action)
{
    if (Resume_Next([&] { Database_Engine::One_Action(m_connStr, action); }))
        return;
    if (m_trouble.number == 0 && Is_Of_The_Machine(Err().failure))
        m_trouble = Err();
    Clear_Pending();
}

void Ladder_Run::Execute(const QString &statement) const
{
    Pause();
    Run_Statement(statement, m_connStr);
}

bool Ladder_Run::Show_Upgrade_Window() const
{
    return m_callbacks.upgrade_window && m_callbacks.upgrade_window(m_connStr);
}

void Ladder_Run::Pause() const
{
    if (m_callbacks.pause)
        m_callbacks.pause();
}

void Ladder_Run::Copy_To(const QString &path) const
{
    if (m_file.isEmpty() || QFileInfo::exists(path))
        return;
    try {
        Files::Make_Directory(QFileInfo(path).path());
        Database_Engine::Copy_Database(m_connStr, path);
    } catch (const Run_Time_Error &error) {
        // Always the number of a path: start-up reads more into some others.
        throw Run_Time_Error(Error_Number::Path_Access,
                             Pack_Text("Main", "_CopyError").arg(path) + QLatin1Char('\n') + error.description,
                             error.failure);
    }
}

QString Copies_Folder()
{
    return Files::Native_Path(App().App_Path + QStringLiteral("data/bak/"));
}

QString Quoted(const QString &text)
{
    return QString(text).replace(QLatin1Char('\''), QStringLiteral("''"));
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Whole copies of a database. The lock, the journal and the moment of a copy are SQLite's; what is here makes sure that
// a copy is complete before it counts.

#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/engine_error.h"
#include "platform/database/file_layer.h"
#include "platform/files/paths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
const QString Copy_Mark = u"-copy-"_s;

[[noreturn]] void Throw_System_Error(const QString &path)
{
    const bool full = errno == ENOSPC || errno == EDQUOT;
    throw Engine_Error::Failed(
        u"The copy '%1' cannot be written: %2."_s.arg(path, QString::fromLocal8Bit(std::strerror(errno))),
        full ? Failure::Disk_Full : Failure::Path_Access);
}

/// A new file beside a place, for its owner only. It goes with the object, unless it took the place.
class Side_File
{
public:
    explicit Side_File(const QString &place) : m_place(QFile::encodeName(place)), m_name(m_place + "-copy-XXXXXX")
    {
        m_file = ::mkostemp(m_name.data(), O_CLOEXEC);
        if (m_file < 0)
            Throw_System_Error(Path());
    }
    ~Side_File()
    {
        if (!m_name.isEmpty())
            ::unlink(m_name.constData());
        ::close(m_file);
    }
    Side_File(const Side_File &) = delete;
    Side_File &operator=(const Side_File &) = delete;

    [[nodiscard]] QString Path() const { return QFile::decodeName(m_name); }
    void Take_Place()
    {
        if (::fsync(m_file) != 0 || ::rename(m_name.constData(), m_place.constData()) != 0)
            Throw_System_Error(Path());
        m_name.clear();
        const QByteArray folder = QFile::encodeName(QFileInfo(QFile::decodeName(m_place)).absolutePath());
        const int opened = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (opened >= 0) {
            ::fsync(opened); // not every file system can, and the name is given all the same
            ::close(opened);
        }
    }

private:
    QByteArray m_place;
    QByteArray m_name;
    int m_file = -1;
};

/// Copies that a killed program left beside a place: six letters or digits end their names.
void Remove_Left_Overs(const QString &place)
{
    const QFileInfo info(place);
    const QString name = info.fileName() + Copy_Mark;
    for (const QString &entry : info.absoluteDir().entryList(QDir::Files | QDir::Hidden)) {
        if (entry.startsWith(name) && entry.size() == name.size() + 6)
            QFile::remove(info.absoluteDir().filePath(entry));
    }
}

/// A copy as a database. Nobody else knows it, and a broken one is thrown away: it needs no journal.
class Copied_Database
{
public:
    explicit Copied_Database(const QString &path) : m_path(path)
    {
        if (sqlite3_open_v2(path.toUtf8().constData(), &m_db, SQLITE_OPEN_READWRITE, File_Layer::Name()) != SQLITE_OK ||
            sqlite3_exec(m_db, "PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF", nullptr, nullptr, nullptr) !=
                SQLITE_OK) {
            const Run_Time_Error error = Error();
            sqlite3_close(m_db);
            throw error;
        }
    }
    ~Copied_Database() { sqlite3_close(m_db); }
    Copied_Database(const Copied_Database &) = delete;
    Copied_Database &operator=(const Copied_Database &) = delete;

    [[nodiscard]] sqlite3 *Handle() const { return m_db; }
    [[nodiscard]] Run_Time_Error Error() const { return Engine_Error::From_Sqlite(m_db, m_path); }

private:
    QString m_path;
    sqlite3 *m_db = nullptr;
};

/// The first column of a query, row by row.
QByteArrayList Column_Of(sqlite3 *db, const QByteArray &sql, const QString &path)
{
    sqlite3_stmt *statement = nullptr;
    int code = sqlite3_prepare_v2(db, sql.constData(), -1, &statement, nullptr);
    QByteArrayList cells;
    while (code == SQLITE_OK && sqlite3_step(statement) == SQLITE_ROW)
        cells << reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
    code = sqlite3_finalize(statement);
    if (code != SQLITE_OK)
        throw Engine_Error::From_Sqlite(db, path);
    return cells;
}

/// How many rows each table has, virtual ones, which are none of the file's own, left out.
QByteArrayList Row_Counts(sqlite3 *db, const QString &path)
{
    QByteArrayList counts;
    const QByteArray tables = "SELECT name FROM sqlite_schema WHERE type='table' AND rootpage>0 ORDER BY name";
    for (const QByteArray &table : Column_Of(db, tables, path)) {
        const QByteArray quoted = '"' + QByteArray(table).replace("\"", "\"\"") + '"';
        counts << table + ':' + Column_Of(db, "SELECT count(*) FROM " + quoted, path).value(0);
    }
    return counts;
}

void Check_Copy(Connection &original, const Copied_Database &copy)
{
    const QString &path = original.Path();
    if (Column_Of(copy.Handle(), "PRAGMA quick_check(1)", path) != QByteArrayList{"ok"} ||
        Row_Counts(copy.Handle(), path) != Row_Counts(original.Handle(), path))
        throw Engine_Error::Damaged(path);
}

/// Writes all pages of a database over another one as one commit.
void Copy_Pages(sqlite3 *from, sqlite3 *to, const QString &path)
{
    sqlite3_backup *copy = sqlite3_backup_init(to, "main", from, "main");
    const int code = copy != nullptr ? sqlite3_backup_step(copy, -1) : sqlite3_errcode(to);
    const int end = sqlite3_backup_finish(copy);
    if (code == SQLITE_DONE && end == SQLITE_OK)
        return;
    if (code == SQLITE_BUSY || code == SQLITE_LOCKED)
        throw Engine_Error::Failed(u"The database file '%1' is locked by another program."_s.arg(path),
                                   Failure::Locked);
    throw Engine_Error::From_Sqlite(to, path);
}

/// The lock of a connection stays between its transactions: nobody else reads or writes the file until it is let go.
/// The lock comes first: one that waited for it in that mode would keep the others from finishing.
void Lock_Out_Others(Connection &connection)
{
    connection.Execute("BEGIN EXCLUSIVE; PRAGMA main.locking_mode = EXCLUSIVE; COMMIT");
}

/// The journal, which is kept with the lock, goes with it.
void Let_Others_In(Connection &connection)
{
    connection.Execute("PRAGMA main.locking_mode = NORMAL; SELECT 1 FROM sqlite_schema");
}
} // namespace

namespace Database_Engine
{
void CompactDatabase(const QString &connectionString)
{
    Let_Go(connectionString);
    const std::shared_ptr<Connection> original = Connection::Open(File_Of(connectionString));
    Lock_Out_Others(*original);
    Remove_Left_Overs(original->Path()); // nobody is at work on one: he would have the lock
    {
        const Side_File file(original->Path());
        sqlite3_limit(original->Handle(), SQLITE_LIMIT_ATTACHED, 1); // the copy is attached while it is written
        original->Change("VACUUM INTO ?1", {file.Path()});
        const Copied_Database copy(file.Path());
        Check_Copy(*original, copy);
        Copy_Pages(copy.Handle(), original->Handle(), original->Path());
    }
    Let_Others_In(*original);
}

void Copy_Database(const QString &connectionString, const QString &path)
{
    const QString place = Files::Native_Path(path);
    const std::shared_ptr<Connection> original = Connection::Open(File_Of(connectionString));
    Remove_Left_Overs(place);
    Side_File file(place);
    {
        const Copied_Database copy(file.Path());
        original->Execute("BEGIN; SELECT 1 FROM sqlite_schema");
        Copy_Pages(original->Handle(), copy.Handle(), file.Path());
        Check_Copy(*original, copy);
        original->Execute("COMMIT");
    }
    file.Take_Place();
}
} // namespace Database_Engine

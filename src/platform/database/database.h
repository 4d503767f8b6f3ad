// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <utility>

struct Watched_Query;

/// Connection strings, files and transactions of the database engine.
///
/// A connection string names either a file, "Provider=...;Data Source=PATH;Persist Security Info=False", or a data
/// source, "File Name=PATH OF AN .udl FILE". The engine keeps one connection per string and thread, with its prepared
/// statements, until it is let go or the thread ends.
namespace Database_Engine
{
/// The connection string of a database file; PATH is the system's spelling or a native one.
QString File_Connection_String(const QString &path);
/// The native path of the file that a connection string names, "" for a data source.
/// @throws Run_Time_Error when it names neither.
QString File_Of(const QString &connectionString);

/// Creates an empty database file. @throws Run_Time_Error when the file exists or cannot be made.
void Create_File(const QString &connectionString);

/// The file belongs to this program from now on: what was left as it came (its kind of journal, its indexes) becomes
/// as the engine keeps it. Merely opening a file changes nothing in it.
/// @throws Run_Time_Error when another program keeps it from that.
void Settle(const QString &connectionString);

/// Compacts a database where it stands, under a lock that keeps others out from the first look to the last write. A
/// compacted copy is made beside it and compared with it, and its pages then replace the old ones as one commit; after
/// a failure or a kill the database is as it was. Connections of this thread are let go first.
/// @throws Run_Time_Error when it could not be done.
void CompactDatabase(const QString &connectionString);

/// Copies a database as it is at one moment, whoever writes it meanwhile. The copy is compared with the database before
/// it takes the place of a file at `path`; after a failure that file is as it was.
/// @throws Run_Time_Error when it could not be done.
void Copy_Database(const QString &connectionString, const QString &path);

/// Closes the kept connections to a file (all of them with no argument), so that it can be copied, replaced or
/// removed. Recordsets still open on it keep theirs until they close.
void Let_Go(const QString &connectionString = {});

/// Text columns by which long lists are put in order: the engine keeps indexes of its own on them, in every table that
/// has them beside a text key. To be called before a file is opened.
void Keep_In_Order(const QStringList &columns);

/// Groups the statements of one user action: they are committed together when `body` ends, whichever way it ends,
/// and a process that dies before leaves none of them. Groups nest; the outermost commits.
/// @throws what `body` throws, and Run_Time_Error when the commit fails (then nothing was written).
void One_Action(const QString &connectionString, const std::function<void()> &body);

/// The short form of a date, everywhere: "YYYY" sep "MM" sep "DD", followed by " HH:MM:SS" when the time of day is
/// not midnight. `sep` is the separator that Set_Date_Separator set, "-" at first.
QString Short_Date(const QDateTime &date);
void Set_Date_Separator(QChar separator);

/// The date that a text means in a statement or a date field, invalid when it means none. Year first, with "-", "/"
/// or "." between; the time of day, "HH:MM" or "HH:MM:SS", may follow.
QDateTime Date_From_Text(const QString &text);

/// While it lives, the queries of its thread can be stopped, and the first one says from time to time how far it is.
/// They also give way to another thread that wants to write. Either way they throw Failure::Stopped; the caller knows
/// whether it stopped them, and runs them anew if not.
class Watch
{
public:
    /// @param step  gets the rows that the query has looked at, and how many there are (0 while that is not known);
    /// false stops it
    explicit Watch(std::function<bool(qint64 rows, qint64 all)> step);
    ~Watch();
    Watch(const Watch &) = delete;
    Watch &operator=(const Watch &) = delete;

private:
    friend struct ::Watched_Query;
    std::function<bool(qint64 rows, qint64 all)> m_step;
    std::function<std::pair<qint64, qint64>()> m_progress; ///< of the query that is watched
};
} // namespace Database_Engine

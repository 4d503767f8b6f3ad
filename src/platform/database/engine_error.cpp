// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/engine_error.h"

#include "platform/database/file_layer.h"
#include "platform/database/server.h"

#include <QFileInfo>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace Engine_Error
{
namespace
{
constexpr qint32 Row_Not_Found_Number = static_cast<qint32>(0x80040E38);
constexpr qint32 Unknown_Field_Number = 3265;
constexpr qint32 Object_Closed_Number = 3704;
constexpr qint32 Read_Only_Recordset_Number = 3251;
} // namespace

Run_Time_Error Syntax(const QString &detail)
{
    return {Error_Number::Db_Syntax, u"Syntax error in the statement: %1."_s.arg(detail), Failure::Syntax};
}

Run_Time_Error Missing_Table(const QString &name)
{
    return {Error_Number::Db_Missing_Table, u"Could not find the table '%1'. Make sure it exists."_s.arg(name),
            Failure::Missing_Table};
}

Run_Time_Error Missing_Column(const QString &name)
{
    return {Error_Number::Db_Missing_Column,
            u"No value given for one or more required parameters. There is no column '%1'."_s.arg(name),
            Failure::Missing_Column};
}

Run_Time_Error Ambiguous_Column(const QString &name)
{
    return Syntax(u"the column '%1' could be of more than one table"_s.arg(name));
}

Run_Time_Error Type_Mismatch(const QString &detail)
{
    return {Error_Number::Db_Type_Mismatch, u"Data type mismatch: %1."_s.arg(detail), Failure::Type_Mismatch};
}

Run_Time_Error Too_Long(const QString &column, int size)
{
    return {Error_Number::Db_Too_Long,
            u"The text is too long for the column '%1', which holds %2 characters."_s.arg(column).arg(size),
            Failure::Too_Long};
}

Run_Time_Error File_Missing(const QString &path)
{
    return {Error_Number::Db_Failed, u"Could not find the database file '%1'."_s.arg(path), Failure::File_Not_Found};
}

Run_Time_Error Not_A_Database(const QString &path, const QString &why)
{
    return {Error_Number::Db_Failed, u"The file '%1' is not a database: %2."_s.arg(path, why), Failure::Not_A_Database};
}

Run_Time_Error Damaged(const QString &path)
{
    return {Error_Number::Db_Failed, u"The database file '%1' is damaged."_s.arg(path), Failure::Damaged};
}

Run_Time_Error Failed(const QString &what, Failure failure)
{
    return {Error_Number::Db_Failed, what, failure};
}

Run_Time_Error Stopped()
{
    return Failed(u"The statement was stopped."_s, Failure::Stopped);
}

Run_Time_Error Too_Large()
{
    return Failed(u"A value of the database is larger than 256 MB, or than the memory that is left."_s,
                  Failure::Too_Large);
}

Run_Time_Error Duplicate(const QString &key)
{
    return Failed(u"The row would duplicate a key that must be unique (%1)."_s.arg(key), Failure::Duplicate);
}

Run_Time_Error No_Current_Row()
{
    return {Error_Number::No_Current_Row, u"There is no current row: the recordset stands at its beginning or end."_s,
            Failure::No_Current_Row};
}

Run_Time_Error Row_Is_Gone()
{
    return {Row_Not_Found_Number, u"The row to be changed is no longer there."_s, Failure::No_Current_Row};
}

Run_Time_Error Unknown_Field(const QString &name)
{
    return {Unknown_Field_Number, u"The recordset has no field '%1'."_s.arg(name), Failure::Missing_Column};
}

Run_Time_Error Closed()
{
    return {Object_Closed_Number, u"The operation needs an open recordset."_s};
}

Run_Time_Error Read_Only_Recordset()
{
    return {Read_Only_Recordset_Number, u"The recordset cannot be changed: it is read-only."_s, Failure::Read_Only};
}

namespace
{
Run_Time_Error From_Constraint(int extended, const QString &message)
{
    if (extended == SQLITE_CONSTRAINT_NOTNULL) {
        return Failed(u"A column that needs a value was left empty (%1)."_s.arg(message), Failure::Null_Value);
    }
    if (extended == SQLITE_CONSTRAINT_UNIQUE || extended == SQLITE_CONSTRAINT_PRIMARYKEY ||
        extended == SQLITE_CONSTRAINT_ROWID) {
        return Duplicate(message);
    }
    return Failed(u"The change breaks a rule of the table (%1)."_s.arg(message));
}
} // namespace

Run_Time_Error From_Sqlite(sqlite3 *db, const QString &path)
{
    const int extended = sqlite3_extended_errcode(db);
    const QString message = QString::fromUtf8(sqlite3_errmsg(db));
    switch (extended & 0xff) {
    case SQLITE_CONSTRAINT:
        return From_Constraint(extended, message);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return Failed(u"The database file '%1' is locked by another program."_s.arg(path), Failure::Locked);
    case SQLITE_READONLY:
        return Failed(u"The database file '%1' is read-only."_s.arg(path), Failure::Read_Only);
    case SQLITE_FULL:
        return Failed(u"The disk is full: '%1' could not be written."_s.arg(path), Failure::Disk_Full);
    case SQLITE_NOTADB:
        return Not_A_Database(path, u"its content has another form"_s);
    case SQLITE_CORRUPT:
        return Damaged(path);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
        if (const QString why = File_Layer::Trouble_Beside(QFileInfo(path).canonicalFilePath()); !why.isEmpty()) {
            return Failed(u"The database file '%1' is not opened: %2."_s.arg(path, why), Failure::Foreign_Journal);
        }
        return Failed(u"The database file '%1' cannot be opened."_s.arg(path), Failure::Path_Access);
    case SQLITE_IOERR:
        return Failed(u"The database file '%1' cannot be read or written (%2)."_s.arg(path, message),
                      Failure::Path_Access);
    case SQLITE_INTERRUPT:
        return Stopped();
    case SQLITE_TOOBIG:
    case SQLITE_NOMEM:
        return Too_Large();
    case SQLITE_ERROR:
        return Syntax(message);
    default:
        return Failed(u"The database reported: %1."_s.arg(message));
    }
}
namespace
{
/// What a state of a server means, by how it begins: the first row that fits.
struct State_Meaning {
    const char *state;
    qint32 number;
    Failure failure;
};

constexpr State_Meaning State_Meanings[] = {
    {"42P01", Error_Number::Db_Missing_Table, Failure::Missing_Table},
    {"42703", Error_Number::Db_Missing_Column, Failure::Missing_Column},
    {"ZQ001", Error_Number::Db_Type_Mismatch, Failure::Type_Mismatch},
    {"ZQ002", Error_Number::Db_Too_Long, Failure::Too_Long},
    {"22001", Error_Number::Db_Too_Long, Failure::Too_Long},
    {"22", Error_Number::Db_Type_Mismatch, Failure::Type_Mismatch},
    {"23505", Error_Number::Db_Failed, Failure::Duplicate},
    {"23502", Error_Number::Db_Failed, Failure::Null_Value},
    {"25006", Error_Number::Db_Failed, Failure::Read_Only},
    {"42501", Database_Server::Denied, Failure::Read_Only},
    {"40", Error_Number::Db_Failed, Failure::Locked},
    {"55P03", Error_Number::Db_Failed, Failure::Locked},
    {"53100", Error_Number::Db_Failed, Failure::Disk_Full},
    {"53200", Error_Number::Db_Failed, Failure::Out_Of_Memory},
    {"53300", Database_Server::Gone, Failure::Other},
    {"54000", Error_Number::Db_Failed, Failure::Too_Large},
    {"57014", Database_Server::Timed_Out, Failure::Other},
    {"57P", Database_Server::Gone, Failure::Other},
    {"28", Database_Server::Denied, Failure::Other},
    {"3D000", Database_Server::Denied, Failure::Other},
    {"08", Database_Server::Gone, Failure::Other},
    {"IM00", Error_Number::Db_Failed, Failure::Missing_Component},
    {"01000", Error_Number::Db_Failed, Failure::Missing_Component},
    {"42", Error_Number::Db_Syntax, Failure::Syntax},
};
} // namespace

Run_Time_Error From_Server(const QString &state, const QString &message)
{
    for (const State_Meaning &meaning : State_Meanings) {
        if (state.startsWith(QLatin1StringView(meaning.state))) {
            return {meaning.number, message, meaning.failure};
        }
    }
    return Failed(u"The server reported: %1."_s.arg(message.isEmpty() ? state : message));
}
} // namespace Engine_Error

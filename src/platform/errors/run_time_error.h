// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <exception>

/// What went wrong, apart from the number that the system's procedures look at: the key under which a clear text in
/// the user's language is found (see core/error_text.h). The description stays the engine's or the platform's own.
enum class Failure {
    Other,
    File_Not_Found,
    Path_Access,
    Link, ///< a link where none is followed
    Disk_Full,
    Read_Only,
    Locked,
    Foreign_Journal, ///< what lies beside a database would have its opening do harm
    Not_A_Database,
    Damaged,
    Missing_Table,
    Missing_Column,
    Syntax,
    Type_Mismatch,
    Too_Long,
    Duplicate,
    Null_Value,
    No_Current_Row,
    Missing_Component,
    Too_Large,     ///< a file that the database does not take
    No_Output,     ///< the coder wrote nothing
    Not_Rich_Text, ///< a document of a type that is shown and not written
    Out_Of_Memory,
    Stopped, ///< by a watch: at the user's wish, or to give way to a writer
};

/// The one exception that the platform throws. Numbers below 1000 are the run-time's own (7 out of memory, 53 file not
/// found, 61 disk full, 70 permission denied, 75 path or file access, 76 path not found, 339 component missing, 3021 no
/// current row); numbers of the database are 32-bit OLE DB codes, written in hexadecimal in this project.
class Run_Time_Error : public std::exception
{
public:
    Run_Time_Error(qint32 code, QString text, Failure kind = Failure::Other)
        : number(code), description(std::move(text)), failure(kind), m_bytes(description.toUtf8())
    {
    }

    [[nodiscard]] const char *what() const noexcept override { return m_bytes.constData(); }

    qint32 number;
    QString description;
    Failure failure;

private:
    QByteArray m_bytes;
};

namespace Error_Number
{
inline constexpr qint32 Out_Of_Memory = 7;
inline constexpr qint32 File_Not_Found = 53;
inline constexpr qint32 Disk_Full = 61;
inline constexpr qint32 Permission_Denied = 70;
inline constexpr qint32 Path_Access = 75;
inline constexpr qint32 Path_Not_Found = 76;
inline constexpr qint32 Missing_Component = 339;
inline constexpr qint32 No_Current_Row = 3021;
// OLE DB error codes as the file database's provider reports them (public oledberr.h numbering).
inline constexpr qint32 Db_Failed = static_cast<qint32>(0x80004005);         // unspecified: file, lock, duplicate
inline constexpr qint32 Db_Type_Mismatch = static_cast<qint32>(0x80040E07);  // DB_E_CANTCONVERTVALUE
inline constexpr qint32 Db_Missing_Column = static_cast<qint32>(0x80040E10); // DB_E_PARAMNOTOPTIONAL
inline constexpr qint32 Db_Syntax = static_cast<qint32>(0x80040E14);         // DB_E_ERRORSINCOMMAND
inline constexpr qint32 Db_Field_Value = static_cast<qint32>(0x80040E21);    // DB_E_ERRORSOCCURRED
inline constexpr qint32 Db_Missing_Table = static_cast<qint32>(0x80040E37);  // DB_E_NOTABLE
inline constexpr qint32 Db_Too_Long = static_cast<qint32>(0x80040E57);       // DB_E_DATAOVERFLOW
} // namespace Error_Number

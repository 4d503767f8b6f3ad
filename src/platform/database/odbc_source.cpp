// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/odbc_source.h"

#include "platform/database/engine_error.h"
#include "platform/database/odbc_text.h"

#include <deque>
#include <sql.h>
#include <sqlext.h>

using namespace Qt::StringLiterals;

namespace
{
Run_Time_Error Diagnosis(SQLSMALLINT kind, SQLHANDLE handle)
{
    SQLCHAR state[6] = {};
    SQLCHAR message[SQL_MAX_MESSAGE_LENGTH] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRec(kind, handle, 1, state, &native, message, sizeof message, &length);
    const QByteArray code(reinterpret_cast<const char *>(state));
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(message));
    if (code == "42S02" || text.contains("no such table"_L1)) {
        return {Error_Number::Db_Missing_Table, text, Failure::Missing_Table};
    }
    if (code == "42S22" || text.contains("no such column"_L1)) {
        return {Error_Number::Db_Missing_Column, text, Failure::Missing_Column};
    }
    if (code == "42000" || text.contains("syntax error"_L1)) {
        return {Error_Number::Db_Syntax, text, Failure::Syntax};
    }
    if (code == "IM002" || code == "IM003" || code == "01000") {
        return {Error_Number::Db_Failed, u"The data source or its driver was not found: %1"_s.arg(text),
                Failure::Missing_Component};
    }
    if (code == "23000") {
        return {Error_Number::Db_Failed, text, Failure::Duplicate};
    }
    return {Error_Number::Db_Failed, text.isEmpty() ? u"The data source failed without a message."_s : text};
}

/// The three handles of one statement.
class Link
{
public:
    Link()
    {
        SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
        SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
        SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
    }
    ~Link()
    {
        if (m_statement != SQL_NULL_HSTMT) {
            SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
        }
        if (m_connected) {
            SQLDisconnect(m_connection);
        }
        SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
        SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
    }
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    void Connect(const QString &connectionString)
    {
        QByteArray text = Odbc_Text::Joined(Odbc_Text::Checked(connectionString, Installed_Drivers())).toUtf8();
        SQLSMALLINT length = 0;
        if (!SQL_SUCCEEDED(SQLDriverConnect(m_connection, nullptr, reinterpret_cast<SQLCHAR *>(text.data()), SQL_NTS,
                                            nullptr, 0, &length, SQL_DRIVER_NOPROMPT))) {
            throw Diagnosis(SQL_HANDLE_DBC, m_connection);
        }
        m_connected = true;
        SQLAllocHandle(SQL_HANDLE_STMT, m_connection, &m_statement);
    }
    void Execute(const QString &statement)
    {
        QByteArray text = statement.toUtf8();
        const SQLRETURN code = SQLExecDirect(m_statement, reinterpret_cast<SQLCHAR *>(text.data()),
                                             static_cast<SQLINTEGER>(text.size())); // a text may hold a zero
        if (!SQL_SUCCEEDED(code) && code != SQL_NO_DATA) {
            throw Diagnosis(SQL_HANDLE_STMT, m_statement);
        }
    }
    [[nodiscard]] SQLHSTMT Statement() const { return m_statement; }

private:
    [[nodiscard]] QStringList Installed_Drivers() const
    {
        constexpr SQLSMALLINT longest = 512;
        QStringList names;
        SQLCHAR name[longest] = {};
        SQLCHAR attributes[longest] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT rest = 0;
        SQLUSMALLINT direction = SQL_FETCH_FIRST;
        while (
            SQL_SUCCEEDED(SQLDrivers(m_environment, direction, name, longest, &length, attributes, longest, &rest))) {
            names << QString::fromUtf8(reinterpret_cast<const char *>(name));
            direction = SQL_FETCH_NEXT;
        }
        return names;
    }

    SQLHENV m_environment = SQL_NULL_HENV;
    SQLHDBC m_connection = SQL_NULL_HDBC;
    SQLHSTMT m_statement = SQL_NULL_HSTMT;
    bool m_connected = false;
};

Value_Type Type_Of(SQLSMALLINT type)
{
    switch (type) {
    case SQL_INTEGER:
    case SQL_SMALLINT:
    case SQL_TINYINT:
    case SQL_BIT:
        return Value_Type::Long;
    case SQL_BIGINT:
        return Value_Type::Count;
    case SQL_REAL:
    case SQL_FLOAT:
    case SQL_DOUBLE:
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return Value_Type::Single;
    case SQL_TYPE_DATE:
    case SQL_TYPE_TIMESTAMP:
        return Value_Type::Date;
    case SQL_BINARY:
    case SQL_VARBINARY:
    case SQL_LONGVARBINARY:
        return Value_Type::Blob;
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
        return Value_Type::Memo;
    default:
        return Value_Type::Text;
    }
}

/// The rows of a statement, read to the end at once: the connection of a data source is not kept.
class Odbc_Rows : public Row_Source
{
public:
    explicit Odbc_Rows(SQLHSTMT statement)
    {
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement, &columns);
        for (SQLSMALLINT i = 1; i <= columns; ++i) {
            Describe(statement, static_cast<SQLUSMALLINT>(i));
        }
        while (columns > 0) {
            const SQLRETURN code = SQLFetch(statement);
            if (code == SQL_NO_DATA) {
                return;
            }
            if (!SQL_SUCCEEDED(code)) {
                throw Diagnosis(SQL_HANDLE_STMT, statement);
            }
            Row row;
            for (size_t i = 0; i < m_outputs.size(); ++i) {
                row.push_back(Read(statement, static_cast<SQLUSMALLINT>(i + 1), m_outputs[i].type));
            }
            m_rows.push_back(std::move(row));
        }
    }
    [[nodiscard]] const std::vector<Output> &Outputs() const override { return m_outputs; }
    bool Next(Row &row) override
    {
        if (m_rows.empty()) {
            return false;
        }
        row = std::move(m_rows.front());
        m_rows.pop_front();
        return true;
    }

private:
    void Describe(SQLHSTMT statement, SQLUSMALLINT column)
    {
        constexpr SQLSMALLINT longestName = 256;
        SQLCHAR name[longestName] = {};
        SQLSMALLINT length = 0;
        SQLSMALLINT type = 0;
        SQLSMALLINT digits = 0;
        SQLSMALLINT nullable = 0;
        SQLULEN size = 0;
        SQLDescribeCol(statement, column, name, longestName, &length, &type, &size, &digits, &nullable);
        const QString text = QString::fromUtf8(reinterpret_cast<const char *>(name));
        m_outputs.push_back({text, Type_Of(type), static_cast<qint32>(size), text});
    }

    static Cell Read(SQLHSTMT statement, SQLUSMALLINT column, Value_Type type)
    {
        constexpr SQLLEN pieceSize = 8192;
        constexpr qsizetype largest = qsizetype(256) << 20;
        const bool binary = type == Value_Type::Blob;
        QByteArray all;
        char piece[pieceSize];
        for (;;) {
            SQLLEN length = 0;
            const SQLRETURN code =
                SQLGetData(statement, column, binary ? SQL_C_BINARY : SQL_C_CHAR, piece, pieceSize, &length);
            if (code == SQL_NO_DATA) {
                break;
            }
            if (!SQL_SUCCEEDED(code)) {
                throw Diagnosis(SQL_HANDLE_STMT, statement);
            }
            if (length == SQL_NULL_DATA) {
                return {};
            }
            const SQLLEN room = binary ? pieceSize : pieceSize - 1;
            const bool more = length == SQL_NO_TOTAL || length > room;
            all.append(piece, more ? room : length);
            if (all.size() > largest) {
                throw Engine_Error::Too_Large();
            }
            if (!more) {
                break;
            }
        }
        return Converted(all, type);
    }

    static Cell Converted(const QByteArray &bytes, Value_Type type)
    {
        if (type == Value_Type::Blob) {
            return bytes;
        }
        if (type == Value_Type::Long || type == Value_Type::Count) {
            return static_cast<qint64>(bytes.trimmed().toLongLong());
        }
        if (type == Value_Type::Single) {
            return bytes.trimmed().toDouble();
        }
        return QString::fromUtf8(bytes);
    }

    std::vector<Output> m_outputs;
    std::deque<Row> m_rows;
};
} // namespace

namespace Odbc_Source
{
std::unique_ptr<Row_Source> Run(const QString &statement, const QString &udlFile)
{
    Link link;
    link.Connect(Odbc_Text::Connection_String(Odbc_Text::Text_Of_File(udlFile)));
    link.Execute(statement);
    auto rows = std::make_unique<Odbc_Rows>(link.Statement());
    if (rows->Outputs().empty()) {
        return nullptr;
    }
    return rows;
}
} // namespace Odbc_Source

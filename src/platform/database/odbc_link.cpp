// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/odbc_link.h"

#include "platform/database/engine_error.h"
#include "platform/database/patience.h"

#include <atomic>
#include <sql.h>
#include <sqlext.h>
#include <sqlucode.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr SQLULEN Longest_Login_Seconds = 5;

std::atomic<qint64> Trips{0};

QString Text_Of(const SQLWCHAR *text, qsizetype length)
{
    return QString::fromUtf16(reinterpret_cast<const char16_t *>(text), length);
}

SQLWCHAR *Wide(QString &text)
{
    return reinterpret_cast<SQLWCHAR *>(text.data());
}

struct Diagnosis {
    QString state;
    QString message;
};

Diagnosis Diagnosis_Of(SQLSMALLINT kind, SQLHANDLE handle)
{
    SQLWCHAR state[6] = {};
    SQLWCHAR message[SQL_MAX_MESSAGE_LENGTH] = {};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    SQLGetDiagRecW(kind, handle, 1, state, &native, message, SQL_MAX_MESSAGE_LENGTH, &length);
    return {Text_Of(state, 5), Text_Of(message, std::min<SQLSMALLINT>(length, SQL_MAX_MESSAGE_LENGTH - 1)).trimmed()};
}

/// What the library below the driver says of a login is told in words only.
QString Login_State(const Diagnosis &diagnosis)
{
    struct Words {
        const char *words;
        const char *state;
    };
    constexpr Words known[] = {{"authentication failed", "28P01"},
                               {"no password supplied", "28P01"},
                               {"pg_hba.conf", "28000"},
                               {"role \"", "28000"},
                               {"database \"", "3D000"},
                               {"certificate", "28000"},
                               {"SSL", "28000"},
                               {"too many c", "53300"}};
    if (diagnosis.state.startsWith("IM"_L1)) {
        return diagnosis.state;
    }
    for (const Words &one : known) {
        if (diagnosis.message.contains(QLatin1StringView(one.words))) {
            return QString::fromLatin1(one.state);
        }
    }
    return diagnosis.message.contains("Can't open lib"_L1) ? u"IM003"_s : u"08001"_s;
}

/// The driver has states of its own for a connection that is no more.
bool Is_Loss(const Diagnosis &diagnosis)
{
    return diagnosis.state.startsWith("08"_L1) || diagnosis.state.startsWith("57P"_L1) ||
           (diagnosis.state == u"HY000"_s && diagnosis.message.contains("onnection"_L1)) ||
           diagnosis.message.contains("server closed the connection"_L1) ||
           diagnosis.message.contains("no connection to the server"_L1) ||
           diagnosis.message.contains("could not receive data"_L1) ||
           diagnosis.message.contains("could not send data"_L1);
}
} // namespace

Odbc_Link::Odbc_Link()
{
    SQLAllocHandle(SQL_HANDLE_ENV, SQL_NULL_HANDLE, &m_environment);
    SQLSetEnvAttr(m_environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, m_environment, &m_connection);
}

Odbc_Link::~Odbc_Link()
{
    if (m_connected) {
        SQLDisconnect(m_connection);
    }
    SQLFreeHandle(SQL_HANDLE_DBC, m_connection);
    SQLFreeHandle(SQL_HANDLE_ENV, m_environment);
}

QStringList Odbc_Link::Installed_Drivers()
{
    constexpr SQLSMALLINT longest = 512;
    const Odbc_Link link;
    QStringList names;
    SQLCHAR name[longest] = {};
    SQLCHAR attributes[longest] = {};
    SQLSMALLINT length = 0;
    SQLSMALLINT rest = 0;
    SQLUSMALLINT direction = SQL_FETCH_FIRST;
    while (
        SQL_SUCCEEDED(SQLDrivers(link.m_environment, direction, name, longest, &length, attributes, longest, &rest))) {
        names << QString::fromUtf8(reinterpret_cast<const char *>(name));
        direction = SQL_FETCH_NEXT;
    }
    return names;
}

void Odbc_Link::Connect(const Odbc_Text::Parts &parts)
{
    QString text = Odbc_Text::Joined(parts);
    SQLSMALLINT length = 0;
    SQLSetConnectAttr(m_connection, SQL_ATTR_LOGIN_TIMEOUT, reinterpret_cast<SQLPOINTER>(Longest_Login_Seconds), 0);
    SQLRETURN code = SQL_ERROR;
    Patience::Wait_For(
        [&] {
            code = SQLDriverConnectW(m_connection, nullptr, Wide(text), static_cast<SQLSMALLINT>(text.size()), nullptr,
                                     0, &length, SQL_DRIVER_NOPROMPT);
        },
        [] {});
    if (!SQL_SUCCEEDED(code)) {
        const Diagnosis diagnosis = Diagnosis_Of(SQL_HANDLE_DBC, m_connection);
        throw Engine_Error::From_Server(Login_State(diagnosis), diagnosis.message);
    }
    m_connected = true;
}

bool Odbc_Link::Is_Postgres() const
{
    SQLWCHAR name[64] = {};
    SQLSMALLINT length = 0;
    SQLGetInfoW(m_connection, SQL_DBMS_NAME, name, sizeof name, &length);
    return Text_Of(name, length / qsizetype(sizeof(SQLWCHAR))) == u"PostgreSQL"_s;
}

qint64 Odbc_Link::Round_Trips()
{
    return Trips;
}

Odbc_Link::Run::Run(std::shared_ptr<Odbc_Link> link, const QString &statements)
    : m_link(std::move(link)), m_text(statements)
{
    ++Trips;
    SQLAllocHandle(SQL_HANDLE_STMT, m_link->m_connection, &m_statement);
    try {
        Execute();
        Check(m_code);
    } catch (...) {
        SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
        throw;
    }
    m_text.clear();
}

Odbc_Link::Run::~Run()
{
    SQLFreeHandle(SQL_HANDLE_STMT, m_statement);
}

void Odbc_Link::Run::Execute()
{
    const bool wentOn = Patience::Wait_For(
        [this] { m_code = SQLExecDirectW(m_statement, Wide(m_text), static_cast<SQLINTEGER>(m_text.size())); },
        [this] { SQLCancel(m_statement); });
    // What the driver says of it depends on where the call met it.
    if (!wentOn && !SQL_SUCCEEDED(m_code) && !Is_Loss(Diagnosis_Of(SQL_HANDLE_STMT, m_statement))) {
        throw Engine_Error::Stopped();
    }
}

void Odbc_Link::Run::Check(int code)
{
    if (SQL_SUCCEEDED(code) || code == SQL_NO_DATA) {
        return;
    }
    const Diagnosis diagnosis = Diagnosis_Of(SQL_HANDLE_STMT, m_statement);
    const bool loss = Is_Loss(diagnosis);
    m_link->m_lost = m_link->m_lost || loss;
    throw Engine_Error::From_Server(loss ? u"08006"_s : diagnosis.state, diagnosis.message);
}

void Odbc_Link::Run::Next_Result()
{
    Check(SQLMoreResults(m_statement));
}

int Odbc_Link::Run::Columns() const
{
    SQLSMALLINT columns = 0;
    SQLNumResultCols(m_statement, &columns);
    return columns;
}

qint64 Odbc_Link::Run::Changed_Rows() const
{
    SQLLEN rows = 0;
    SQLRowCount(m_statement, &rows);
    return rows;
}

bool Odbc_Link::Run::Fetch()
{
    const SQLRETURN code = SQLFetch(m_statement);
    Check(code);
    return code != SQL_NO_DATA;
}

namespace
{
/// Bytes of a column as the driver hands them over; nothing for Null.
std::optional<QByteArray> Bytes_Of(SQLHSTMT statement, SQLUSMALLINT column, SQLSMALLINT type)
{
    constexpr SQLLEN first = 8192;
    constexpr qsizetype largest = qsizetype(600) << 20;
    const SQLLEN mark = type == SQL_C_WCHAR ? qsizetype(sizeof(SQLWCHAR)) : 0; // each piece ends with a zero
    QByteArray all(first, Qt::Uninitialized);
    qsizetype size = 0;
    for (;;) {
        SQLLEN length = 0;
        const SQLLEN room = all.size() - size;
        const SQLRETURN code = SQLGetData(statement, column, type, all.data() + size, room, &length);
        if (code == SQL_NO_DATA) {
            break;
        }
        if (!SQL_SUCCEEDED(code)) {
            const Diagnosis diagnosis = Diagnosis_Of(SQL_HANDLE_STMT, statement);
            throw Engine_Error::From_Server(diagnosis.state, diagnosis.message);
        }
        if (length == SQL_NULL_DATA) {
            return {};
        }
        if (length != SQL_NO_TOTAL && length <= room - mark) {
            size += length;
            break;
        }
        size += room - mark;
        const qsizetype rest = length == SQL_NO_TOTAL ? all.size() : length - (room - mark);
        if (size + rest > largest) {
            throw Engine_Error::Too_Large();
        }
        all.resize(size + rest + mark);
    }
    all.truncate(size);
    return all;
}

/// A number as it is written: whole where it is.
Cell Number_Of(const QString &text)
{
    bool whole = false;
    const qint64 number = text.toLongLong(&whole);
    return whole ? Cell(number) : Cell(text.toDouble());
}
} // namespace

Cell Odbc_Link::Run::Read(size_t column, Value_Type type)
{
    const bool binary = type == Value_Type::Blob;
    const auto bytes =
        Bytes_Of(m_statement, static_cast<SQLUSMALLINT>(column + 1), binary ? SQL_C_BINARY : SQL_C_WCHAR);
    if (!bytes) {
        return {};
    }
    if (binary) {
        return *bytes;
    }
    QString text = QString::fromUtf16(reinterpret_cast<const char16_t *>(bytes->constData()),
                                      bytes->size() / qsizetype(sizeof(SQLWCHAR)));
    if (Is_Number(type)) {
        return Number_Of(text);
    }
    return text;
}

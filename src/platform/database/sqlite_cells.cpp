// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sqlite_cells.h"

#include <sqlite3.h>

namespace Sqlite_Cells
{
Cell Read(sqlite3_value *value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return static_cast<qint64>(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(value));
        return QString::fromUtf8(text, sqlite3_value_bytes(value));
    }
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_value_blob(value));
        return QByteArray(bytes, sqlite3_value_bytes(value));
    }
    default:
        return {};
    }
}

Cell Column(sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return static_cast<qint64>(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    case SQLITE_BLOB: {
        const auto *bytes = static_cast<const char *>(sqlite3_column_blob(statement, column));
        return QByteArray(bytes, sqlite3_column_bytes(statement, column));
    }
    default:
        return {};
    }
}

void Return(sqlite3_context *context, const Cell &cell)
{
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        sqlite3_result_int64(context, *whole);
    } else if (const auto *number = std::get_if<double>(&cell)) {
        sqlite3_result_double(context, *number);
    } else if (const auto *text = std::get_if<QString>(&cell)) {
        const QByteArray utf8 = text->toUtf8();
        sqlite3_result_text64(context, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()), SQLITE_TRANSIENT,
                              SQLITE_UTF8);
    } else if (const auto *bytes = std::get_if<QByteArray>(&cell)) {
        sqlite3_result_blob64(context, bytes->constData(), static_cast<sqlite3_uint64>(bytes->size()),
                              SQLITE_TRANSIENT);
    } else {
        sqlite3_result_null(context);
    }
}

int Bind_Cell(sqlite3_stmt *statement, int at, const Cell &cell)
{
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return sqlite3_bind_int64(statement, at, *whole);
    }
    if (const auto *number = std::get_if<double>(&cell)) {
        return sqlite3_bind_double(statement, at, *number);
    }
    if (const auto *text = std::get_if<QString>(&cell)) {
        const QByteArray utf8 = text->toUtf8();
        return sqlite3_bind_text64(statement, at, utf8.constData(), static_cast<sqlite3_uint64>(utf8.size()),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    if (const auto *bytes = std::get_if<QByteArray>(&cell)) {
        // An empty QByteArray may be null, which SQLite would take for NULL.
        const char *data = bytes->isEmpty() ? "" : bytes->constData();
        return sqlite3_bind_blob64(statement, at, data, static_cast<sqlite3_uint64>(bytes->size()), SQLITE_TRANSIENT);
    }
    return sqlite3_bind_null(statement, at);
}
} // namespace Sqlite_Cells

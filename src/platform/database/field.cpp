// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/database.h"
#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/recordset_state.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint32 Size_Of_Number = 4;
constexpr qint32 Size_Of_Date = 8;
constexpr qint32 Size_Of_Memo = 2147483647 / 2;
constexpr qint32 Size_Of_Bytes = 2147483647;
constexpr qint32 Size_Of_Computed = 255;

QVariant As_Variant(const Cell &cell, Value_Type type)
{
    if (Is_Null(cell)) {
        return {};
    }
    const QString text = Sql_Value::To_Text(cell);
    switch (type) {
    case Value_Type::Long:
    case Value_Type::Boolean:
        if (const auto *whole = std::get_if<qint64>(&cell)) {
            return static_cast<int>(*whole);
        }
        break;
    case Value_Type::Date: {
        const QDateTime date = Database_Engine::Date_From_Text(text);
        return date.isValid() ? QVariant(date) : QVariant(text);
    }
    case Value_Type::Text:
    case Value_Type::Memo:
        return text;
    default:
        break;
    }
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return type == Value_Type::Count ? QVariant(static_cast<qlonglong>(*whole))
                                         : QVariant(static_cast<double>(*whole));
    }
    if (const auto *number = std::get_if<double>(&cell)) {
        return *number;
    }
    if (const auto *bytes = std::get_if<QByteArray>(&cell)) {
        return *bytes;
    }
    return text;
}

/// What a caller hands over, as a plain value.
Cell From_Variant(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QByteArray:
        return value.toByteArray();
    case QMetaType::QDateTime:
    case QMetaType::QDate: {
        const QDateTime date = value.toDateTime();
        return date.isValid() ? Cell(Stored_Date::From_Date(date)) : Cell();
    }
    case QMetaType::Bool:
        return static_cast<qint64>(value.toBool() ? -1 : 0);
    case QMetaType::Double:
    case QMetaType::Float:
        return value.toDouble();
    default:
        return value.isNull() ? Cell() : Cell(value.toLongLong());
    }
}

bool Is_Date_Variant(const QVariant &value)
{
    return value.typeId() == QMetaType::QDateTime || value.typeId() == QMetaType::QDate;
}

Cell Converted(const QVariant &value, const Output &output)
{
    Cell cell = From_Variant(value);
    switch (output.type) {
    case Value_Type::Text:
    case Value_Type::Memo:
        if (Is_Date_Variant(value) && !Is_Null(cell)) {
            return Sql_Value::As_Text(Stored_Date::To_Short(std::get<QString>(cell)), output.size, output.column);
        }
        return Sql_Value::As_Text(cell, output.size, output.column);
    case Value_Type::Long:
        return Sql_Value::As_Long(cell, output.column);
    case Value_Type::Single:
        return Sql_Value::As_Single(cell, output.column);
    case Value_Type::Date:
        return Sql_Value::As_Date(cell, output.column);
    case Value_Type::Blob:
        if (const auto *text = std::get_if<QString>(&cell)) {
            return text->toUtf8();
        }
        return cell;
    default:
        return cell;
    }
}
} // namespace

void Recordset::State::Set(int column, const QVariant &value)
{
    Check_Writable();
    const Output &output = outputs.at(static_cast<size_t>(column));
    if (output.column.isEmpty()) {
        throw Engine_Error::Read_Only_Recordset();
    }
    if (!isNew) {
        static_cast<void>(Current());
    }
    try {
        pending[column] = Converted(value, output);
    } catch (const Run_Time_Error &error) {
        throw Run_Time_Error(Error_Number::Db_Field_Value, error.description, error.failure);
    }
}

QVariant Field::Value() const
{
    const Recordset::State &state = *m_owner->m;
    state.Check_Open();
    return As_Variant(state.Value(m_index), state.outputs.at(static_cast<size_t>(m_index)).type);
}

bool Field::Is_Null() const
{
    m_owner->m->Check_Open();
    return ::Is_Null(m_owner->m->Value(m_index));
}

QString Field::Text() const
{
    const Recordset::State &state = *m_owner->m;
    state.Check_Open();
    const QString text = Sql_Value::To_Text(state.Value(m_index));
    const bool date = state.outputs.at(static_cast<size_t>(m_index)).type == Value_Type::Date;
    return date ? Stored_Date::To_Short(text) : text;
}

qint64 Field::Number() const
{
    m_owner->m->Check_Open();
    const Cell &cell = m_owner->m->Value(m_index);
    if (const auto *whole = std::get_if<qint64>(&cell)) {
        return *whole;
    }
    const Cell number = Sql_Value::As_Number(cell);
    const auto *real = std::get_if<double>(&number);
    return real == nullptr ? 0 : std::llrint(*real);
}

QByteArray Field::Bytes() const
{
    m_owner->m->Check_Open();
    const Cell &cell = m_owner->m->Value(m_index);
    const auto *bytes = std::get_if<QByteArray>(&cell);
    return bytes == nullptr ? Sql_Value::To_Text(cell).toUtf8() : *bytes;
}

QString Field::Name() const
{
    m_owner->m->Check_Open();
    return m_owner->m->outputs.at(static_cast<size_t>(m_index)).name;
}

qint32 Field::Defined_Size() const
{
    m_owner->m->Check_Open();
    const Output &output = m_owner->m->outputs.at(static_cast<size_t>(m_index));
    if (output.column.isEmpty()) {
        return Size_Of_Computed;
    }
    switch (output.type) {
    case Value_Type::Text:
        return output.size;
    case Value_Type::Memo:
        return Size_Of_Memo;
    case Value_Type::Blob:
        return Size_Of_Bytes;
    case Value_Type::Date:
        return Size_Of_Date;
    case Value_Type::Long:
    case Value_Type::Single:
        return Size_Of_Number;
    default:
        return Size_Of_Computed;
    }
}

void Field::Set(const QVariant &value)
{
    m_owner->m->Check_Open();
    m_owner->m->Set(m_index, value);
}

void Field::AppendChunk(const QByteArray &bytes)
{
    Recordset::State &state = *m_owner->m;
    state.Check_Open();
    const auto found = state.pending.find(m_index);
    if (found == state.pending.end()) {
        state.Set(m_index, bytes);
        return;
    }
    if (auto *pending = std::get_if<QByteArray>(&found->second)) {
        pending->append(bytes);
    } else {
        state.Set(m_index, bytes);
    }
}

QByteArray Field::GetChunk(qint64 size)
{
    Recordset::State &state = *m_owner->m;
    state.Check_Open();
    const Cell &cell = state.Value(m_index);
    qint64 &from = state.chunkAt[m_index];
    const auto *stored = std::get_if<QByteArray>(&cell);
    QByteArray chunk = (stored == nullptr ? Bytes() : *stored).mid(from, std::max<qint64>(size, 0));
    from += chunk.size();
    return chunk;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/sql_functions.h"

#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/key_query.h"
#include "platform/database/sql_values.h"
#include "platform/database/sqlite_cells.h"
#include "platform/database/text_fold.h"
#include "platform/database/text_order.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
/// One call of a function, arguments and result.
class Call
{
public:
    Call(sqlite3_context *context, int count, sqlite3_value **values)
        : m_context(context), m_count(count), m_values(values)
    {
    }
    [[nodiscard]] int Count() const { return m_count; }
    [[nodiscard]] bool Has(int i) const { return i < m_count; }
    [[nodiscard]] bool Any_Null() const
    {
        for (int i = 0; i < m_count; ++i) {
            if (Null(i)) {
                return true;
            }
        }
        return false;
    }
    [[nodiscard]] bool Null(int i) const { return sqlite3_value_type(m_values[i]) == SQLITE_NULL; }
    /// The bytes of a text; valid until the argument is read again.
    [[nodiscard]] std::string_view Bytes(int i) const
    {
        const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(m_values[i]));
        return text == nullptr ? std::string_view()
                               : std::string_view(text, static_cast<size_t>(sqlite3_value_bytes(m_values[i])));
    }
    [[nodiscard]] QString Text(int i) const
    {
        const std::string_view bytes = Bytes(i);
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    }
    [[nodiscard]] qint64 Whole(int i) const { return sqlite3_value_int64(m_values[i]); }
    [[nodiscard]] double Number(int i) const { return sqlite3_value_double(m_values[i]); }
    [[nodiscard]] Cell Value(int i) const { return Sqlite_Cells::Read(m_values[i]); }

    template <typename T>
    [[nodiscard]] const T *Pointer(int i, const char *name) const
    {
        return static_cast<const T *>(sqlite3_value_pointer(m_values[i], name));
    }

    void Return(const Cell &cell) { Sqlite_Cells::Return(m_context, cell); }
    void Return_Text(std::string_view bytes)
    {
        sqlite3_result_text64(m_context, bytes.data(), bytes.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    void Return_Whole(qint64 number) { sqlite3_result_int64(m_context, number); }

    /// Something made from a constant argument, kept between the rows of a statement.
    template <typename T>
    const T &Prepared(int argument)
    {
        if (const void *kept = sqlite3_get_auxdata(m_context, argument)) {
            return *static_cast<const T *>(kept);
        }
        auto made = std::make_unique<T>(Text(argument));
        m_own = std::make_shared<T>(*made); // SQLite may drop what it is given at once
        sqlite3_set_auxdata(m_context, argument, made.release(), [](void *p) { delete static_cast<T *>(p); });
        return *static_cast<const T *>(m_own.get());
    }

private:
    sqlite3_context *m_context;
    int m_count;
    sqlite3_value **m_values;
    std::shared_ptr<void> m_own;
};

template <void (*Body)(Call &)>
void Guarded(sqlite3_context *context, int count, sqlite3_value **values)
{
    try {
        Call call(context, count, values);
        Body(call);
    } catch (const Run_Time_Error &error) {
        *static_cast<std::optional<Run_Time_Error> *>(sqlite3_user_data(context)) = error;
        sqlite3_result_error(context, error.what(), -1);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

/// Byte offset behind `units` UTF-16 units.
size_t Offset_Of(std::string_view text, qint64 units)
{
    size_t at = 0;
    while (units > 0 && at < text.size()) {
        units -= Text_Fold::Next_Code_Point(text, at) > 0xFFFF ? 2 : 1;
    }
    return at;
}

void Len(Call &call)
{
    if (!call.Any_Null()) {
        call.Return_Whole(Text_Fold::Utf16_Length(call.Bytes(0)));
    }
}

void Lcase(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(Text_Fold::Folded(call.Text(0)));
    }
}

void Ucase(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(call.Text(0).toUpper());
    }
}

void Left(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(call.Text(0).left(std::max<qint64>(call.Whole(1), 0)));
    }
}

void Right(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(call.Text(0).right(std::max<qint64>(call.Whole(1), 0)));
    }
}

void Mid(Call &call)
{
    if (call.Any_Null()) {
        return;
    }
    if (call.Whole(1) < 1) {
        throw Engine_Error::Type_Mismatch(u"the start of mid must be at least 1"_s);
    }
    const qint64 length = call.Has(2) ? std::max<qint64>(call.Whole(2), 0) : -1;
    call.Return(call.Text(0).mid(call.Whole(1) - 1, length));
}

/// start, text, sought, compare (0 exactly, else without regard to case): the place in UTF-16 units, 0 for none.
void Instr(Call &call)
{
    if (call.Any_Null()) {
        return;
    }
    const std::string_view text = call.Bytes(1);
    const size_t from = Offset_Of(text, call.Whole(0) - 1);
    size_t found = 0;
    if (call.Whole(3) == 0) {
        found = text.find(call.Bytes(2), from);
    } else {
        found = call.Prepared<Text_Fold::Needle>(2).Find(text, from);
    }
    call.Return_Whole(found == std::string_view::npos ? 0 : Text_Fold::Utf16_Length(text.substr(0, found)) + 1);
}

void Like(Call &call)
{
    if (!call.Any_Null()) {
        call.Return_Whole(call.Prepared<Text_Fold::Pattern>(0).Matches(call.Bytes(1)) ? 1 : 0);
    }
}

void Format(Call &call)
{
    if (call.Null(0)) {
        return;
    }
    const QString text = call.Text(0);
    const QDateTime date = Database_Engine::Date_From_Text(text);
    if (!call.Has(1) || call.Null(1) || !date.isValid()) {
        call.Return(date.isValid() ? Stored_Date::To_Short(text) : text);
        return;
    }
    call.Return(Stored_Date::Format(date, call.Text(1)));
}

void Now(Call &call)
{
    call.Return(Stored_Date::From_Date(QDateTime::currentDateTime()));
}

void Today(Call &call)
{
    call.Return(Stored_Date::From_Date(QDate::currentDate().startOfDay()));
}

/// The number that a text begins with, blanks left out; 0 when there is none.
void Val(Call &call)
{
    if (call.Any_Null()) {
        return;
    }
    const QByteArray text = call.Text(0).remove(u' ').toLatin1();
    const double number = std::strtod(text.constData(), nullptr);
    call.Return(std::isfinite(number) ? number : 0.0);
}

void Str(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(Sql_Value::To_Text(call.Value(0)));
    }
}

void Join(Call &call)
{
    call.Return(call.Text(0) + call.Text(1));
}

void Short(Call &call)
{
    if (!call.Any_Null()) {
        call.Return(Stored_Date::To_Short(call.Text(0)));
    }
}

/// The stored form of a text that means a date; any other text as it is, so that it equals no date.
void Date(Call &call)
{
    if (!call.Any_Null()) {
        const QString text = call.Text(0);
        call.Return(Stored_Date::From_Text(text).value_or(text));
    }
}

template <int Part>
void Date_Part(Call &call)
{
    const QDate date = call.Any_Null() ? QDate() : Database_Engine::Date_From_Text(call.Text(0)).date();
    if (date.isValid()) {
        call.Return_Whole(Part == 0 ? date.year() : Part == 1 ? date.month() : date.day());
    }
}

void Number(Call &call)
{
    call.Return(Sql_Value::As_Number(call.Value(0)));
}

void As_Text(Call &call)
{
    call.Return(Sql_Value::As_Text(call.Value(0), static_cast<int>(call.Whole(1)), call.Text(2)));
}

void As_Long(Call &call)
{
    call.Return(Sql_Value::As_Long(call.Value(0), call.Has(1) ? call.Text(1) : QString()));
}

void As_Single(Call &call)
{
    call.Return(Sql_Value::As_Single(call.Value(0), call.Text(1)));
}

void As_Date(Call &call)
{
    call.Return(Sql_Value::As_Date(call.Value(0), call.Has(1) ? call.Text(1) : QString()));
}

/// row number, set of row numbers
void Among(Call &call)
{
    call.Return_Whole(call.Pointer<Key_Set>(1, Key_Set::Pointer_Name)->Has(call.Whole(0)) ? 1 : 0);
}

using Sqlite_Function = void (*)(sqlite3_context *, int, sqlite3_value **);
struct Definition {
    const char *name;
    Sqlite_Function function;
    bool constant = true; ///< the same arguments give the same result
};

constexpr std::array Definitions{
    Definition{"zelqor_len", Guarded<Len>},
    Definition{"zelqor_lcase", Guarded<Lcase>},
    Definition{"zelqor_ucase", Guarded<Ucase>},
    Definition{"zelqor_left", Guarded<Left>},
    Definition{"zelqor_right", Guarded<Right>},
    Definition{"zelqor_mid", Guarded<Mid>},
    Definition{"zelqor_instr", Guarded<Instr>},
    Definition{"zelqor_like", Guarded<Like>},
    Definition{"zelqor_format", Guarded<Format>},
    Definition{"zelqor_now", Guarded<Now>, false},
    Definition{"zelqor_today", Guarded<Today>, false},
    Definition{"zelqor_val", Guarded<Val>},
    Definition{"zelqor_str", Guarded<Str>},
    Definition{"zelqor_join", Guarded<Join>},
    Definition{"zelqor_short", Guarded<Short>},
    Definition{"zelqor_date", Guarded<Date>},
    Definition{"zelqor_year", Guarded<Date_Part<0>>},
    Definition{"zelqor_month", Guarded<Date_Part<1>>},
    Definition{"zelqor_day", Guarded<Date_Part<2>>},
    Definition{"zelqor_number", Guarded<Number>},
    Definition{"zelqor_as_text", Guarded<As_Text>},
    Definition{"zelqor_as_long", Guarded<As_Long>},
    Definition{"zelqor_clng", Guarded<As_Long>},
    Definition{"zelqor_as_single", Guarded<As_Single>},
    Definition{"zelqor_as_date", Guarded<As_Date>},
    Definition{"zelqor_cdate", Guarded<As_Date>},
    Definition{"zelqor_among", Guarded<Among>},
};

std::string_view View(const void *bytes, int length)
{
    return {static_cast<const char *>(bytes), static_cast<size_t>(length)};
}

int Compare_Text(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    return Text_Fold::Compare(View(a, lengthA), View(b, lengthB));
}

int Compare_Order(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    return Text_Order::Compare(View(a, lengthA), View(b, lengthB));
}
} // namespace

void Register_Functions(sqlite3 *db, std::optional<Run_Time_Error> &error)
{
    for (const Definition &definition : Definitions) {
        const int flags = SQLITE_UTF8 | SQLITE_DIRECTONLY | (definition.constant ? SQLITE_DETERMINISTIC : 0);
        sqlite3_create_function_v2(db, definition.name, -1, flags, &error, definition.function, nullptr, nullptr,
                                   nullptr);
    }
    sqlite3_create_collation_v2(db, "zelqor_text", SQLITE_UTF8, nullptr, Compare_Text, nullptr);
    sqlite3_create_collation_v2(db, "zelqor_sort", SQLITE_UTF8, nullptr, Compare_Order, nullptr);
}

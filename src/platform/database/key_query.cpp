// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/key_query.h"

#include "platform/database/ordered_texts.h"
#include "platform/database/sql_tokens.h"
#include "platform/database/text_test.h"
#include "platform/database/watched_query.h"

#include <algorithm>
#include <limits>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
/// Marks take a bit for each number between the first and the last one.
constexpr qint64 Numbers_For_A_Mark = 64;
/// A table is walked in order when one row in so many is wanted; fewer ones are looked up and sorted.
constexpr size_t Rows_For_A_Walk = 8;

/// Holds the file as it is while a query reads it in several steps.
class Read_Transaction
{
public:
    explicit Read_Transaction(Connection &connection) : m_connection(connection)
    {
        m_own = sqlite3_get_autocommit(connection.Handle()) != 0;
        if (m_own) {
            connection.Execute("BEGIN");
        }
    }
    ~Read_Transaction()
    {
        if (m_own) {
            sqlite3_exec(m_connection.Handle(), "COMMIT", nullptr, nullptr, nullptr);
        }
    }
    Read_Transaction(const Read_Transaction &) = delete;
    Read_Transaction &operator=(const Read_Transaction &) = delete;

private:
    Connection &m_connection;
    bool m_own = false;
};
} // namespace

Key_Set::Key_Set(std::vector<qint64> keys) : m_keys(std::move(keys))
{
    std::sort(m_keys.begin(), m_keys.end());
    const auto end = std::unique(m_keys.begin(), m_keys.end());
    m_twins = end != m_keys.end();
    m_keys.erase(end, m_keys.end());
    if (m_keys.empty()) {
        return;
    }
    const qint64 span = m_keys.back() - m_keys.front();
    if (span >= 0 && span / Numbers_For_A_Mark <= static_cast<qint64>(m_keys.size())) {
        m_marks.resize(static_cast<size_t>(span) + 1);
        for (const qint64 key : m_keys) {
            m_marks[static_cast<size_t>(key - m_keys.front())] = true;
        }
    }
}

bool Key_Set::Has(qint64 key) const
{
    if (m_keys.empty() || key < m_keys.front() || key > m_keys.back()) {
        return false;
    }
    return m_marks.empty() ? std::binary_search(m_keys.begin(), m_keys.end(), key)
                           : m_marks[static_cast<size_t>(key - m_keys.front())];
}

QByteArray Key_Set::As_Json(std::span<const qint64> keys)
{
    QByteArray json("[");
    for (const qint64 key : keys) {
        json += QByteArray::number(key) + ',';
    }
    json.back() = ']';
    return keys.empty() ? QByteArray("[]") : json;
}

Key_Query::Key_Query(Connection &connection, const Key_Plan &plan, const std::vector<Token> &tokens)
    : m_connection(connection), m_plan(plan), m_tokens(tokens)
{
}

std::optional<std::vector<qint64>> Key_Query::Rows(qint64 skip)
{
    const bool paged = m_plan.parts.front().top >= 0;
    if (!paged) {
        const std::optional<std::vector<Ordered_Key>> order = Order();
        return order ? std::optional(Shown(*order, skip)) : std::nullopt;
    }
    Kept_Order &kept = m_connection.Kept();
    const QString name = Kept_Name();
    const std::pair<qint64, qint64> version = m_connection.Data_Version();
    if (kept.statement != name || kept.version != version) {
        kept.statement.clear();
        std::optional<std::vector<Ordered_Key>> order = Order();
        if (!order) {
            return std::nullopt;
        }
        kept = {name, version, std::move(*order), Sql()};
    }
    return Shown(kept.keys, skip);
}

std::vector<qint64> Key_Query::Shown(const std::vector<Ordered_Key> &order, qint64 skip) const
{
    std::vector<qint64> rows;
    qint64 left = Bound_Of(m_plan.parts.front());
    for (const Ordered_Key &key : order) {
        const bool within = key.first && left-- > 0;
        if ((within || key.other) && skip-- <= 0) {
            rows.push_back(key.row);
        }
    }
    return rows;
}

/// The statement with its values, but without the bounds of its parts: every page has the same order.
QString Key_Query::Kept_Name() const
{
    QString name;
    for (const Token &token : m_tokens) {
        const bool bound = token.Is_Literal() &&
                           std::any_of(m_plan.parts.begin(), m_plan.parts.end(),
                                       [&token](const Key_Plan::Part &part) { return part.top == token.literal; });
        name += (bound ? QStringView() : token.raw).toString() + u'\n';
    }
    return name;
}

/// All that tells the rows and their order.
QByteArray Key_Query::Sql() const
{
    QByteArray sql = m_plan.orderOfMany;
    for (const Key_Plan::Part &part : m_plan.parts) {
        sql += part.candidates.sql + (part.test ? part.test->sql : QByteArray());
    }
    return sql;
}

qint64 Key_Query::Bound_Of(const Key_Plan::Part &part) const
{
    for (const Token &token : m_tokens) {
        if (part.top >= 0 && token.literal == part.top) {
            return token.raw.toLongLong();
        }
    }
    return std::numeric_limits<qint64>::max();
}

std::optional<std::vector<Ordered_Key>> Key_Query::Order()
{
    const Read_Transaction transaction(m_connection);
    const Key_Set first = Rows_Of(m_plan.parts.front());
    const bool alone = m_plan.parts.size() == 1;
    if (alone && first.Had_Twins()) {
        return std::nullopt;
    }
    std::vector<qint64> others;
    for (size_t i = 1; i < m_plan.parts.size(); ++i) {
        const Key_Set part = Rows_Of(m_plan.parts[i]);
        others.insert(others.end(), part.Keys().begin(), part.Keys().end());
    }
    const Key_Set other(others);
    others.insert(others.end(), first.Keys().begin(), first.Keys().end());
    const Key_Set all(std::move(others));

    std::vector<Ordered_Key> order;
    order.reserve(all.Keys().size());
    if (!all.Keys().empty()) {
        for (const qint64 row : In_Order(all)) {
            order.push_back({row, alone || first.Has(row), !alone && other.Has(row)});
        }
    }
    return order;
}

Key_Set Key_Query::Rows_Of(const Key_Plan::Part &part)
{
    const bool tells = m_early && part.test && m_plan.parts.size() == 1;
    if (tells) {
        Tell_First_Rows(*part.first);
    }
    Prepared_Statement statement(std::make_shared<Plan>(part.candidates));
    m_connection.Make_Ready(statement, m_tokens);
    std::vector<qint64> candidates;
    m_connection.Collect_Rows(statement, candidates);
    if (!part.test) {
        return Key_Set(std::move(candidates));
    }
    std::sort(candidates.begin(), candidates.end());
    Text_Test test(m_connection, *part.test, m_tokens, std::move(candidates));
    if (tells) {
        test.Tell_Ahead([this](std::vector<qint64> rows) { Tell(std::move(rows)); });
    }
    return Key_Set(test.Run());
}

/// Long before all rows are known, those in front are: they are what a list shows.
void Key_Query::Tell_First_Rows(const Plan &first)
{
    Prepared_Statement statement(std::make_shared<Plan>(first));
    m_connection.Make_Ready(statement, m_tokens);
    m_connection.Collect_Rows(statement, m_front);
    if (!m_front.empty()) {
        Tell({});
    }
}

void Key_Query::Tell(std::vector<qint64> rows)
{
    rows.insert(rows.end(), m_front.begin(), m_front.end());
    m_early(Ordered(Key_Set(std::move(rows)), false));
}

std::vector<qint64> Key_Query::In_Order(const Key_Set &rows)
{
    return Ordered(rows, rows.Keys().size() >= static_cast<size_t>(rows.Keys().back()) / Rows_For_A_Walk);
}

/// @param many  the table is walked in order
std::vector<qint64> Key_Query::Ordered(const Key_Set &rows, bool many)
{
    if (many && !m_plan.texts.isEmpty()) {
        return Ordered_Texts(m_connection, m_plan, rows).Rows();
    }
    auto plan = std::make_shared<Plan>();
    plan->sql = many ? m_plan.orderOfMany : m_plan.orderOfFew;
    Prepared_Statement statement(plan);
    m_connection.Make_Ready(statement, m_tokens);
    const QByteArray json = many ? QByteArray() : Key_Set::As_Json(rows.Keys());
    if (many) {
        sqlite3_bind_pointer(statement.handle, 1, const_cast<Key_Set *>(&rows), Key_Set::Pointer_Name, nullptr);
    } else {
        sqlite3_bind_text64(statement.handle, 1, json.constData(), static_cast<sqlite3_uint64>(json.size()),
                            SQLITE_STATIC, SQLITE_UTF8);
    }
    std::vector<qint64> ordered;
    ordered.reserve(rows.Keys().size());
    m_connection.Collect_Rows(statement, ordered);
    return ordered;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/database/connection.h"

#include <functional>
#include <span>

struct Token;

/// Row numbers to look up: what the SQL function zelqor_among is given.
class Key_Set
{
public:
    static constexpr const char *Pointer_Name = "zelqor key set";

    Key_Set() = default;
    /// @param keys  may hold a number twice
    explicit Key_Set(std::vector<qint64> keys);
    [[nodiscard]] bool Has(qint64 key) const;
    [[nodiscard]] const std::vector<qint64> &Keys() const { return m_keys; }
    static QByteArray As_Json(std::span<const qint64> keys);
    /// A number was given twice.
    [[nodiscard]] bool Had_Twins() const { return m_twins; }

private:
    std::vector<qint64> m_keys; // ascending
    std::vector<bool> m_marks;  // by number less the first one, where they lie dense enough
    bool m_twins = false;
};

/// A query run by its row numbers: first which rows it has, where texts are searched by several threads; then their
/// order. The order of a paged list is kept until what it was found by changes, so that turning a page costs the rows
/// of that page.
class Key_Query
{
public:
    Key_Query(Connection &connection, const Key_Plan &plan, const std::vector<Token> &tokens);

    /// While the rows are being found, `early` is given the first ones of those known so far, in order.
    void Tell_Ahead(std::function<void(std::vector<qint64>)> early) { m_early = std::move(early); }
    /// The row numbers behind the first `skip` ones, or nothing when the query must be run as it stands because a row
    /// of its table stands in it twice. @throws Run_Time_Error, Failure::Stopped from a watch among them.
    std::optional<std::vector<qint64>> Rows(qint64 skip);

private:
    [[nodiscard]] QString Kept_Name() const;
    [[nodiscard]] QByteArray Sql() const;
    /// The rows of an order that stand within the bounds of the statement, behind the first `skip` ones.
    [[nodiscard]] std::vector<qint64> Shown(const std::vector<Ordered_Key> &order, qint64 skip) const;
    [[nodiscard]] std::optional<std::vector<Ordered_Key>> Order();
    [[nodiscard]] Key_Set Rows_Of(const Key_Plan::Part &part);
    void Tell_First_Rows(const Plan &first);
    void Tell(std::vector<qint64> rows);
    [[nodiscard]] std::vector<qint64> In_Order(const Key_Set &rows);
    [[nodiscard]] std::vector<qint64> Ordered(const Key_Set &rows, bool many);
    [[nodiscard]] qint64 Bound_Of(const Key_Plan::Part &part) const;

    Connection &m_connection;
    const Key_Plan &m_plan;
    const std::vector<Token> &m_tokens;
    std::function<void(std::vector<qint64>)> m_early;
    std::vector<qint64> m_front; ///< what was found among the rows that stand in front
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QString>
#include <list>
#include <memory>

struct Plan;
struct sqlite3_stmt;

/// A plan with its compiled statement.
struct Prepared_Statement {
    explicit Prepared_Statement(std::shared_ptr<const Plan> itsPlan) : plan(std::move(itsPlan)) {}
    ~Prepared_Statement();
    Prepared_Statement(const Prepared_Statement &) = delete;
    Prepared_Statement &operator=(const Prepared_Statement &) = delete;

    std::shared_ptr<const Plan> plan;
    sqlite3_stmt *handle = nullptr;
    bool busy = false;
};

/// Compiled statements by the shape of their text. The longest unused one gives way.
class Statement_Cache
{
public:
    /// Null when there is none of this shape. One that is busy is found too.
    std::shared_ptr<Prepared_Statement> Find(const QString &shape);
    void Keep(const QString &shape, const std::shared_ptr<Prepared_Statement> &statement);
    void Clear();

private:
    using Entries = std::list<std::pair<QString, std::shared_ptr<Prepared_Statement>>>;

    Entries m_entries; ///< the most recently used first
    QHash<QString, Entries::iterator> m_byShape;
};

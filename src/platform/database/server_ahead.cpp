// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/server_connection.h"

#include "platform/errors/run_time_error.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 Longest_Ahead = 1000; // milliseconds

/// Rows that were read already.
class Kept_Rows : public Row_Source
{
public:
    explicit Kept_Rows(std::shared_ptr<const Answer_Ahead> answer) : m_answer(std::move(answer)) {}
    [[nodiscard]] const std::vector<Output> &Outputs() const override { return m_answer->plan->outputs; }
    bool Next(Row &row) override
    {
        const bool has = m_at < m_answer->rows.size();
        if (has) {
            row = m_answer->rows[m_at++];
        }
        return has;
    }

private:
    std::shared_ptr<const Answer_Ahead> m_answer;
    size_t m_at = 0;
};
} // namespace

/// A statement that fails, or tables that are not as they were known, leave all of them to be asked one by one.
void Server_Connection::Ask_Ahead(const QStringList &statements)
{
    if (In_Group()) {
        return;
    }
    std::vector<std::pair<QString, std::shared_ptr<const Plan>>> asked;
    QStringList texts;
    m_ahead.clear();
    try {
        for (const QString &statement : statements) {
            const std::vector<Token> tokens = Tokenize(statement);
            bool ranAsDdl = false;
            if (tokens.front().Is("select"_L1)) {
                const std::shared_ptr<const Plan> plan = Plan_Of(tokens, false, ranAsDdl);
                asked.emplace_back(statement, plan);
                texts << Text_Of(*plan, tokens, 0);
            }
        }
        const auto run = texts.isEmpty() ? nullptr : Execute(texts.join(u"; "_s));
        for (size_t i = 0; i < asked.size(); ++i) {
            if (i > 0) {
                run->Next_Result();
            }
            auto answer = std::make_shared<Answer_Ahead>();
            answer->plan = asked[i].second;
            Row row;
            while (run->Fetch()) {
                row.clear();
                for (size_t column = 0; column < answer->plan->outputs.size(); ++column) {
                    row.push_back(run->Read(column, answer->plan->outputs[column].type));
                }
                answer->rows.push_back(row);
            }
            m_ahead.insert(asked[i].first, answer);
        }
    } catch (const Run_Time_Error &) {
        m_ahead.clear();
    }
    m_sinceAhead.start();
}

std::unique_ptr<Row_Source> Server_Connection::Answered_Ahead(const QString &statement)
{
    if (m_ahead.isEmpty() || In_Group() || m_sinceAhead.elapsed() > Longest_Ahead) {
        m_ahead.clear();
        return nullptr;
    }
    const auto answer = m_ahead.constFind(statement);
    return answer == m_ahead.constEnd() ? nullptr : std::make_unique<Kept_Rows>(*answer);
}

void Server_Connection::Forget_Ahead(const QString &table)
{
    m_ahead.removeIf([&table](const auto &one) {
        const std::vector<QString> &tables = one.value()->plan->tables;
        return std::find(tables.begin(), tables.end(), table) != tables.end();
    });
}

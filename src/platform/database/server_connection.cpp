// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/server_connection.h"

#include "platform/database/bound_value.h"
#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/server_ddl.h"
#include "platform/database/server_text.h"
#include "platform/database/server_translator.h"
#include "platform/database/sql_parser.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype Most_Kept_Plans = 256;

/// The rows of a statement, which the driver holds; they are read one by one.
class Server_Rows : public Row_Source
{
public:
    Server_Rows(std::unique_ptr<Odbc_Link::Run> run, std::shared_ptr<const Plan> plan)
        : m_run(std::move(run)), m_plan(std::move(plan))
    {
    }
    [[nodiscard]] const std::vector<Output> &Outputs() const override { return m_plan->outputs; }
    bool Next(Row &row) override
    {
        if (!m_run->Fetch()) {
            return false;
        }
        row.clear();
        for (size_t i = 0; i < m_plan->outputs.size(); ++i) {
            row.push_back(m_run->Read(i, m_plan->outputs[i].type));
        }
        if (!m_plan->baseTable.isEmpty()) {
            row.push_back(m_run->Read(row.size(), Value_Type::Count));
        }
        return true;
    }
    bool Skip() override { return m_run->Fetch(); }

private:
    std::unique_ptr<Odbc_Link::Run> m_run;
    std::shared_ptr<const Plan> m_plan;
};

/// A plan's text for the rows behind the first `skip` ones. A limit at its end counts from the first row.
QByteArray Behind(const QByteArray &sql, qint64 skip)
{
    const QByteArray limit = QByteArrayLiteral(" LIMIT ");
    const QByteArray offset = QByteArray::number(skip);
    const qsizetype at = sql.lastIndexOf(limit);
    const bool limited = at >= 0 && !sql.mid(at).contains(')');
    return (limited ? sql.left(at) + " LIMIT greatest(0, " + sql.mid(at + limit.size()) + " - " + offset + ")" : sql) +
           " OFFSET " + offset;
}

/// The statement names a table or a column that is not there, or not any more.
bool Is_Of_Tables(const Run_Time_Error &error)
{
    return error.failure == Failure::Missing_Table || error.failure == Failure::Missing_Column;
}
} // namespace

std::shared_ptr<const Plan> Server_Connection::Translated(const std::vector<Token> &tokens, bool updatable,
                                                          bool &ranAsDdl)
{
    const Sql_Ast::Statement tree = Parse_Statement(tokens);
    if (Server_Ddl::Run(*this, tree)) {
        ranAsDdl = true;
        return nullptr;
    }
    try {
        return std::make_shared<Plan>(Translate_For_Server(tree, Tables(), updatable));
    } catch (const Run_Time_Error &error) {
        if (!Is_Of_Tables(error)) {
            throw;
        }
    }
    Forget_Tables();
    return std::make_shared<Plan>(Translate_For_Server(tree, Tables(), updatable));
}

std::shared_ptr<const Plan> Server_Connection::Plan_Of(const std::vector<Token> &tokens, bool updatable, bool &ranAsDdl)
{
    const QString key = (updatable ? u'u' : u'r') + QString(Stored_Date::Separator()) + Statement_Shape(tokens);
    std::shared_ptr<const Plan> plan = m_plans.value(key);
    if (plan == nullptr) {
        plan = Translated(tokens, updatable, ranAsDdl);
        if (plan != nullptr && plan->reusable) {
            if (m_plans.size() >= Most_Kept_Plans) {
                m_plans.clear();
            }
            m_plans.insert(key, plan);
        }
    }
    return plan;
}

/// A plan's statement with its values.
QString Server_Connection::Text_Of(const Plan &plan, const std::vector<Token> &tokens, qint64 skip)
{
    std::vector<const Token *> literals;
    for (const Token &token : tokens) {
        if (token.Is_Literal()) {
            literals.push_back(&token);
        }
    }
    const QByteArray sql = skip > 0 && !plan.write ? Behind(plan.sql, skip) : plan.sql;
    return Server_Text::Filled(sql, [&](size_t at) {
        const Parameter &parameter = plan.parameters.at(at);
        return Server_Text::Literal(Bound_Value(*literals.at(static_cast<size_t>(parameter.literal)), parameter));
    });
}

std::unique_ptr<Row_Source> Server_Connection::Run_Once(const std::vector<Token> &tokens, bool updatable,
                                                        QString *baseTable, qint64 skip)
{
    bool ranAsDdl = false;
    const std::shared_ptr<const Plan> plan = Plan_Of(tokens, updatable, ranAsDdl);
    if (ranAsDdl) {
        return nullptr;
    }
    std::unique_ptr<Odbc_Link::Run> run = Execute(Text_Of(*plan, tokens, skip));
    if (plan->write) {
        Forget_Ahead(plan->tables.front());
        return nullptr;
    }
    if (baseTable != nullptr) {
        *baseTable = plan->baseTable;
    }
    return std::make_unique<Server_Rows>(std::move(run), plan);
}

std::unique_ptr<Row_Source> Server_Connection::Run(const QString &statement, bool updatable, QString *baseTable,
                                                   qint64 skip, const Early_Rows & /*early*/)
{
    if (!updatable && skip == 0) {
        if (auto answer = Answered_Ahead(statement)) {
            return answer;
        }
    }
    const std::vector<Token> tokens = Tokenize(statement);
    try {
        return Run_Once(tokens, updatable, baseTable, skip);
    } catch (const Run_Time_Error &error) {
        // Another program may have changed the tables since they were read.
        if (!m_catalogIsKnown || !Is_Of_Tables(error)) {
            throw;
        }
    }
    Forget_Tables();
    return Run_Once(tokens, updatable, baseTable, skip);
}

qint64 Server_Connection::Write_Row(const Row_Change &change, const std::vector<Output> &outputs, Row &fresh)
{
    const Catalog_Table *table = Tables().Find(change.table);
    if (table == nullptr || table->rowColumn.isEmpty()) {
        throw Engine_Error::Missing_Table(change.table);
    }
    QStringList names;
    QStringList values;
    QStringList changes;
    for (const auto &[column, value] : change.values) {
        names.append(Quoted_Name(outputs[static_cast<size_t>(column)].column));
        values.append(Server_Text::Literal(value));
        changes.append(names.back() + u" = "_s + values.back());
    }
    const QString row = Quoted_Name(table->rowColumn);
    if (changes.isEmpty()) {
        changes.append(row + u" = "_s + row);
    }
    QStringList back{row};
    for (const Output &output : outputs) {
        back.append(output.column.isEmpty() ? u"NULL"_s : Quoted_Name(output.column));
    }
    const QString name = Quoted_Name(table->name);
    const QString head = change.row >= 0 ? u"UPDATE "_s + name + u" SET "_s + changes.join(u", "_s) + u" WHERE "_s +
                                               row + u" = "_s + QString::number(change.row)
                         : names.isEmpty() ? u"INSERT INTO "_s + name + u" DEFAULT VALUES"_s
                                           : u"INSERT INTO "_s + name + u" ("_s + names.join(u", "_s) +
                                                 u") VALUES ("_s + values.join(u", "_s) + u')';
    Forget_Ahead(table->name);
    const auto run = Execute(head + u" RETURNING "_s + back.join(u", "_s));
    if (!run->Fetch()) {
        throw Engine_Error::Row_Is_Gone();
    }
    const Cell number = run->Read(0, Value_Type::Count);
    fresh.clear();
    for (size_t i = 0; i < outputs.size(); ++i) {
        fresh.push_back(run->Read(i + 1, outputs[i].type));
    }
    return std::get<qint64>(number);
}

void Server_Connection::Remove_Row(const QString &table, qint64 row)
{
    const Catalog_Table *known = Tables().Find(table);
    if (known == nullptr) {
        throw Engine_Error::Missing_Table(table);
    }
    Forget_Ahead(known->name);
    Execute(u"DELETE FROM "_s + Quoted_Name(known->name) + u" WHERE "_s + Quoted_Name(known->rowColumn) + u" = "_s +
            QString::number(row));
}

void Server_Connection::Before_Write(const QString & /*table*/)
{
    if (m_groupBroken) {
        throw Engine_Error::Failed(u"An earlier failure undid the whole action; nothing more is written."_s);
    }
}

/// Within a group a mark of its own; else a group of its own that a failure undoes.
void Server_Connection::Whole(const std::function<void()> &body)
{
    const bool alone = m_groupDepth == 0;
    if (alone) {
        ++m_groupDepth;
    } else {
        Execute_In_Group(u"SAVEPOINT zelqor_whole"_s, false);
    }
    try {
        body();
        if (alone) {
            End_Group();
        } else {
            Execute_In_Group(u"RELEASE SAVEPOINT zelqor_whole"_s, false);
        }
    } catch (...) {
        if (m_link != nullptr && !m_link->Is_Lost() && m_groupBegun) {
            Odbc_Link::Run(m_link, alone ? u"ROLLBACK"_s
                                         : u"ROLLBACK TO SAVEPOINT zelqor_whole; RELEASE SAVEPOINT zelqor_whole"_s);
        }
        if (alone) {
            m_groupDepth = 0;
            m_groupBegun = m_groupBroken = false;
        }
        throw;
    }
}

std::unique_ptr<Odbc_Link::Run> Server_Connection::Execute(const QString &sql)
{
    Before_Write({});
    return m_groupDepth > 0 ? Execute_In_Group(sql, true) : Execute_Alone(sql);
}

/// A connection that turns out to be lost is made anew for a statement that only reads; whether one that writes has
/// come through is not known, so that it is for the caller to look.
std::unique_ptr<Odbc_Link::Run> Server_Connection::Execute_Alone(const QString &sql)
{
    Connect();
    try {
        return std::make_unique<Odbc_Link::Run>(m_link, sql);
    } catch (const Run_Time_Error &) {
        const bool lost = m_link->Is_Lost();
        if (lost) {
            Drop();
        }
        if (!lost || !sql.startsWith("SELECT"_L1)) {
            throw;
        }
    }
    Connect();
    return std::make_unique<Odbc_Link::Run>(m_link, sql);
}

std::unique_ptr<Odbc_Link::Run> Server_Connection::Execute_In_Group(const QString &sql, bool marked)
{
    constexpr auto Turn = "BEGIN; SELECT pg_advisory_xact_lock(x'5A454C51'::integer); ";
    const bool lostBefore = m_link != nullptr && m_link->Is_Lost();
    if (lostBefore && !m_groupBegun) {
        Drop();
    }
    Connect();
    const bool first = !m_groupBegun;
    QString text = first ? QString::fromLatin1(Turn) : QString();
    text += marked ? u"SAVEPOINT zelqor_one; "_s + sql + u"; RELEASE SAVEPOINT zelqor_one"_s : sql;
    m_groupBegun = true;
    try {
        auto run = std::make_unique<Odbc_Link::Run>(m_link, text);
        for (int before = (first ? 2 : 0) + (marked ? 1 : 0); before > 0; --before) {
            run->Next_Result();
        }
        return run;
    } catch (...) {
        if (m_link->Is_Lost()) {
            Drop();
            m_groupBroken = true;
        } else {
            Undo_Statement();
        }
        throw;
    }
}

/// What failed is undone. Where even the first statement's mark is missing, the group had no turn and begins anew.
void Server_Connection::Undo_Statement()
{
    try {
        Odbc_Link::Run(m_link, u"ROLLBACK TO SAVEPOINT zelqor_one; RELEASE SAVEPOINT zelqor_one"_s);
        return;
    } catch (const Run_Time_Error &) {
        m_groupBroken = m_link->Is_Lost();
    }
    if (m_groupBroken) {
        Drop();
    } else {
        Odbc_Link::Run(m_link, u"ROLLBACK"_s);
        m_groupBegun = false;
    }
}

void Server_Connection::End_Group()
{
    if (--m_groupDepth > 0) {
        return;
    }
    const bool begun = std::exchange(m_groupBegun, false);
    if (std::exchange(m_groupBroken, false)) {
        Forget_Tables();
        throw Engine_Error::From_Server(u"08006"_s,
                                        u"The action was undone by a lost connection; nothing of it was written."_s);
    }
    if (!begun) {
        return;
    }
    try {
        Odbc_Link::Run(m_link, u"COMMIT"_s);
    } catch (...) {
        const bool lost = m_link->Is_Lost();
        if (lost) {
            Drop();
        }
        Forget_Tables(); // tables changed in the group are as before
        throw;
    }
}

const Catalog &Server_Connection::Tables()
{
    if (!m_catalogIsKnown) {
        Load_Tables();
        m_catalogIsKnown = true;
    }
    return m_catalog;
}

void Server_Connection::Forget_Tables()
{
    m_plans.clear();
    m_ahead.clear();
    m_catalogIsKnown = false;
}

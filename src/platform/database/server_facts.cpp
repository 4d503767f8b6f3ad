// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/dates.h"
#include "platform/database/engine_error.h"
#include "platform/database/server_connection.h"
#include "platform/database/server_functions_sql.h"
#include "platform/database/server_text.h"

#include <QCoreApplication>
#include <QTimeZone>
#include <QUuid>

using namespace Qt::StringLiterals;

namespace
{
/// A statement may take so long, and wait so long for another one's turn.
constexpr int Longest_Statement_Seconds = 300;
constexpr int Longest_Turn_Seconds = 20;

/// A server that does not answer is found gone within seconds.
constexpr auto Library_Options = "tcp_user_timeout=15000 keepalives=1 keepalives_idle=5 "
                                 "keepalives_interval=3 keepalives_count=3";
constexpr auto Several_Hosts = " target_session_attrs=read-write";

/// Tells this process from others in the record of changes.
const QString &Program_Mark()
{
    static const QString mark = QUuid::createUuid().toString(QUuid::WithoutBraces);
    return mark;
}

/// The parts with what the driver needs to be told: the lines are kept as they are, nothing is logged, and the driver's
/// own marks within transactions stay out.
Odbc_Text::Parts With_Driver_Options(Odbc_Text::Parts parts)
{
    QString library = QString::fromLatin1(Library_Options);
    bool ours = false;
    for (auto &[name, value] : parts) {
        ours = ours || (name.compare("driver"_L1, Qt::CaseInsensitive) == 0 &&
                        value.contains("postgres"_L1, Qt::CaseInsensitive));
        const bool several = value.contains(u',');
        if (several && (name.compare("server"_L1, Qt::CaseInsensitive) == 0 ||
                        name.compare("servername"_L1, Qt::CaseInsensitive) == 0)) {
            library += QString::fromLatin1(Several_Hosts);
        }
    }
    if (!ours) {
        return parts;
    }
    bool hasLibrary = false;
    for (auto &[name, value] : parts) {
        if (name.compare("pqopt"_L1, Qt::CaseInsensitive) == 0) {
            hasLibrary = true;
            QStringList own = value.split(u' ', Qt::SkipEmptyParts);
            for (const QString &option : library.split(u' ')) {
                const QString start = option.section(u'=', 0, 0) + u'=';
                const bool given =
                    std::any_of(own.cbegin(), own.cend(), [&](const QString &one) { return one.startsWith(start); });
                own += given ? QStringList() : QStringList{option};
            }
            value = own.join(u' ');
        }
    }
    if (!hasLibrary) {
        parts.emplace_back(u"pqopt"_s, library);
    }
    for (const auto &[name, value] : {std::pair{u"Debug"_s, u"0"_s},
                                      {u"CommLog"_s, u"0"_s},
                                      {u"UseDeclareFetch"_s, u"0"_s},
                                      {u"UseServerSidePrepare"_s, u"0"_s},
                                      {u"Protocol"_s, u"7.4-0"_s},
                                      {u"LFConversion"_s, u"0"_s},
                                      {u"ByteaAsLongVarBinary"_s, u"1"_s},
                                      {u"BoolsAsChar"_s, u"0"_s}}) {
        parts.emplace_back(name, value);
    }
    return parts;
}

Value_Type Type_Of(const QString &name, int modifier, int &size)
{
    constexpr int Header = 4;
    if (name == u"varchar"_s && modifier > Header) {
        size = modifier - Header;
        return Value_Type::Text;
    }
    if (name == u"date_text"_s) {
        return Value_Type::Date;
    }
    if (name == u"int4"_s || name == u"int2"_s) {
        return Value_Type::Long;
    }
    if (name == u"int8"_s) {
        return Value_Type::Count;
    }
    if (name == u"bytea"_s) {
        return Value_Type::Blob;
    }
    return name.startsWith("float"_L1) || name == u"numeric"_s ? Value_Type::Single : Value_Type::Memo;
}

const QString Tables_Sql =
    u"SELECT c.relname, a.attname, t.typname, a.atttypmod, a.attnotnull::integer, a.attidentity::text, "
    "coalesce(array_position(k.conkey, a.attnum), 0) FROM pg_class c JOIN pg_attribute a ON a.attrelid = c.oid "
    "JOIN pg_type t ON t.oid = a.atttypid LEFT JOIN pg_constraint k ON k.conrelid = c.oid AND k.contype = 'p' "
    "WHERE c.relnamespace = quote_ident(current_schema())::regnamespace AND c.relkind = 'r' AND a.attnum > 0 "
    "AND NOT a.attisdropped ORDER BY c.relname, a.attnum; "
    "SELECT relname FROM pg_class WHERE relkind = 'i' AND relnamespace = quote_ident(current_schema())::regnamespace"_s;
} // namespace

void Server_Connection::Connect()
{
    if (m_link != nullptr && m_link->Is_Lost() && !m_groupBegun) {
        Drop();
    }
    if (m_link != nullptr) {
        return;
    }
    auto link = std::make_shared<Odbc_Link>();
    link->Connect(With_Driver_Options(m_parts));
    m_link = std::move(link);
    try {
        Learn_Facts();
    } catch (...) {
        Drop();
        throw;
    }
}

std::shared_ptr<Server_Connection> Server_Connection::Open(const Odbc_Text::Parts &parts)
{
    auto connection = std::make_shared<Server_Connection>(parts);
    connection->Connect();
    return connection;
}

std::shared_ptr<Server_Connection> Server_Connection::Open_If_Postgres(const Odbc_Text::Parts &parts)
{
    auto connection = std::make_shared<Server_Connection>(parts);
    connection->m_link = std::make_shared<Odbc_Link>();
    connection->m_link->Connect(With_Driver_Options(parts));
    if (!connection->m_link->Is_Postgres()) {
        return nullptr;
    }
    connection->Learn_Facts();
    return connection;
}

/// Sets the session up and learns what it is on, in one round trip.
void Server_Connection::Learn_Facts()
{
    const QString sql =
        u"SELECT set_config('search_path', (SELECT quote_ident(s) FROM unnest(current_schemas(false)) WITH ORDINALITY "
        u"AS "
        "u(s, n) WHERE s <> 'zelqor' ORDER BY n LIMIT 1) || ', zelqor', false), "
        "set_config('TimeZone', %1, false), set_config('lock_timeout', '%2s', false), "
        "set_config('statement_timeout', '%3s', false), set_config('standard_conforming_strings', 'on', false), "
        "set_config('client_min_messages', 'warning', false), set_config('zelqor.program', %4, false), "
        "set_config('zelqor.separator', %5, false), set_config('application_name', 'zelqor', false); "
        "SELECT current_schema(), pg_is_in_recovery()::integer, getdatabaseencoding(), "
        "obj_description(to_regnamespace('zelqor'), 'pg_namespace')"_s
            .arg(Quoted_Text(QString::fromUtf8(QTimeZone::systemTimeZoneId())))
            .arg(Longest_Turn_Seconds)
            .arg(Longest_Statement_Seconds)
            .arg(Quoted_Text(Program_Mark()), Quoted_Text(QString(Stored_Date::Separator())));
    Odbc_Link::Run run(m_link, sql + u"; "_s + Tables_Sql);
    run.Next_Result();
    if (!run.Fetch()) {
        throw Engine_Error::Failed(u"The server tells nothing of itself."_s);
    }
    m_facts.schema = run.Text(0);
    m_facts.readOnly = run.Text(1) == u"1"_s;
    const QString encoding = run.Text(2);
    m_facts.version = run.Text(3).section(u' ', -1).toInt();
    if (encoding != u"UTF8"_s) {
        throw Engine_Error::Failed(
            u"The server's database keeps texts as %1; a library needs one made with the encoding UTF8."_s.arg(
                encoding));
    }
    if (m_facts.schema.isEmpty()) {
        throw Engine_Error::Failed(u"The server's database has no schema that this user may see."_s);
    }
    run.Next_Result();
    Read_Tables(run);
    m_catalogIsKnown = m_facts.version >= Server_Functions::Version;
}

void Server_Connection::Prepare_Database()
{
    Connect();
    if (m_facts.version >= Server_Functions::Version || m_facts.readOnly || m_groupBegun) {
        return;
    }
    Odbc_Link::Run names(m_link, u"SELECT coalesce((SELECT quote_ident(collname) FROM pg_collation WHERE collname IN "
                                 "('C.utf8', 'C.UTF-8', 'en_US.utf8', 'pg_c_utf8', 'und-x-icu') ORDER BY "
                                 "collname = 'und-x-icu', collname LIMIT 1), '\"default\"'), "
                                 "(SELECT count(*) FROM pg_collation WHERE collname = 'und-x-icu')"_s);
    names.Fetch();
    const QString lower = names.Text(0);
    const bool icu = names.Text(1) != u"0"_s;
    QString schema = QString::fromUtf16(Server_Functions::Schema);
    schema.replace(u":LOWER"_s, lower);
    schema.replace(u":UPPER"_s, icu ? u"\"und-x-icu\""_s : lower);
    schema.replace(u":SORT"_s,
                   icu ? u"(provider = icu, locale = 'zh-CN-u-ks-level2', deterministic = false)"_s : u"FROM \"C\""_s);
    QString all = u"BEGIN; SELECT pg_advisory_xact_lock(x'5A454C51'::integer); "_s + schema;
    for (const char16_t *part : {Server_Functions::Texts, Server_Functions::Dates, Server_Functions::Values}) {
        all += QString::fromUtf16(part);
    }
    all += u"COMMENT ON SCHEMA zelqor IS 'zelqor functions %1'; COMMIT"_s.arg(Server_Functions::Version);
    try {
        Odbc_Link::Run(m_link, all);
    } catch (...) {
        Drop(); // with its transaction
        throw;
    }
    m_facts.version = Server_Functions::Version;
}

void Server_Connection::Load_Tables()
{
    Prepare_Database();
    Read_Tables(*Execute(Tables_Sql));
}

/// Reads the two results of Tables_Sql, the first of which is at hand.
void Server_Connection::Read_Tables(Odbc_Link::Run &run)
{
    m_catalog.Clear();
    std::unique_ptr<Catalog_Table> table;
    const auto end = [&] {
        if (table != nullptr) {
            m_catalog.Add(std::move(table));
        }
    };
    while (run.Fetch()) {
        const QString name = run.Text(0);
        if (table == nullptr || table->name != name) {
            end();
            table = std::make_unique<Catalog_Table>();
            table->name = name;
            table->hasRowid = false;
        }
        Catalog_Column column;
        column.name = run.Text(1);
        column.declared = run.Text(2);
        column.type = Type_Of(column.declared, run.Text(3).toInt(), column.size);
        column.notNull = run.Text(4) == u"1"_s;
        column.autoIncrement = !run.Text(5).isEmpty();
        column.keyPlace = run.Text(6).toInt();
        if (column.autoIncrement && (column.name == u"zelqor_row"_s || table->rowColumn.isEmpty())) {
            table->rowColumn = column.name;
            table->hasRowid = true;
        }
        if (column.name != u"zelqor_row"_s) {
            table->columns.push_back(std::move(column));
        }
    }
    end();
    run.Next_Result();
    while (run.Fetch()) {
        m_catalog.Add_Index(run.Text(0));
    }
}

QStringList Server_Connection::Changed_By_Others()
{
    Prepare_Database();
    // What was told long ago to everybody who asks is of no more use.
    const bool first = m_seen.isEmpty();
    const QString old =
        first && !m_facts.readOnly ? u"DELETE FROM zelqor.changes WHERE at < now() - interval '1 hour'; "_s : QString();
    const QString now = old + u"SELECT pg_current_snapshot()::text, "_s;
    const QString since =
        m_seen.isEmpty()
            ? u"''"_s
            : u"(SELECT coalesce(string_agg(DISTINCT what, '|'), '') FROM zelqor.changes WHERE tx >= "
              "pg_snapshot_xmin(%1::pg_snapshot) AND NOT pg_visible_in_snapshot(tx, "
              "%1::pg_snapshot) AND who IS DISTINCT FROM %2)"_s.arg(Quoted_Text(m_seen), Quoted_Text(Program_Mark()));
    const auto run = Execute(now + since);
    if (!old.isEmpty()) {
        run->Next_Result();
    }
    if (!run->Fetch()) {
        return {};
    }
    m_seen = run->Text(0);
    return run->Text(1).split(u'|', Qt::SkipEmptyParts);
}

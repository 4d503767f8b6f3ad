// SPDX-License-Identifier: GPL-3.0-or-later
//
// A small statement through a recordset, and the same one straight through SQLite on a kept connection, over a file
// of 100,000 documents.
#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Documents = 100000;

QString Document_Id(int number)
{
    return u"{%1}"_s.arg(number % Documents, 36, 10, QChar(u'0'));
}

/// The file of the measurements, made once.
const QString &Connection_String()
{
    static const QTemporaryDir folder;
    static const QString connection = [] {
        const QString string = Database_Engine::File_Connection_String(folder.filePath(u"bench.db"_s));
        Database_Engine::Create_File(string);
        Database_Engine::One_Action(string, [&string] {
            Run_Statement(u"CREATE TABLE Cate_Info (Cate_ID Text(250) PRIMARY KEY, Cate_Name Text(50))"_s, string);
            Run_Statement(u"CREATE TABLE Code_Info (Code_ID Text(38) PRIMARY KEY, Cate_ID Text(250), Code_Title "
                          "Text(255), Code_Content memo, Code_Date DateTime)"_s,
                          string);
            const QString insert = u"insert into code_info(code_id,cate_id,code_title,code_content,code_date) values "
                                   "('%1','%2','title 标题 %1','%3','2024-01-%4')"_s;
            const QString content = u"内容 some content of a document "_s.repeated(10);
            for (int i = 0; i < Documents; ++i) {
                const QString folderId = u"%1"_s.arg(i % 400, 6, 10, QChar(u'0'));
                Run_Statement(insert.arg(Document_Id(i), folderId, content).arg(i % 28 + 1, 2, 10, QChar(u'0')),
                              string);
            }
        });
        return string;
    }();
    return connection;
}

void Statement_Through_A_Recordset(benchmark::State &state)
{
    const QString connection = Connection_String();
    int number = 0;
    for (auto _ : state) {
        Recordset rows;
        rows.Open(u"select code_title,cate_id from Code_Info where code_id='"_s + Document_Id(number += 7919) + u'\'',
                  connection);
        benchmark::DoNotOptimize(rows[u"code_title"_s].Text());
    }
}
BENCHMARK(Statement_Through_A_Recordset);

void Statement_Through_Sqlite(benchmark::State &state, bool kept)
{
    sqlite3 *db = Connection_Pool::Get(Connection_Pool::Parse(Connection_String()).file)->Handle();
    constexpr auto sql = "select \"Code_Title\",\"Cate_ID\" from \"Code_Info\" where \"Code_ID\" = ?1";
    sqlite3_stmt *statement = nullptr;
    int number = 0;
    for (auto _ : state) {
        const QByteArray id = Document_Id(number += 7919).toUtf8();
        if (statement == nullptr) {
            sqlite3_prepare_v2(db, sql, -1, &statement, nullptr);
        }
        sqlite3_bind_text(statement, 1, id.constData(), static_cast<int>(id.size()), SQLITE_STATIC);
        sqlite3_step(statement);
        benchmark::DoNotOptimize(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, 0))));
        sqlite3_reset(statement);
        if (!kept) {
            sqlite3_finalize(statement);
            statement = nullptr;
        }
    }
    sqlite3_finalize(statement);
}
BENCHMARK_CAPTURE(Statement_Through_Sqlite, prepared_each_time, false);
BENCHMARK_CAPTURE(Statement_Through_Sqlite, prepared_once, true);

void Query_Of_Many_Rows(benchmark::State &state, const char *statement)
{
    const QString connection = Connection_String();
    for (auto _ : state) {
        Recordset rows;
        rows.CursorType = Cursor_Type::Static;
        rows.Open(QString::fromUtf8(statement), connection);
        benchmark::DoNotOptimize(rows.RecordCount());
    }
    state.SetLabel(statement);
}
BENCHMARK_CAPTURE(Query_Of_Many_Rows, search,
                  "Select Code_ID From Code_Info WHERE Cate_ID like '%' and ( "
                  "instr(1,lcase(Code_Content),lcase('Nothing'),0)<>0 ) order by Code_ID")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Query_Of_Many_Rows, folder, "Select count(*) From Code_Info where Cate_ID like '0001%'")
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Query_Of_Many_Rows, page,
                  "Select top 200 Code_ID,Code_Title From Code_Info where Cate_ID like '000001%' order by Code_Title")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Query_Of_Many_Rows, all_by_title, "Select top 200 Code_ID From Code_Info order by Code_Title")
    ->Unit(benchmark::kMillisecond);
} // namespace

BENCHMARK_MAIN();

// SPDX-License-Identifier: GPL-3.0-or-later
//
// The ways back to a document, on 100,000 documents with 200 tags: a click on a tag and on the hot lists beside the
// same statement straight through SQLite, a tag for 1,000 documents beside the raw updates in one transaction, what is
// due, and what is typed into the box that finds anything.
#include "core/process_state.h"
#include "core/settings.h"
#include "floors.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "views/day_marks.h"
#include "views/hot.h"
#include "views/list_columns.h"
#include "views/place_loading.h"
#include "views/tagged_documents.h"
#include "views/tags.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Tagged_At_Once = 1000;
constexpr int Listed = 100;
const QDate Today(2025, 3, 5);
const char *const Columns =
    "Code_ID,Code_Title,Cate_ID,Code_Keys,Code_Color,Code_Done,Code_Explain,Code_Author,Code_Create,Code_Update,"
    "Code_Provenance,Code_Promulgator,Code_Date,Code_File,Code_Type,Code_ReadDate,Code_ReadNum,Code_UpdateNum,"
    "Code_Creater,Code_Updater,Code_LineColor,Code_ReadDateNext,Code_Content";

void Run_Raw(const QString &file, const QString &statements)
{
    sqlite3 *database = nullptr;
    char *error = nullptr;
    sqlite3_open(file.toUtf8().constData(), &database);
    if (sqlite3_exec(database, statements.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK)
        qFatal("%s", error);
    sqlite3_close(database);
}

/// A copy of the shared library with 200 tags and with reviews over some years.
struct Measured {
    QTemporaryDir folder;
    QString file = folder.filePath(u"ways.db"_s);

    Measured()
    {
        QFile::copy(Shared_Library(100000, 2000), file);
        Run_Raw(file,
                u"begin; delete from tab_tags;"
                "with recursive n(i) as (select 1 union all select i + 1 from n where i < 200) "
                "insert into tab_tags(tags_Index,tags_Id,tags_Name,tags_Count) select i, i, 'tag ' || i, 0 from n;"
                "update Code_Info set Code_Tags = case when rowid % 3 = 0 then '' else '{' || (rowid * 7919 % 200 + 1) "
                "|| '}{' || (rowid * 104729 % 200 + 1) || '}' end,"
                "Code_ReadDateNext = date('2025-03-05', (rowid * 31 % 2000 - 5) || ' days'), Code_ReadDate_Sta = '';"
                "commit; analyze"_s);
    }
};

QString The_File()
{
    static Measured measured;
    App().App_Path = u"/nowhere/"_s;
    App().Date_Sep = u"-"_s;
    App().Date_Delim = u"#"_s;
    App().Conn_Str = Database_Engine::File_Connection_String(measured.file);
    Config().Op_DB_Sql = u"0"_s;
    return measured.file;
}

/// What a list reads: all rows are found and ordered, the first ones are read whole.
void List_Raw(benchmark::State &state, const std::string &where, int limit)
{
    Raw_Database database(The_File());
    sqlite3_stmt *rows = database.Prepare("select " + std::string(Columns) + " from Code_Info where " + where);
    for (auto _ : state) {
        for (int row = 0; sqlite3_step(rows) == SQLITE_ROW; ++row) {
            for (int i = 0; row < limit && i < sqlite3_column_count(rows); ++i)
                benchmark::DoNotOptimize(sqlite3_column_text(rows, i));
        }
        sqlite3_reset(rows);
    }
}

void List_Where(benchmark::State &state, const QString &where, int limit)
{
    The_File();
    List_Model list;
    list.Set_Columns(Captioned_Columns());
    Page_Info info;
    for (auto _ : state)
        info = ShowCodeInfoToList_Ex_Key(where, list, {}, 1, limit);
    state.counters["found"] = static_cast<double>(info.labels[Page_Info::Total]);
}

void Tag_Raw(benchmark::State &state)
{
    List_Raw(state, "Code_Tags like '%_57_%' order by Code_Date", Listed);
}

void Tag(benchmark::State &state)
{
    List_Where(state, Tag_Where(57), Listed);
}

struct Hot_Node {
    const char *key;
    const char *raw;
};
constexpr Hot_Node Hot_Nodes[] = {
    {"T_000", "Code_ReadNum > 0 order by Code_ReadNum desc"},
    {"T_001", "Code_Date >= '2025' and Code_Date < '2026' order by Code_Date desc"},
    {"T_004", "Code_Tags <> '' order by Code_Date desc"},
    {"G_001", "Code_ReadDateNext < '2025-03-05' order by Code_Date desc"},
    {"G_006",
     "(Code_ReadDate >= '2025-03-05' and Code_ReadDate <= '2025-03-31 23:59:59' and Code_ReadDate_Sta = 'X') or "
     "(Code_ReadDateNext >= '2025-03-05' and Code_ReadDateNext <= '2025-03-31 23:59:59') order by Code_Date desc"},
};
constexpr int Hot_Limit = 50;

template <int Node>
void Hot_Raw(benchmark::State &state)
{
    List_Raw(state, Hot_Nodes[Node].raw, Hot_Limit);
}

template <int Node>
void Hot(benchmark::State &state)
{
    The_File();
    List_Where(state, Hot_Where(QLatin1String(Hot_Nodes[Node].key), Today), Hot_Limit);
}

void Due(benchmark::State &state)
{
    The_File();
    Due_Counts due;
    for (auto _ : state)
        due = Count_Due(Today);
    state.counters["overdue"] = static_cast<double>(due.overdue);
}

/// The marks of a month of the calendar.
void Marks(benchmark::State &state)
{
    The_File();
    QHash<int, Day_Marks> marks;
    for (auto _ : state)
        marks = Month_Marks(2025, 3);
    state.counters["days"] = static_cast<double>(marks.size());
}

QStringList Some_Documents()
{
    QStringList ids;
    Recordset rows;
    rows.Open(u"select top %1 Code_ID from Code_Info where Code_ReadNum > 2"_s.arg(Tagged_At_Once), App().Conn_Str);
    for (; !rows.Eof(); rows.MoveNext())
        ids << rows[0].Text();
    return ids;
}

void Tag_Many_Raw(benchmark::State &state)
{
    const QString file = The_File();
    QString statements = u"begin;"_s;
    for (const QString &id : Some_Documents())
        statements += u"update Code_Info set Code_Tags = Code_Tags || '{9999}' where Code_ID = '%1';"_s.arg(id);
    statements += u"update tab_tags set tags_Count = (select count(*) from Code_Info where Code_Tags like '%{9999}%') "
                  "where tags_Id = 57; commit"_s;
    const QString back =
        u"update Code_Info set Code_Tags = replace(Code_Tags, '{9999}', '') where Code_Tags like '%{9999}%'"_s;
    for (auto _ : state) {
        Run_Raw(file, statements);
        state.PauseTiming();
        Run_Raw(file, back);
        state.ResumeTiming();
    }
}

void Tag_Many(benchmark::State &state)
{
    The_File();
    const QStringList ids = Some_Documents();
    const int tag = Add_Tag(u"one for many"_s);
    Tagging tagging;
    for (auto _ : state) {
        tagging = Change_Tags(ids, {tag}, {});
        state.PauseTiming();
        Change_Tags(ids, {}, {tag});
        state.ResumeTiming();
    }
    state.counters["changed"] = tagging.changed;
}

/// All titles and folders, once when the box is opened for the first time.
void Load_Anywhere(benchmark::State &state)
{
    The_File();
    Place_Index index;
    for (auto _ : state) {
        index.Clear();
        Load_Places(index);
    }
    state.counters["places"] = index.Count();
}

/// One key in the box: a letter that nearly all titles hold, two words, initials, letters with gaps.
void Type_Anywhere(benchmark::State &state)
{
    The_File();
    Place_Index index;
    Load_Places(index);
    const QStringList typed = {u"e"_s, u"研究 2"_s, u"zsgl"_s, u"prjmngmt"_s, u""_s};
    for (auto _ : state)
        benchmark::DoNotOptimize(index.Find(typed[static_cast<qsizetype>(state.range(0))], 50));
}

BENCHMARK(Tag_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(Tag)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot_Raw<0>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot<0>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot_Raw<1>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot<1>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot_Raw<2>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot<2>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot_Raw<3>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot<3>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot_Raw<4>)->Unit(benchmark::kMillisecond);
BENCHMARK(Hot<4>)->Unit(benchmark::kMillisecond);
BENCHMARK(Due)->Unit(benchmark::kMillisecond);
BENCHMARK(Marks)->Unit(benchmark::kMillisecond);
BENCHMARK(Tag_Many_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(Tag_Many)->Unit(benchmark::kMillisecond);
BENCHMARK(Load_Anywhere)->Unit(benchmark::kMillisecond);
BENCHMARK(Type_Anywhere)->DenseRange(0, 4)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Floor_Reporter reporter({{"Tag", "Tag_Raw", 2},
                             {"Hot<0>", "Hot_Raw<0>", 2},
                             {"Hot<1>", "Hot_Raw<1>", 2},
                             {"Hot<2>", "Hot_Raw<2>", 2},
                             {"Hot<3>", "Hot_Raw<3>", 2},
                             {"Hot<4>", "Hot_Raw<4>", 2},
                             {"Tag_Many", "Tag_Many_Raw", 3}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// Pages of the document list and the years of the tree of dates on 100,000 documents with about 400 MB of text in
// 2,000 folders, each beside raw SQLite that fetches the same rows and makes the same lookups.
#include "core/process_state.h"
#include "core/settings.h"
#include "floors.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "views/by_date.h"
#include "views/list_columns.h"
#include "views/list_engine.h"

#include <QGuiApplication>
#include <QThread>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Rows_On_A_Page = 46;
const QString Folder = u"001"_s;

const char *const Columns =
    "Code_Info.Code_ID,Code_Info.Code_Title,Code_Info.Cate_ID,Code_Keys,Code_Color,Code_Done,Code_Explain,Code_Author,"
    "Code_Create,Code_Update,Code_Provenance,Code_Promulgator,Code_Date,Code_File,Code_Type,Code_ReadDate,Code_ReadNum,"
    "Code_UpdateNum,Code_Creater,Code_Updater,Code_LineColor,Code_ReadDateNext";

/// The engine makes them beside the work, some time after the file was opened first.
void Wait_For_Indexes(const QString &file)
{
    Recordset first;
    first.Open(u"select top 1 Code_ID from Code_Info"_s, Database_Engine::File_Connection_String(file));
    Raw_Database database(file);
    sqlite3_stmt *made = database.Prepare("select 1 from sqlite_schema where name = 'zelqor_Code_Info_Code_Keys'");
    while (Raw_Database::Read_All(made) == 0)
        QThread::msleep(100);
}

void Use_Library()
{
    static const QString file = [] {
        Announce_List_Orders();
        QString library = Shared_Library(100000, 2000, Long_Texts);
        Wait_For_Indexes(library);
        return library;
    }();
    App().App_Path = u"/nowhere/"_s;
    App().Conn_Str = Database_Engine::File_Connection_String(file);
    App().Date_Sep = u"-"_s;
    Config().MAX_RECORD = Rows_On_A_Page;
    Config().ShowLow = u"TRUE"_s;
    Config().Op_DB_Sql = u"0"_s;
    Config().Cob_OrderBy = u"2"_s;
}

QString Library_File()
{
    Use_Library();
    return Database_Engine::File_Of(App().Conn_Str);
}

void Folder_Page_Raw(benchmark::State &state)
{
    Raw_Database database(Library_File());
    const std::string columns = Columns;
    sqlite3_stmt *count = database.Prepare("select count(*) from Code_Info where Cate_ID >= '001' and Cate_ID < '002'");
    sqlite3_stmt *password = database.Prepare("select Cate_pass from Cate_Info where Cate_ID = '001'");
    sqlite3_stmt *rows = database.Prepare(
        "select * from (select * from (select " + columns +
        " from Code_Info, Cate_Info where Code_Info.Cate_ID >= '001' and Code_Info.Cate_ID < '002' and "
        "Code_Info.Cate_ID = Cate_Info.Cate_ID and Cate_pass = '' order by Code_Create desc limit 46) union select " +
        columns +
        " from Code_Info, tab_VirCate where Code_Info.Code_ID = tab_VirCate.Code_id and tab_VirCate.Cate_ID >= '001' "
        "and tab_VirCate.Cate_ID < '002') order by Code_Create desc");
    sqlite3_stmt *name = database.Prepare("select Cate_Name from Cate_Info where Cate_ID = ?");
    sqlite3_stmt *files =
        database.Prepare("select count(*) from tab_file where (file_type = 0 or file_type = 1) and code_id = ?");
    for (auto _ : state) {
        Raw_Database::Read_All(count);
        Raw_Database::Read_All(password);
        for (int row = 0; row < Rows_On_A_Page && sqlite3_step(rows) == SQLITE_ROW; ++row) {
            for (int i = 0; i < sqlite3_column_count(rows); ++i)
                benchmark::DoNotOptimize(sqlite3_column_text(rows, i));
            sqlite3_bind_text(name, 1, reinterpret_cast<const char *>(sqlite3_column_text(rows, 2)), -1, SQLITE_STATIC);
            Raw_Database::Read_All(name);
            sqlite3_bind_text(files, 1, reinterpret_cast<const char *>(sqlite3_column_text(rows, 0)), -1,
                              SQLITE_STATIC);
            Raw_Database::Read_All(files);
        }
        sqlite3_reset(rows);
    }
}

/// What is written before each page: nothing, the reading of a document, or what finds the order of the rows anew.
enum class Before { Nothing, Reading, Change };

void Show_Page(benchmark::State &state, const QString &folder, int page, const char16_t *order = u"2",
               Before before = Before::Nothing)
{
    Use_Library();
    Config().Cob_OrderBy = QString::fromUtf16(order);
    List_Model list;
    list.Set_Columns(Captioned_Columns());
    QString password;
    for (auto _ : state) {
        if (before != Before::Nothing) {
            state.PauseTiming();
            Run_Statement(before == Before::Reading
                              ? u"update Code_Info set Code_Readnum=Code_Readnum+1 where Cate_ID='002'"_s
                              : u"update Cate_Info set Cate_pass=Cate_pass where Cate_ID='001'"_s,
                          App().Conn_Str);
            state.ResumeTiming();
        }
        ShowCodeInfoToList_Ex(folder, list, false, page, {}, password);
    }
    state.counters["rows"] = list.Row_Count();
}

void Folder_Page(benchmark::State &state)
{
    Show_Page(state, Folder, 1);
}

void Root_Page_1(benchmark::State &state)
{
    Show_Page(state, {}, 1);
}

void Root_Page_1000(benchmark::State &state)
{
    Show_Page(state, {}, 1000);
}

/// The first page behind a change of what is listed: the order of the rows is found anew.
void Root_Page_1000_Anew(benchmark::State &state)
{
    Show_Page(state, {}, 1000, u"2", Before::Change);
}

/// What an order by titles takes straight through SQLite, without the dictionary.
void Title_Order_Raw(benchmark::State &state)
{
    Raw_Database database(Library_File());
    sqlite3_stmt *rows = database.Prepare(
        "select Code_Info.rowid from Code_Info, Cate_Info where not (Code_Info.Cate_ID >= '000' and Code_Info.Cate_ID "
        "< '001') and Code_Info.Cate_ID = Cate_Info.Cate_ID and Cate_pass = '' order by Code_Title collate nocase");
    for (auto _ : state)
        Raw_Database::Read_All(rows);
}

void Title_Page_1(benchmark::State &state)
{
    Show_Page(state, {}, 1, u"3");
}

void Title_Page_1000(benchmark::State &state)
{
    Show_Page(state, {}, 1000, u"3");
}

/// The next page after a document was opened from the one before.
void Title_Page_1000_After_Reading(benchmark::State &state)
{
    Show_Page(state, {}, 1000, u"3", Before::Reading);
}

void Title_Page_1000_Anew(benchmark::State &state)
{
    Show_Page(state, {}, 1000, u"3", Before::Change);
}

void Keys_Page_1_Anew(benchmark::State &state)
{
    Show_Page(state, {}, 1, u"5", Before::Change);
}

void Years_Raw(benchmark::State &state)
{
    Raw_Database database(Library_File());
    sqlite3_stmt *years =
        database.Prepare("select substr(Code_Date, 1, 4), count(*) from Code_Info group by substr(Code_Date, 1, 4)");
    for (auto _ : state)
        Raw_Database::Read_All(years);
}

void Years(benchmark::State &state)
{
    Use_Library();
    Tree_Model tree;
    for (auto _ : state)
        Reload_ByDate(tree);
    state.counters["years"] = tree.Node_Count() - 1;
}

BENCHMARK(Folder_Page_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(Folder_Page)->Unit(benchmark::kMillisecond);
BENCHMARK(Root_Page_1)->Unit(benchmark::kMillisecond);
BENCHMARK(Root_Page_1000)->Unit(benchmark::kMillisecond);
BENCHMARK(Root_Page_1000_Anew)->Unit(benchmark::kMillisecond);
BENCHMARK(Title_Order_Raw)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Title_Page_1)->Unit(benchmark::kMillisecond);
BENCHMARK(Title_Page_1000)->Unit(benchmark::kMillisecond);
BENCHMARK(Title_Page_1000_After_Reading)->Unit(benchmark::kMillisecond);
BENCHMARK(Title_Page_1000_Anew)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Keys_Page_1_Anew)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Years_Raw)->Unit(benchmark::kMillisecond);
BENCHMARK(Years)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Floor_Reporter reporter({{"Folder_Page", "Folder_Page_Raw", 2},
                             {"Root_Page_1000", "Root_Page_1", 3},
                             {"Title_Page_1000", "Title_Page_1", 3},
                             {"Title_Page_1000_Anew", "Title_Order_Raw", 1},
                             {"Keys_Page_1_Anew", "Title_Order_Raw", 1},
                             {"Years", "Years_Raw", 3}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

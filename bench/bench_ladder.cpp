// SPDX-License-Identifier: GPL-3.0-or-later
//
// The migration ladder: what it adds to the creation of a new file, and what it costs over a library of 100,000
// documents that is current but for its version row. Their floors are the creation alone, and a count of the rows: a
// ladder that walked rows it does not change would take several times as long.
#include "core/process_state.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "storage/database_lifecycle.h"
#include "storage/ladder.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{
const Ladder_Callbacks No_Window{[](const QString &) { return false; },
                                 [] {
                                 }};

const QTemporaryDir &Folder()
{
    static const QTemporaryDir folder;
    return folder;
}

void Make_New(benchmark::State &state, bool ladder)
{
    const QString file = Folder().filePath(u"new.db"_s);
    const QString connection = File_Conn_Str(file);
    for (auto _ : state) {
        Database_Engine::Let_Go();
        QFile::remove(file);
        if (!CreateDataBase(file))
            state.SkipWithError("the file could not be made");
        if (ladder)
            Run_Ladder(connection, u"0"_s, No_Window);
    }
}

void Creation_Alone(benchmark::State &state)
{
    Make_New(state, false);
}

void Creation_And_Ladder(benchmark::State &state)
{
    Make_New(state, true);
}

/// A copy of the library, raised once so that only its version row is missing in each round.
const QString &Raised_Library()
{
    static const QString connection = [] {
        const QString copy = Folder().filePath(u"library.db"_s);
        Files::Copy_File(Shared_Library(100000, 2000), copy);
        const QString made = File_Conn_Str(copy);
        Run_Ladder(made, u"0"_s, No_Window);
        return made;
    }();
    return connection;
}

void Count_Of_All_Rows(benchmark::State &state)
{
    const QString &connection = Raised_Library();
    for (auto _ : state)
        Run_Statement(u"select count(*) from Code_Info where Code_Title like '%no such title%'"_s, connection);
}

void Ladder_Over_A_Current_Library(benchmark::State &state)
{
    const QString &connection = Raised_Library();
    for (auto _ : state) {
        Run_Statement(u"delete from Mess_Conf where Mess_ID = 'DB_VER'"_s, connection);
        Run_Ladder(connection, u"0"_s, No_Window);
    }
}

void Gate(benchmark::State &state)
{
    const QString &connection = Raised_Library();
    for (auto _ : state)
        benchmark::DoNotOptimize(Need_Update_Db(connection));
}

BENCHMARK(Creation_Alone)->Unit(benchmark::kMillisecond);
BENCHMARK(Creation_And_Ladder)->Unit(benchmark::kMillisecond);
BENCHMARK(Count_Of_All_Rows)->Unit(benchmark::kMillisecond);
BENCHMARK(Ladder_Over_A_Current_Library)->Unit(benchmark::kMillisecond);
BENCHMARK(Gate)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    App().App_Path = Folder().path() + u'/';
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

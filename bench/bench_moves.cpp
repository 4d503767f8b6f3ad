// SPDX-License-Identifier: GPL-3.0-or-later
//
// Moving a subtree of 500 folders with 10,000 documents to and fro in a library of 100,000 documents in 5,000 folders,
// and its floor: the two raw statements that renumber both tables, in one transaction. Then the counting anew after
// one document moved: the numbers of its folder and the ancestors, beside the raw count statements alone.
#include "core/process_state.h"
#include "core/settings.h"
#include "library.h"
#include "platform/database/database.h"
#include "ratio_reporter.h"
#include "tree/folder_ids.h"
#include "tree/folder_moving.h"
#include "tree/tree_loading.h"

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Moved_Folders = 500;
constexpr int Moved_Documents = 10000;

/// A straight connection to the file under measurement.
class Raw
{
public:
    explicit Raw(const QString &file) { sqlite3_open(file.toUtf8().constData(), &m_database); }
    ~Raw() { sqlite3_close(m_database); }
    Raw(const Raw &) = delete;
    Raw &operator=(const Raw &) = delete;

    void Run(const QString &statements)
    {
        char *error = nullptr;
        if (sqlite3_exec(m_database, statements.toUtf8().constData(), nullptr, nullptr, &error) != SQLITE_OK)
            qFatal("%s", error);
    }
    qint64 Number(const QString &statement)
    {
        sqlite3_stmt *prepared = nullptr;
        sqlite3_prepare_v2(m_database, statement.toUtf8().constData(), -1, &prepared, nullptr);
        const qint64 number = sqlite3_step(prepared) == SQLITE_ROW ? sqlite3_column_int64(prepared, 0) : -1;
        sqlite3_finalize(prepared);
        return number;
    }

private:
    sqlite3 *m_database = nullptr;
};

/// A copy of the shared library with two new top folders: 900 with the subtree in its child, and 901.
struct Measured {
    QTemporaryDir folder;
    QString file = folder.filePath(u"moves.db"_s);

    Measured()
    {
        QFile::copy(Shared_Library(100000, 5000), file);
        Raw raw(file);
        raw.Run(u"begin"_s);
        const auto add = [&](const QString &id) {
            raw.Run(u"insert into Cate_Info(Cate_ID,Cate_Name,Order_Id,Cate_Exp,Icon_Name,Cate_pass) "
                    "values('%1','f',1,'1','home.ico','')"_s.arg(id));
        };
        for (const QString &id : {u"900"_s, u"901"_s, u"900001"_s})
            add(id);
        for (int i = 1; i < Moved_Folders; ++i)
            add(Child(i));
        // Every tenth document, spread over the subtree.
        raw.Run(u"update Code_Info set Cate_ID = '900001' || printf('%03d', 1 + rowid / 10 % %1) where rowid % 10 = 0"_s
                    .replace(u"%1"_s, QString::number(Moved_Folders - 1)));
        raw.Run(u"commit; analyze"_s);
        if (const qint64 number = raw.Number(u"select count(*) from Code_Info where Cate_ID like '900%'"_s);
            number != Moved_Documents)
            qFatal("%lld documents", number);
    }
    static QString Child(int number) { return u"900001%1"_s.arg(number, 3, 10, QLatin1Char('0')); }
};

Measured &The_Library()
{
    static Measured measured;
    return measured;
}

QString Connection()
{
    App().App_Path = u"/nowhere/"_s;
    Config().ShowLow = u"TRUE"_s;
    return App().Conn_Str = Database_Engine::File_Connection_String(The_Library().file);
}

void Move_Floor(benchmark::State &state)
{
    Raw raw(The_Library().file);
    bool there = false;
    for (auto _ : state) {
        const QString from = there ? u"901001"_s : u"900001"_s;
        const QString to = there ? u"900001"_s : u"901001"_s;
        QString statements = u"begin immediate;"_s;
        for (const QString &table : {u"Cate_Info"_s, u"Code_Info"_s})
            statements += u"update %1 set Cate_ID = '%3' || substr(Cate_ID, 7) "
                          "where Cate_ID >= '%2' and Cate_ID < '%2:';"_s.arg(table, from, to);
        raw.Run(statements + u"commit"_s);
        there = !there;
    }
    if (there)
        raw.Run(u"update Cate_Info set Cate_ID = '900001' || substr(Cate_ID, 7) where Cate_ID like '901001%';"
                "update Code_Info set Cate_ID = '900001' || substr(Cate_ID, 7) where Cate_ID like '901001%'"_s);
}

void Move_Folders(benchmark::State &state)
{
    Connection();
    QString at = u"900001"_s;
    for (auto _ : state) {
        at = Mod_Cate_Action(at, at.startsWith(u"900"_s) ? u"901"_s : u"900"_s);
        if (at.isEmpty()) {
            state.SkipWithError("the subtree was not moved");
            return;
        }
    }
    if (at.startsWith(u"901"_s))
        Mod_Cate_Action(at, u"900"_s);
    Database_Engine::Let_Go();
    state.counters["documents"] = static_cast<double>(
        Raw(The_Library().file).Number(u"select count(*) from Code_Info where Cate_ID like '900001%'"_s));
}

void Recount_Floor(benchmark::State &state)
{
    Raw raw(The_Library().file);
    for (auto _ : state) {
        for (const QString &id : {u"900"_s, u"900001"_s, Measured::Child(7)})
            benchmark::DoNotOptimize(
                raw.Number(u"select count(*) from Code_Info where Cate_ID >= '%1' and Cate_ID < '%1:'"_s.arg(id)));
    }
}

void Recount(benchmark::State &state)
{
    const QString connection = Connection();
    Tree_Model tree;
    if (!GetClassInfo_Ex(tree, connection, u"Zelqor"_s))
        return state.SkipWithError("the tree was not loaded");
    int touched = 0;
    QObject::connect(&tree, &Tree_Model::dataChanged, [&] { ++touched; });
    for (const QString &id : {u"900"_s, u"900001"_s, Measured::Child(7)})
        tree.Set_Caption(tree.Find(Folder_Key(id)), u"f[0]"_s);
    touched = 0;
    for (auto _ : state)
        Update_Tree_Num_Ex(tree, Measured::Child(7), connection, true);
    state.counters["touched"] = touched;
    Database_Engine::Let_Go();
}

BENCHMARK(Move_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Move_Folders)->Unit(benchmark::kMillisecond);
BENCHMARK(Recount_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Recount)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Ratio_Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

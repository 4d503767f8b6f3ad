// SPDX-License-Identifier: GPL-3.0-or-later
//
// The folder tree of 100,000 documents in 5,000 folders, and its floor: one grouped statement straight through SQLite
// that gives the same ids, names and subtree counts, and the building of a plain tree of them.
#include "core/process_state.h"
#include "core/settings.h"
#include "library.h"
#include "platform/database/database.h"
#include "ratio_reporter.h"
#include "tree/tree_loading.h"

#include <QGuiApplication>
#include <QHash>
#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{
const char *const Floor_Statement =
    "with recursive own(id, n) as materialized (select Cate_ID, count(*) from Code_Info group by Cate_ID), "
    "up(id, n) as (select id, n from own union all "
    "select substr(id, 1, length(id) - 3), n from up where length(id) > 3), "
    "total(id, n) as materialized (select id, sum(n) from up group by id) "
    "select f.Cate_ID, f.Cate_Name, f.Icon_Name, f.Cate_Exp, coalesce(total.n, 0) from Cate_Info f "
    "left join total on total.id = f.Cate_ID order by length(f.Cate_ID), f.Order_Id";

const QString &Library_File()
{
    static const QString file = Shared_Library(100000, 5000);
    return file;
}

/// A tree as plain as it can be.
struct Plain_Node {
    QString id;
    QString caption;
    QString image;
    bool expanded = false;
    std::vector<int> children;
};

QString Column(sqlite3_stmt *statement, int column)
{
    const auto *text = static_cast<const QChar *>(sqlite3_column_text16(statement, column));
    return text == nullptr ? QString() : QString(text, sqlite3_column_bytes16(statement, column) / 2);
}

void Tree_Floor(benchmark::State &state)
{
    sqlite3 *database = nullptr;
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_open_v2(Library_File().toUtf8().constData(), &database, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(database, Floor_Statement, -1, &statement, nullptr) != SQLITE_OK) {
        state.SkipWithError(sqlite3_errmsg(database));
        return;
    }
    sqlite3_int64 sum = 0;
    for (auto _ : state) {
        sum = 0;
        std::vector<Plain_Node> nodes;
        QHash<QString, int> byId;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            const sqlite3_int64 count = sqlite3_column_int64(statement, 4);
            Plain_Node node;
            node.id = Column(statement, 0);
            node.caption = Column(statement, 1) + u'[' + QString::number(count) + u']';
            node.image = Column(statement, 2).toUpper();
            node.expanded = Column(statement, 3) != u"0";
            const int own = static_cast<int>(nodes.size());
            const int parent = byId.value(node.id.chopped(3), -1);
            if (parent >= 0)
                nodes[static_cast<size_t>(parent)].children.push_back(own);
            byId.insert(node.id, own);
            nodes.push_back(std::move(node));
            sum += count;
        }
        benchmark::DoNotOptimize(nodes.data());
        sqlite3_reset(statement);
    }
    state.counters["counted"] = static_cast<double>(sum);
    sqlite3_finalize(statement);
    sqlite3_close(database);
}

void Tree_Load(benchmark::State &state)
{
    App().App_Path = u"/nowhere/"_s;
    Config().ShowLow = u"TRUE"_s;
    const QString connection = Database_Engine::File_Connection_String(Library_File());
    Tree_Model tree;
    for (auto _ : state) {
        if (!GetClassInfo_Ex(tree, connection, u"Zelqor"_s))
            state.SkipWithError("the tree was not loaded");
    }
    qint64 sum = 0;
    for (int i = 1; i < tree.Node_Count(); ++i)
        sum += tree.Node(i).caption.section(u'[', -1).chopped(1).toLongLong();
    state.counters["counted"] = static_cast<double>(sum);
}

BENCHMARK(Tree_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Tree_Load)->Unit(benchmark::kMillisecond);

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

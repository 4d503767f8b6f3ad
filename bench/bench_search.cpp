// SPDX-License-Identifier: GPL-3.0-or-later
//
// A search of all nine fields over 100,000 documents with about 400 MB of text, beside one raw pass that reads the
// same columns' bytes, and beside a search tool over the same text in one file for each document.
#include "core/process_state.h"
#include "core/settings.h"
#include "floors.h"
#include "library.h"
#include "platform/database/database.h"
#include "support/no_shell.h"
#include "tree/tree_loading.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/search_pane.h"
#include "views/search.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSplitter>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

using namespace Qt::StringLiterals;

namespace
{
/// Occurs in few texts; "的" and the like would measure the list and not the search.
const QString Rare_Key = u"Philosophy.Zz"_s;
const QString Chinese_Key = u"量子纠缠"_s;
const QString Common_Key = u"客户"_s;

QString Library_File()
{
    static const QString file = Shared_Library(100000, 2000, Long_Texts);
    App().App_Path = u"/nowhere/"_s;
    App().Conn_Str = Database_Engine::File_Connection_String(file);
    Config().CH_Lsv_Detail = u"1"_s;
    return file;
}

QString All_Fields_Where(const QString &key)
{
    Search_Request request{key, true, {}, {}};
    for (const Search_Field &field : Search_Fields())
        request.fields << QLatin1String(field.column);
    return Search_Where(request);
}

void Pass_Raw(benchmark::State &state)
{
    Raw_Database database(Library_File());
    std::string columns;
    for (const Search_Field &field : Search_Fields())
        columns.append(columns.empty() ? "" : ",").append(field.column);
    sqlite3_stmt *pass = database.Prepare("select " + columns + " from Code_Info");
    qint64 bytes = 0;
    for (auto _ : state)
        bytes = Raw_Database::Read_All(pass);
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}

void Run_Search(benchmark::State &state, const QString &key)
{
    Library_File();
    Condition_Rows found;
    for (auto _ : state)
        found = Rows_By_Condition(All_Fields_Where(key), key, Search_Limit, List_Setting::Now());
    state.counters["found"] = static_cast<double>(found.info.labels[Page_Info::Total]);
}

void Search_Latin(benchmark::State &state)
{
    Run_Search(state, Rare_Key);
}

void Search_Chinese(benchmark::State &state)
{
    Run_Search(state, Chinese_Key);
}

/// Nearly every document is found: each one is counted, a hundred are read with their places.
void Search_Common(benchmark::State &state)
{
    Run_Search(state, Common_Key);
}

/// The text of each document in a file of its own, written once.
QString Text_Files()
{
    const QString folder = Library_File() + u".texts"_s;
    if (QFileInfo::exists(folder))
        return folder;
    Raw_Database database(Library_File());
    sqlite3_stmt *rows = database.Prepare("select rowid, Code_Title || char(10) || Code_Content from Code_Info");
    while (sqlite3_step(rows) == SQLITE_ROW) {
        const QString number = QString::number(sqlite3_column_int64(rows, 0));
        const QString place = folder + u'/' + number.right(2);
        QDir().mkpath(place);
        QFile file(place + u'/' + number + u".txt"_s);
        if (file.open(QIODevice::WriteOnly))
            file.write(reinterpret_cast<const char *>(sqlite3_column_text(rows, 1)), sqlite3_column_bytes(rows, 1));
    }
    return folder;
}

void Tool_Over_Files(benchmark::State &state)
{
    const QStringList arguments{u"-i"_s, u"-F"_s, u"-c"_s, Rare_Key, Text_Files()};
    if (QProcess::execute(u"rg"_s, arguments) < 0) // once before the clock runs: the files are in the cache then
        state.SkipWithError("rg is not installed");
    for (auto _ : state)
        QProcess::execute(u"rg"_s, arguments);
}

/// The search pane and the list side by side, as they stand in the main window.
struct Window {
    No_Shell shell;
    QSplitter splitter;
    Search_Pane *pane = new Search_Pane(shell);
    Frm_ListView *list = new Frm_ListView(shell);

    Window()
    {
        Tree_Model folders;
        GetClassInfo_Ex(folders, App().Conn_Str, u"Zelqor"_s);
        pane->Copy_Folders(folders);
        splitter.addWidget(pane);
        splitter.addWidget(list);
        splitter.resize(1200, 800);
        splitter.show();
        QApplication::processEvents();
    }
};

/// The longest time that a window's timer waits from the click on Search until the places are on screen.
/// @param meanwhile  done in the window some times while the search runs
void Longest_Wait(benchmark::State &state, const QString &key, const std::function<void(Search_Pane &)> &meanwhile = {})
{
    Library_File();
    const QTemporaryDir folder;
    App().App_Path = folder.path() + u'/';
    Window window;
    window.pane->findChild<QComboBox *>(u"Cob_FindKey"_s)->setEditText(key);
    double longest = 0;
    for (auto _ : state) {
        QEventLoop loop;
        QElapsedTimer since;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
            since.start();
        });
        QObject::connect(window.pane, &Search_Pane::Search_Ended, &loop, [&](const auto &result) {
            window.list->Show_Source([result](List_Model &list, int) {
                list.Replace(result->found.rows);
                return result->found.info;
            });
            QTimer::singleShot(300, &loop, &QEventLoop::quit);
        });
        QTimer disturbance;
        QObject::connect(&disturbance, &QTimer::timeout, [&, left = 5]() mutable {
            if (left-- > 0)
                meanwhile(*window.pane);
        });
        QObject::connect(window.pane, &Search_Pane::Search_Ended, &disturbance, &QTimer::stop);
        if (meanwhile)
            disturbance.start(70);
        since.start();
        timer.start(1);
        QTimer::singleShot(10, window.pane, &Search_Pane::Cmd_FindTxt);
        loop.exec();
    }
    state.counters["longest_ms"] = longest;
}

void Longest_Wait_Rare(benchmark::State &state)
{
    Longest_Wait(state, Rare_Key);
}

void Longest_Wait_Common(benchmark::State &state)
{
    Longest_Wait(state, Common_Key);
}

void Longest_Wait_Restarts(benchmark::State &state)
{
    Longest_Wait(state, Common_Key, [](Search_Pane &pane) { pane.Cmd_FindTxt(); });
}

/// The write's own time is in it.
void Longest_Wait_Writes(benchmark::State &state)
{
    Longest_Wait(state, Common_Key, [](Search_Pane & /*pane*/) {
        Run_Statement(u"update Cate_Info set Cate_Exp=Cate_Exp where Cate_ID='001'"_s, App().Conn_Str);
    });
}

BENCHMARK(Pass_Raw)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Search_Latin)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Search_Chinese)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Search_Common)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Tool_Over_Files)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Longest_Wait_Rare)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Longest_Wait_Common)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Longest_Wait_Restarts)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(Longest_Wait_Writes)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Floor_Reporter reporter({{"Search_Latin", "Pass_Raw", 1.5},
                             {"Search_Chinese", "Pass_Raw", 1.5},
                             {"Search_Latin", "Tool_Over_Files", 1},
                             {"Search_Chinese", "Tool_Over_Files", 1}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

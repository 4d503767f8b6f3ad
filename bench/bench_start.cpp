// SPDX-License-Identifier: GPL-3.0-or-later
//
// From nothing to the main window on screen over a library of 100,000 documents: settings, database, tree, list. Its
// floor is the same kinds of widgets, empty. What the language costs of it is shown as a share; the floor of loading a
// pack is reading its bytes.
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/settings.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/profile/profile.h"
#include "storage/database_lifecycle.h"
#include "tree/tree_loading.h"
#include "ui/kit/ctrl_language.h"
#include "ui/window/frm_main.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenuBar>
#include <QSplitter>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{
const QSize Window_Size(1024, 700);

/// A program directory whose settings name the library.
const QString &Program_Folder()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        QDir(folder.path()).mkdir(u"Lang"_s);
        QFile::copy(Resource_Path(u"CHINESE_INI"_s), folder.filePath(u"Lang/CHINESE.INI"_s));
        const QString config = folder.filePath(u"Config.ini"_s);
        Profile::Write(config, u"DataBase"_s, u"DATABASE_NAME"_s, Shared_Library(100000, 2000));
        return folder.path() + u'/';
    }();
    return path;
}

void Show_And_Paint(QWidget &window)
{
    window.resize(Window_Size);
    window.show();
    QApplication::processEvents();
    window.repaint();
}

void Window_Floor(benchmark::State &state)
{
    for (auto _ : state) {
        QMainWindow window;
        for (const char *menu : {"&File", "&Edit", "&View", "&Tools", "&Help"})
            window.menuBar()->addMenu(QLatin1String(menu))->addAction(u"Action"_s);
        window.addToolBar(u"Tools"_s)->addAction(u"New"_s);
        window.statusBar()->showMessage(u"Ready"_s);
        auto *main = new QSplitter(&window);
        auto *left = new QTabWidget(main);
        left->addTab(new QTreeView, u"Folders"_s);
        auto *right = new QTabWidget(main);
        auto *list = new QTreeView;
        QStandardItemModel columns(0, 18);
        list->setModel(&columns);
        right->addTab(list, u"List"_s);
        window.setCentralWidget(main);
        Show_And_Paint(window);
    }
}

/// The time since the last call, in milliseconds; the stages of a start are shown beside its whole.
double Lap(QElapsedTimer &timer)
{
    const double passed = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    timer.restart();
    return passed;
}

void Pack_Floor(benchmark::State &state)
{
    const QString path = Program_Folder() + u"Lang/CHINESE.INI"_s;
    for (auto _ : state) {
        QFile pack(path);
        if (!pack.open(QIODevice::ReadOnly))
            state.SkipWithError("no pack");
        benchmark::DoNotOptimize(QString::fromUtf8(pack.readAll()));
    }
}

void Load_Pack(benchmark::State &state)
{
    App().App_Path = Program_Folder();
    for (auto _ : state)
        Load_Language(u"Main()"_s);
}

void Start_To_Shown_Window(benchmark::State &state)
{
    App().App_Path = Program_Folder();
    double whole = 0;
    double language = 0;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        Config() = {};
        GetConfigInfo(Database_Steps_For_Start());
        const qint64 settings = timer.nsecsElapsed();
        Load_Language(u"Main()"_s);
        language += static_cast<double>(timer.nsecsElapsed() - settings) / 1e6;
        if (!App().Conn_OK)
            state.SkipWithError("the library did not open");
        Load_Root_Facts();
        const double settingsLap = Lap(timer);
        Frm_Main window;
        const double windowLap = Lap(timer);
        window.Select_Last_Folder();
        const double listLap = Lap(timer);
        Show_And_Paint(window);
        const double paintLap = Lap(timer);
        state.PauseTiming();
        whole += settingsLap + windowLap + listLap + paintLap;
        state.counters["settings"] = settingsLap;
        state.counters["window and tree"] = windowLap;
        state.counters["list"] = listLap;
        state.counters["paint"] = paintLap;
        timer.restart();
        ctrlLanguage(window, u"Frm_Main"_s).LoadControlsCaption(); // the walk that the window's construction held
        language += Lap(timer);
        Database_Engine::Let_Go();
        state.ResumeTiming();
    }
    state.counters["language, percent"] = 100 * language / whole;
}

BENCHMARK(Pack_Floor)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load_Pack)->Unit(benchmark::kMicrosecond);
BENCHMARK(Window_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Start_To_Shown_Window)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// From nothing to the main window on screen over a library of 100,000 documents: settings, database, tree, list. Its
// floor is the same kinds of widgets, empty.
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/profile/profile.h"
#include "storage/database_lifecycle.h"
#include "tree/tree_loading.h"
#include "ui/frm_main.h"

#include <QApplication>
#include <QElapsedTimer>
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

void Start_To_Shown_Window(benchmark::State &state)
{
    App().App_Path = Program_Folder();
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        Config() = {};
        GetConfigInfo(Database_Steps_For_Start());
        Load_Language(u"Main()"_s);
        if (!App().Conn_OK)
            state.SkipWithError("the library did not open");
        Load_Root_Facts();
        state.counters["settings"] = Lap(timer);
        Frm_Main window;
        state.counters["window and tree"] = Lap(timer);
        window.Select_Last_Folder();
        state.counters["list"] = Lap(timer);
        Show_And_Paint(window);
        state.counters["paint"] = Lap(timer);
        state.PauseTiming();
        Database_Engine::Let_Go();
        state.ResumeTiming();
    }
}

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

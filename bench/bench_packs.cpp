// SPDX-License-Identifier: GPL-3.0-or-later
//
// What the language costs a start: loading the pack and filling in the main window's captions, as a share of the time
// from nothing to the window over a small library. Its floor is reading the pack's bytes.
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/profile/profile.h"
#include "storage/database_lifecycle.h"
#include "tree/tree_loading.h"
#include "ui/ctrl_language.h"
#include "ui/frm_main.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace
{
/// A program directory with the pack in it, whose settings name a small library.
const QString &Program_Folder()
{
    static const QTemporaryDir folder;
    static const QString path = [] {
        Init_Core_Resources();
        QDir(folder.path()).mkdir(u"Lang"_s);
        QFile::copy(u":/lang/CHINESE.INI"_s, folder.filePath(u"Lang/CHINESE.INI"_s));
        Profile::Write(folder.filePath(u"Config.ini"_s), u"DataBase"_s, u"DATABASE_NAME"_s, Shared_Library(1000, 50));
        return folder.path() + u'/';
    }();
    return path;
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

void Start_With_Language(benchmark::State &state)
{
    App().App_Path = Program_Folder();
    double whole = 0;
    double language = 0;
    for (auto _ : state) {
        QElapsedTimer start;
        start.start();
        Config() = {};
        GetConfigInfo(Database_Steps_For_Start());
        QElapsedTimer timer;
        timer.start();
        Load_Language(u"Main()"_s);
        language += static_cast<double>(timer.nsecsElapsed());
        Load_Root_Facts();
        Frm_Main window;
        whole += static_cast<double>(start.nsecsElapsed());

        // The walk that the window's construction held, once more.
        state.PauseTiming();
        timer.restart();
        ctrlLanguage(window, u"Frm_Main"_s).LoadControlsCaption();
        language += static_cast<double>(timer.nsecsElapsed());
        Database_Engine::Let_Go();
        state.ResumeTiming();
    }
    state.counters["language, percent"] = 100 * language / whole;
}

BENCHMARK(Pack_Floor)->Unit(benchmark::kMicrosecond);
BENCHMARK(Load_Pack)->Unit(benchmark::kMicrosecond);
BENCHMARK(Start_With_Language)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// A book of 500 rich documents beside decoding and writing them, in both formats; and 900 documents beside 90, each of
// which may cost the same. The opening of such a book, to its first picture on a screen of its own, beside that of an
// empty window of the same toolkit.
#include "core/language_pack.h"
#include "core/process_state.h"
#include "exchange/book_export.h"
#include "exchange/epub_export.h"
#include "floors.h"
#include "library.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"
#include "platform/richtext/rich_text.h"

#include <QElapsedTimer>
#include <QFile>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextDocument>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Rich_Documents = 500;

struct Measured {
    QTemporaryDir folder;
    QList<Book_Row> rows;

    Measured()
    {
        App().App_Path = folder.path() + u'/';
        App().Conn_Str = Database_Engine::File_Connection_String(Shared_Library(1000, 20, Long_Texts));
        Recordset found;
        for (found.Open(u"Select Code_ID,Code_Title,Code_Type From Code_Info"_s, App().Conn_Str); !found.Eof();
             found.MoveNext())
            rows.append({found[0].Text(), found[1].Text(), found[2].Text()});
    }
    static Measured &Get()
    {
        static Measured measured;
        return measured;
    }
    [[nodiscard]] QString Book() const { return folder.filePath(u"book.exe"_s); }
};

QList<Book_Row> Rows(int count)
{
    return Measured::Get().rows.mid(0, count);
}

void Rich_Book_Floor(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        QFile file(Measured::Get().folder.filePath(u"floor"_s));
        (void)file.open(QIODevice::WriteOnly);
        for (const Book_Row &row : Rows(Rich_Documents)) {
            Recordset found;
            found.Open(u"Select Code_Content_IO From Code_Info Where Code_ID ='%1'"_s.arg(row.code_id), App().Conn_Str);
            bool complete = false;
            QTextDocument document;
            Rich_Text::Read_Rtf(Lzma_Decode(found[0].Bytes(), complete), document);
            file.write(Rich_Text::Write_Rtf(document));
        }
    }
}

void Rich_Book(benchmark::State &state)
{
    Unwatched_Work work;
    for ([[maybe_unused]] auto _ : state) {
        const Book_Result result =
            Export_Book({Measured::Get().Book(), {}, 9999, Book_Mode::Rich, Rows(Rich_Documents)}, work);
        if (result.done != Rich_Documents)
            state.SkipWithError("documents are missing");
    }
}

void Epub(benchmark::State &state)
{
    Unwatched_Work work;
    for ([[maybe_unused]] auto _ : state)
        (void)Export_Epub({Measured::Get().folder.filePath(u"book.epub"_s), u"Book"_s, Rows(Rich_Documents)}, work);
}

void Text_Book(benchmark::State &state, int count)
{
    Unwatched_Work work;
    for ([[maybe_unused]] auto _ : state)
        (void)Export_Book({Measured::Get().folder.filePath(u"text.exe"_s), {}, 9999, Book_Mode::Text, Rows(count)},
                          work);
    state.counters["microseconds each"] =
        benchmark::Counter(count, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

/// A screen that only this program uses.
class Screen
{
public:
    Screen()
    {
        m_server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x860x24"_s});
        if (m_server.waitForStarted() && m_server.waitForReadyRead(20'000))
            m_name = ':' + m_server.readAllStandardOutput().trimmed();
        m_display = XOpenDisplay(m_name.constData());
    }
    ~Screen()
    {
        if (m_display != nullptr)
            XCloseDisplay(m_display);
        m_server.kill();
        m_server.waitForFinished();
    }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    /// Runs a program until the window that it opens is painted. @returns seconds, less than 0 when none came
    double Seconds_To_Paint(const QString &program) const
    {
        if (m_display == nullptr)
            return -1;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, QString::fromLatin1(m_name));
        QProcess process;
        process.setProcessEnvironment(environment);
        QElapsedTimer timer;
        timer.start();
        process.start(program, QStringList());
        while (!Is_Painted() && timer.elapsed() < 10'000)
            XSync(m_display, False);
        const double seconds = static_cast<double>(timer.nsecsElapsed()) * 1e-9;
        process.kill();
        process.waitForFinished();
        while (Is_Painted())
            XSync(m_display, False);
        return seconds;
    }

private:
    /// Whether anything stands in the middle of the screen, which is black itself.
    [[nodiscard]] bool Is_Painted() const
    {
        constexpr int Middle_X = 640, Middle_Y = 430;
        XImage *image =
            XGetImage(m_display, DefaultRootWindow(m_display), Middle_X, Middle_Y, 1, 1, AllPlanes, ZPixmap);
        if (image == nullptr)
            return false;
        const bool isPainted = (XGetPixel(image, 0, 0) & 0xFFFFFF) != 0;
        XDestroyImage(image);
        return isPainted;
    }

    QProcess m_server;
    QByteArray m_name;
    Display *m_display = nullptr;
};

/// @returns the mean in milliseconds
double Open(benchmark::State &state, const QString &program)
{
    static const Screen screen;
    double sum = 0;
    for ([[maybe_unused]] auto _ : state) {
        const double seconds = screen.Seconds_To_Paint(program);
        if (seconds < 0) {
            state.SkipWithError("no virtual X server");
            break;
        }
        state.SetIterationTime(seconds);
        sum += seconds * 1000;
    }
    return sum / static_cast<double>(std::max<benchmark::IterationCount>(state.iterations(), 1));
}

double Empty_Window = 0; ///< milliseconds

void Open_Window_Floor(benchmark::State &state)
{
    Empty_Window = Open(state, QStringLiteral(ZELQOR_EMPTY_WINDOW));
}

void Open_Book(benchmark::State &state)
{
    const double mean = Open(state, Measured::Get().Book());
    state.counters["ms above an empty window, at most 100"] = mean - Empty_Window;
}

BENCHMARK(Rich_Book_Floor)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Rich_Book)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(Epub)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(Text_Book, 90, 90)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Text_Book, 900, 900)->Unit(benchmark::kMillisecond);
BENCHMARK(Open_Window_Floor)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);
BENCHMARK(Open_Book)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(20);
} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Floor_Reporter reporter({{"Rich_Book", "Rich_Book_Floor", 2}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    Database_Engine::Let_Go();
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_builder.h"
#include "platform/richtext/rtf_reader.h"
#include "ratio_reporter.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QRandomGenerator>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace
{
constexpr int paragraphCount = 20'000;
constexpr int runsPerParagraph = 4;

const QString &Run_Text()
{
    static const QString text = QStringLiteral("Some words of a usual sentence, and 一些中文。 ");
    return text;
}

/// Western and Chinese text, in turns plain and bold: what people keep.
QByteArray Usual_Rtf()
{
    QByteArray rtf =
        "{\\rtf1\\ansi\\ansicpg936\\deff0{\\fonttbl{\\f0\\fcharset134 Base;}}{\\colortbl;\\red255\\green0\\blue0;}";
    for (int i = 0; i < paragraphCount; ++i) {
        rtf += "\\pard\\plain\\f0\\fs24 ";
        for (int run = 0; run < runsPerParagraph / 2; ++run)
            rtf += "Some words of a usual sentence, and \\'d2\\'bb\\'d0\\'a9\\'d6\\'d0\\'ce\\'c4\\'a1\\'a3 "
                   "{\\b\\cf1 Some words of a usual sentence, and \\u19968?\\u20123?\\u20013?\\u25991?\\u12290? }";
        rtf += "\\par\r\n";
    }
    return rtf + "}";
}

/// The reader alone, before a document is made. Floor: 20 MB/s on one core (200 when last measured).
void Parse(benchmark::State &state)
{
    const QByteArray rtf = Usual_Rtf();
    for ([[maybe_unused]] auto _ : state) {
        Rtf::Model model;
        Rtf::Reader(std::string_view(rtf.constData(), static_cast<std::size_t>(rtf.size())), model).Read({});
        benchmark::DoNotOptimize(model.text.size());
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
}

void Read(benchmark::State &state)
{
    const QByteArray rtf = Usual_Rtf();
    for ([[maybe_unused]] auto _ : state) {
        QTextDocument document;
        Rich_Text::Read_Rtf(rtf, document);
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
}

/// What QTextDocument itself needs for the same runs: reading may take twice as long (1.6 times when last measured).
void Build_Floor(benchmark::State &state)
{
    QTextCharFormat plain, bold;
    plain.setFontFamilies({QStringLiteral("Base")});
    plain.setFontPointSize(12);
    bold = plain;
    bold.setFontWeight(QFont::Bold);
    bold.setForeground(Qt::red);
    for ([[maybe_unused]] auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        QTextCursor cursor(&document);
        cursor.beginEditBlock();
        for (int i = 0; i < paragraphCount; ++i) {
            if (i > 0)
                cursor.insertBlock({}, plain);
            for (int run = 0; run < runsPerParagraph; ++run)
                cursor.insertText(Run_Text(), run % 2 ? bold : plain);
        }
        cursor.endEditBlock();
    }
}

/// 10 MB with 200 pictures among text.
const QByteArray &Rtf_With_Pictures()
{
    static const QByteArray whole = [] {
        constexpr int pictures = 200, wanted = 10'000'000;
        const QByteArray text =
            QByteArray("\\pard Some words of a usual sentence, and \\u19968?\\u20123? more.\\par\r\n").repeated(100);
        QByteArray rtf = "{\\rtf1\\ansi{\\fonttbl{\\f0 Base;}}";
        for (int i = 0; i < pictures; ++i) {
            QImage image(100, 64, QImage::Format_RGB32);
            image.fill(Qt::white);
            QRandomGenerator random(static_cast<quint32>(i));
            random.fillRange(reinterpret_cast<quint32 *>(image.bits()), image.sizeInBytes() / 4);
            QByteArray bytes;
            QBuffer buffer(&bytes);
            image.save(&buffer, "PNG");
            rtf += text + "{\\pict\\pngblip\\picwgoal3000\\pichgoal2000 " + bytes.toHex() + "}\\par\r\n";
        }
        while (rtf.size() < wanted)
            rtf += text;
        return rtf + "}";
    }();
    return whole;
}

/// What the text's layout alone takes: the window may not stand still for longer while such a document is read.
void Layout_Floor(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        QTextDocument document;
        Rich_Text::Read_Rtf(Rtf_With_Pictures(), document);
        state.ResumeTiming();
        document.setTextWidth(700);
        benchmark::DoNotOptimize(document.documentLayout()->documentSize());
        state.PauseTiming();
        document.clear();
        state.ResumeTiming();
    }
}

void Read_Pictures(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        QTextDocument document;
        Rich_Text::Read_Rtf(Rtf_With_Pictures(), document);
    }
    state.SetBytesProcessed(state.iterations() * Rtf_With_Pictures().size());
}

void Write(benchmark::State &state)
{
    QTextDocument document;
    Rich_Text::Read_Rtf(Usual_Rtf(), document);
    qsizetype size = 0;
    for ([[maybe_unused]] auto _ : state)
        size = Rich_Text::Write_Rtf(document).size();
    state.SetBytesProcessed(state.iterations() * size);
}
} // namespace

BENCHMARK(Parse)->Unit(benchmark::kMillisecond);
BENCHMARK(Build_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Read)->Unit(benchmark::kMillisecond);
BENCHMARK(Write)->Unit(benchmark::kMillisecond);
BENCHMARK(Layout_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Read_Pictures)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Ratio_Reporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

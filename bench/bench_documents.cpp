// SPDX-License-Identifier: GPL-3.0-or-later
//
// Opening, saving and importing documents, each beside what it can't do without: the coder, the rich-text room and the
// commit.
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/data_update.h"
#include "documents/document_reading.h"
#include "documents/document_store.h"
#include "open_tab.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/lzma/zelqorfun.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/rich_text.h"
#include "storage/database_lifecycle.h"
#include "support/no_shell.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextDocument>
#include <benchmark/benchmark.h>
#include <malloc.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr int Rtf_Size = 100 * 1024;
constexpr int Small_Files = 5000;

/// Two languages, four runs a paragraph.
QByteArray Usual_Rtf()
{
    QByteArray rtf =
        "{\\rtf1\\ansi\\ansicpg936\\deff0{\\fonttbl{\\f0\\fcharset134 Base;}}{\\colortbl;\\red255\\green0\\blue0;}";
    for (int i = 0; rtf.size() < Rtf_Size; ++i)
        rtf += "\\pard\\plain\\f0\\fs24 Paragraph " + QByteArray::number(i * 7919) +
               " of a usual document, \\'d2\\'bb\\'d0\\'a9\\'d6\\'d0\\'ce\\'c4\\'a1\\'a3 {\\b\\cf1 in bold "
               "\\u19968?\\u20123?} and "
               "{\\i in italics} again.\\par\r\n";
    return rtf + "}";
}

struct Program {
    QTemporaryDir folder;
    Document_Form form;
    QTextDocument content, memo, sum;
    Prompt_Script prompts;

    Program()
    {
        App().App_Path = folder.path() + u'/';
        GetConfigInfo(Database_Steps_For_Start());
        App().Date_Sep = u"-"_s;
        Run_Statement(u"insert into Cate_Info(Cate_ID,Cate_Name,Order_Id) values ('001','Work',1)"_s, App().Conn_Str);
        form.content = &content;
        form.memo = &memo;
        form.sum = &sum;
        Rich_Text::Read_Rtf(Usual_Rtf(), content);
        form.title = u"A title"_s;
        form.folder = u"001"_s;
        form.create_date = form.update_date = u"2026-03-04"_s;
        form.type = u"RTF"_s;
        AddCodeContent_Ex_Standard(form, u"0"_s);
    }
    static Program &Get()
    {
        static Program program;
        return program;
    }
};

/// The least that opening takes: decode, read, build. Opening may take 1.5 times as long.
void Open_Floor(benchmark::State &state)
{
    Program::Get();
    const QByteArray stream = Lzma_Encode(Usual_Rtf());
    for ([[maybe_unused]] auto _ : state) {
        bool complete = false;
        QTextDocument document;
        Rich_Text::Read_Rtf(Lzma_Decode(stream, complete), document);
    }
}

void Open_Document(benchmark::State &state)
{
    const QString id = Program::Get().form.code_id;
    for ([[maybe_unused]] auto _ : state) {
        QTextDocument content, memo, sum;
        Document_Form form;
        form.content = &content;
        form.memo = &memo;
        form.sum = &sum;
        GetCodeContent_Ex(id, form);
    }
}

/// A whole tab, with the form and its fields.
void Open_Tab(benchmark::State &state)
{
    Open_In_A_Tab(state, Program::Get().form.code_id);
}

/// The least that saving takes: write, encode, one commit. Saving may take 1.5 times as long.
void Save_Floor(benchmark::State &state)
{
    Program &program = Program::Get();
    for ([[maybe_unused]] auto _ : state) {
        const QByteArray stream = Lzma_Encode(Rich_Text::Write_Rtf(program.content));
        Recordset row;
        row.LockType = Lock_Type::Batch_Optimistic;
        row.Open(u"Select * From Code_Info Where Code_ID='%1'"_s.arg(program.form.code_id), App().Conn_Str);
        row[u"Code_Content"_s].Set(program.content.toPlainText());
        row[u"Code_Content_IO"_s].AppendChunk(stream);
        row.UpdateBatch();
    }
}

void Save_Document(benchmark::State &state)
{
    Program &program = Program::Get();
    for ([[maybe_unused]] auto _ : state) {
        QString status;
        if (Store_Form(program.form, true, status) != Save_Outcome::Stored)
            state.SkipWithError("not stored");
    }
}

QString Small_File(int number)
{
    QFile file(Program::Get().folder.filePath(u"small%1.txt"_s.arg(number)));
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(QByteArray("A small text file, number ") + QByteArray::number(number) + QByteArray(400, 'x') + "\n");
    return file.fileName();
}

/// Coder and commits of an import: importing spends at least 60 % of its time here.
void Import_Floor(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < Small_Files; ++i) {
            const QString output = Program::Get().folder.filePath(u"out"_s);
            zelqorfun("e", Small_File(i).toUtf8().constData(), output.toUtf8().constData());
            Run_Statement(
                u"insert into Code_Info(Code_ID,Cate_ID,Code_Title) values ('{f%1-%2}','002','t')"_s.arg(i).arg(
                    state.iterations() + qHash(reinterpret_cast<quintptr>(&state)) + std::rand()),
                App().Conn_Str);
        }
    }
    state.SetItemsProcessed(state.iterations() * Small_Files);
}

void Import(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (int i = 0; i < Small_Files; ++i)
            AddCodeContent_File_Ex(Small_File(i), u"001"_s, u"0"_s, u"small"_s, u"txt"_s, false);
    }
    state.SetItemsProcessed(state.iterations() * Small_Files);
}

/// Lets a tab that was opened finish what it does by and by: the layout of what is not on screen.
void Settle()
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(60);
    while (std::chrono::steady_clock::now() < end)
        QApplication::processEvents(QEventLoop::AllEvents, 10);
}

/// Fifty tabs: the time of the last beside that of the first, and the memory of one beside its RTF (bound: 5 times its
/// size and 2 MB).
void Fifty_Tabs(benchmark::State &state)
{
    Program &program = Program::Get();
    QStringList ids;
    for (int i = 0; i < 50; ++i) {
        AddCodeContent_Ex_Standard(program.form, u"0"_s);
        ids << program.form.code_id;
    }
    for ([[maybe_unused]] auto _ : state) {
        No_Shell shell;
        Document_Tabs tabs(shell, nullptr);
        tabs.Add_List(new QWidget, u"List"_s);
        tabs.resize(1000, 700);
        tabs.show();
        tabs.Open(program.form.code_id); // what the first tab of all loads for good is not its own
        Settle();
        double first = 1e9, last = 1e9; // the best of five: the machine does other things too
        const size_t before = mallinfo2().uordblks;
        for (int i = 0; i < 49; ++i) {
            const auto start = std::chrono::steady_clock::now();
            tabs.Open(ids[i]);
            QApplication::processEvents();
            const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
            if (i < 5)
                first = std::min(first, taken.count());
            else if (i >= 44)
                last = std::min(last, taken.count());
            Settle();
        }
        state.counters["first_ms"] = first;
        state.counters["last_ms"] = last;
        state.counters["kb_per_tab"] = static_cast<double>(mallinfo2().uordblks - before) / 49 / 1024;
    }
}
} // namespace

BENCHMARK(Open_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Open_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(Open_Tab)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_Floor)->Unit(benchmark::kMillisecond);
BENCHMARK(Save_Document)->Unit(benchmark::kMillisecond);
BENCHMARK(Import_Floor)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Import)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Fifty_Tabs)->Unit(benchmark::kMillisecond)->Iterations(1);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

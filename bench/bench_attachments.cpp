// SPDX-License-Identifier: GPL-3.0-or-later
//
// Attachments: a file of 100 MB goes in and out beside the raw writing and reading of such a value in one transaction;
// one of 900 MB and the memory that it takes; a document with many of them; the list of all.
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/all_attachments.h"
#include "documents/document_store.h"
#include "floors.h"
#include "open_tab.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "storage/database_lifecycle.h"
#include "support/memory_peak.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "ui/document/attachment_model.h"
#include "ui/document/document_tabs.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{
constexpr qint64 Megabyte = 1 << 20;
constexpr int All_Rows = 50'000;

struct Program {
    QTemporaryDir folder;
    Unwatched_Work work;
    QString bare, laden; ///< documents without and with attachments

    Program()
    {
        App().App_Path = folder.path() + u'/';
        GetConfigInfo(Database_Steps_For_Start());
        App().Date_Sep = u"-"_s;
        Config().M_FILE = u"TRUE"_s;
        Run(u"insert into Cate_Info(Cate_ID,Cate_Name,Order_Id) values ('001','Work',1)"_s);
        bare = Stored();
        laden = Stored();
    }
    static Program &Get()
    {
        static Program program;
        return program;
    }
    static void Run(const QString &statement) { Run_Statement(statement, App().Conn_Str); }
    [[nodiscard]] QString File(const QString &name) const { return folder.filePath(name); }
    /// Bytes that do not repeat themselves within a page.
    QString Made_File(qint64 megabytes) const
    {
        QFile file(File(u"%1.bin"_s.arg(megabytes)));
        if (file.exists() || !file.open(QIODevice::WriteOnly))
            return file.fileName();
        QByteArray block(Megabyte, '\0');
        for (qint64 i = 0; i < megabytes; ++i) {
            for (qsizetype at = 0; at < block.size(); at += 64)
                block[at] = static_cast<char>(at * 31 + i);
            file.write(block);
        }
        return file.fileName();
    }

private:
    static QString Stored()
    {
        Test_Form form(u"text"_s);
        AddCodeContent_Ex_Standard(form, u"0"_s);
        return form.code_id;
    }
};

/// The same file system, journal and way of writing as the program's own.
class Raw_Blobs
{
public:
    explicit Raw_Blobs(const QString &file)
    {
        sqlite3_open(file.toUtf8().constData(), &m_db);
        Run("create table if not exists t(id integer primary key, name text, bytes blob)");
    }
    ~Raw_Blobs() { sqlite3_close(m_db); }
    void Run(const char *sql) { sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr); }
    void Write(QFile &file)
    {
        Run("begin immediate");
        Run(("insert into t values(1,'a',zeroblob(" + QByteArray::number(file.size()) + "))").constData());
        sqlite3_blob *blob = Open(1);
        for (int at = 0; !file.atEnd();) {
            const QByteArray block = file.read(Megabyte);
            sqlite3_blob_write(blob, block.constData(), static_cast<int>(block.size()), at);
            at += static_cast<int>(block.size());
        }
        sqlite3_blob_close(blob);
        Run("commit");
    }
    void Read(QFile &file)
    {
        sqlite3_blob *blob = Open(0);
        QByteArray block(Megabyte, '\0');
        for (int at = 0; at < sqlite3_blob_bytes(blob); at += static_cast<int>(block.size())) {
            sqlite3_blob_read(blob, block.data(), static_cast<int>(block.size()), at);
            file.write(block);
        }
        file.flush();
        fsync(file.handle());
        sqlite3_blob_close(blob);
    }

private:
    sqlite3_blob *Open(int forWriting)
    {
        sqlite3_blob *blob = nullptr;
        sqlite3_blob_open(m_db, "main", "t", "bytes", 1, forWriting, &blob);
        return blob;
    }
    sqlite3 *m_db = nullptr;
};

void Add_Raw(benchmark::State &state)
{
    QFile file(Program::Get().Made_File(100));
    Raw_Blobs raw(Program::Get().File(u"raw.db"_s));
    for (auto _ : state) {
        file.open(QIODevice::ReadOnly);
        raw.Write(file);
        state.PauseTiming();
        file.close();
        raw.Run("delete from t; vacuum");
        state.ResumeTiming();
    }
}

void Add(benchmark::State &state)
{
    Program &program = Program::Get();
    const QString path = program.Made_File(100);
    for (auto _ : state) {
        S_SaveFile(u"{none}"_s, path, {}, Addin_Mode::Internal, program.work);
        state.PauseTiming();
        Program::Run(u"delete from tab_file where code_id='{none}'"_s);
        Database_Engine::CompactDatabase(App().Conn_Str);
        state.ResumeTiming();
    }
}

void Export_Raw(benchmark::State &state)
{
    QFile file(Program::Get().Made_File(100));
    QFile out(Program::Get().File(u"raw.out"_s));
    Raw_Blobs raw(Program::Get().File(u"raw.db"_s));
    file.open(QIODevice::ReadOnly);
    raw.Write(file);
    for (auto _ : state) {
        out.open(QIODevice::WriteOnly | QIODevice::Truncate);
        raw.Read(out);
        out.close();
    }
}

void Export(benchmark::State &state)
{
    Program &program = Program::Get();
    const qint64 id = S_SaveFile(u"{none}"_s, program.Made_File(100), {}, Addin_Mode::Internal, program.work).id;
    for (auto _ : state)
        Write_Attachment(id, program.File(u"out"_s), program.work);
    Program::Run(u"delete from tab_file where code_id='{none}'"_s);
}

/// What adding and taking out takes above what the program has at rest, in MB.
void Longest(benchmark::State &state)
{
    Program &program = Program::Get();
    const QString path = program.Made_File(900);
    for (auto _ : state) {
        Memory_Peak::Forget();
        const qint64 before = Memory_Peak::Kilobytes();
        const qint64 id = S_SaveFile(u"{none}"_s, path, {}, Addin_Mode::Internal, program.work).id;
        state.counters["add_mb"] = static_cast<double>(Memory_Peak::Kilobytes() - before) / 1024;
        Memory_Peak::Forget();
        Write_Attachment(id, program.File(u"out"_s), program.work);
        state.counters["export_mb"] = static_cast<double>(Memory_Peak::Kilobytes() - before) / 1024;
        state.counters["whole"] = QFile(program.File(u"out"_s)).size() == 900 * Megabyte;
        Program::Run(u"update tab_file set order_id=7 where file_id=%1"_s.arg(id)); // its row is written anew
        state.counters["order"] = static_cast<double>(Read_Attachment(id).id == id);
        const qint64 file = QFile(Database_Path()).size();
        Program::Run(u"delete from tab_file where code_id='{none}'"_s);
        Database_Engine::CompactDatabase(App().Conn_Str);
        state.counters["given_back_mb"] = static_cast<double>(file - QFile(Database_Path()).size()) / Megabyte;
    }
}

void Open_Bare(benchmark::State &state)
{
    Open_In_A_Tab(state, Program::Get().bare);
}

void Open_Laden(benchmark::State &state)
{
    constexpr int Many = 500;
    const QString id = Program::Get().laden;
    if (Attachment_Count(id) == 0)
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (int i = 0; i < Many; ++i)
                Program::Run(u"insert into tab_file(code_id,file_name,file_size,file_type,file_cont) "
                             "values ('%1','file %2.txt','1.00K',0,'%3')"_s.arg(id)
                                 .arg(i)
                                 .arg(QString(100'000, u'x')));
        });
    Open_In_A_Tab(state, id);
}

/// All attachments of the database in a list on screen.
void List_All(benchmark::State &state)
{
    Program &program = Program::Get();
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (int i = Attachment_Count(program.bare); i < All_Rows; ++i)
            Program::Run(u"insert into tab_file(code_id,file_name,file_size,file_type,file_cont) "
                         "values ('%1','file %2.txt','%3.00K',0,'%4')"_s.arg(program.bare)
                             .arg(i)
                             .arg(i % 977)
                             .arg(QString(8'000, u'x')));
    });
    using Column = Attachment_Model::Column;
    for (auto _ : state) {
        Attachment_Model model({Column::Name, Column::Document, Column::Size, Column::Kind});
        model.Load_Lang();
        QTreeView view;
        view.setUniformRowHeights(true);
        view.setModel(&model);
        view.show();
        model.Show(All_Attachments());
        QApplication::processEvents();
        state.counters["rows"] = model.rowCount();
    }
}
} // namespace

BENCHMARK(Add_Raw)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(Add)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(Export_Raw)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(Export)->Unit(benchmark::kMillisecond)->Iterations(4);
BENCHMARK(Longest)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(Open_Bare)->Unit(benchmark::kMillisecond);
BENCHMARK(Open_Laden)->Unit(benchmark::kMillisecond);
BENCHMARK(List_All)->Unit(benchmark::kMillisecond)->Iterations(3);

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Floor_Reporter reporter(
        {{"Add", "Add_Raw", 1.5}, {"Export", "Export_Raw", 1.5}, {"Open_Laden", "Open_Bare", 1.05}});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}

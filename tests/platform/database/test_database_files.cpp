// SPDX-License-Identifier: GPL-3.0-or-later
#include "database_fixture.h"
#include "platform/database/connection_pool.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QTest>
#include <QThread>
#include <QtEndian>
#include <csignal>
#include <memory>
#include <sqlite3.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

constexpr int Short_Timeout = 50;

/// What can happen to a file between and under the statements.
class Test_Database_Files : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Connection_Pool::Set_Busy_Timeout(Short_Timeout); }
    void init() { m_db = std::make_unique<Database_Fixture>(); }
    void cleanup() { m_db.reset(); }

    void Unusable_File_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<Failure>("failure");
        QTest::addRow("missing") << QByteArray() << Failure::File_Not_Found;
        QTest::addRow("empty") << QByteArray("") << Failure::Not_A_Database;
        QTest::addRow("garbage") << QByteArray(5000, 'x') << Failure::Not_A_Database;
        QTest::addRow("header only") << QByteArray("SQLite format 3\0", 16).append(QByteArray(200, '\1'))
                                     << Failure::Damaged;
    }
    void Unusable_File()
    {
        QFETCH(QByteArray, content);
        QFETCH(Failure, failure);
        const QString name = m_db->path() + u".other"_s;
        if (!content.isNull()) {
            Write(name, content);
        }
        QCOMPARE(Failure_Of(u"select 1"_s, Database_Engine::File_Connection_String(name)), failure);
        QCOMPARE(QFile::exists(name), !content.isNull());
    }

    void Truncated_And_Overwritten()
    {
        Fill(2000);
        Database_Engine::Let_Go();
        const QByteArray good = Read(m_db->path());
        Write(m_db->path(), good.left(good.size() / 2));
        QCOMPARE(Failure_Of(u"select * from cate_info"_s), Failure::Damaged);
        QByteArray broken = good;
        broken.replace(8192, broken.size() - 8192, QByteArray(broken.size() - 8192, '\x5a'));
        Write(m_db->path(), broken);
        QCOMPARE(Failure_Of(u"select * from cate_info order by cate_name"_s), Failure::Damaged);
    }

    void Locked_By_Another()
    {
        Database_Engine::Let_Go();
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(m_db->path().toUtf8().constData(), &other), SQLITE_OK);
        QCOMPARE(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
        QCOMPARE(Failure_Of(u"select * from cate_info"_s), Failure::Locked);
        QCOMPARE(Failure_Of(u"insert into cate_info(cate_id) values ('1')"_s), Failure::Locked);
        sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
        m_db->Run(u"insert into cate_info(cate_id) values ('1')"_s);
        sqlite3_close(other);
    }

    void Read_Only_File()
    {
        Database_Engine::Let_Go();
        QFile::setPermissions(m_db->path(), QFile::ReadOwner | QFile::ReadUser);
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"0"_s);
        QCOMPARE(Failure_Of(u"insert into cate_info(cate_id) values ('1')"_s), Failure::Read_Only);
        QCOMPARE(Failure_Of(u"alter table cate_info add column x Long"_s), Failure::Read_Only);
    }

    /// A trigger, a view and a default of another's making neither run nor stop the work.
    void Hostile_Schema()
    {
        Database_Engine::Let_Go();
        Raw("CREATE TRIGGER t AFTER INSERT ON Cate_Info BEGIN DELETE FROM tab_file; END;"
            "CREATE VIEW v AS SELECT * FROM Cate_Info; INSERT INTO tab_file(code_id) VALUES ('kept')");
        m_db->Run(u"insert into cate_info(cate_id) values ('1')"_s);
        QCOMPARE(m_db->Rows(u"select code_id from tab_file"_s), u"kept"_s);
        QCOMPARE(Failure_Of(u"select * from v"_s), Failure::Missing_Table);
    }

    void Another_Program_Changes_Tables()
    {
        QCOMPARE(m_db->Rows(u"select * from tab_vircate"_s), QString());
        Raw("ALTER TABLE tab_VirCate ADD COLUMN extra TEXT(9); INSERT INTO tab_VirCate(extra) VALUES ('new');"
            "CREATE TABLE more (a INTEGER)");
        QCOMPARE(m_db->Rows(u"select * from tab_vircate"_s), u"1|~|~|new"_s);
        QCOMPARE(m_db->Rows(u"select count(*) from more"_s), u"0"_s);
    }

    void Another_File_Under_The_Path()
    {
        m_db->Run(u"insert into cate_info(cate_id) values ('old')"_s);
        Raw("VACUUM INTO '" + (m_db->path() + u".new"_s).toUtf8() + "'");
        m_db->Run(u"insert into cate_info(cate_id) values ('older')"_s);
        QFile::remove(m_db->path());
        QVERIFY(QFile::rename(m_db->path() + u".new"_s, m_db->path()));
        QCOMPARE(m_db->Rows(u"select cate_id from cate_info"_s), u"old"_s);
    }

    void The_Shell_Reads_And_Writes_The_File()
    {
        const QString shell = QStandardPaths::findExecutable(u"sqlite3"_s);
        if (shell.isEmpty()) {
            QSKIP("no sqlite3 program");
        }
        Fill(50);
        m_db->Run(u"ALTER TABLE Cate_Info ALTER COLUMN Cate_Name TEXT(80)"_s);
        m_db->Run(u"ALTER TABLE Code_Info Add COLUMN Made DateTime DEFAULT Now() NOT NULL"_s);
        Database_Engine::Let_Go();
        QProcess process;
        process.start(shell, {m_db->path(), u"INSERT INTO Code_Info(Code_ID,Code_Title) VALUES('x','t'); SELECT "
                                            "count(*) FROM Cate_Info; PRAGMA integrity_check;"_s});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("50\nok"));
        QCOMPARE(process.readAllStandardError(), QByteArray());
    }

    /// A file is only read until it is settled: then it gets its kind of journal, and the engine's own indexes in time.
    void A_File_Is_Left_As_It_Came_Until_It_Is_Settled()
    {
        const QString own = u"zelqor_Code_Info_Cate_ID"_s;
        QVERIFY(Has_Index(own));
        Database_Engine::Let_Go();
        Raw("DROP INDEX zelqor_Code_Info_Cate_ID; VACUUM; PRAGMA journal_mode = WAL");
        const QByteArray came = Read(m_db->path());
        QCOMPARE(m_db->Rows(u"select * from code_info"_s), QString());
        Database_Engine::Let_Go();
        QVERIFY(Read(m_db->path()) == came);
        Database_Engine::Settle(m_db->connection);
        QCOMPARE(Read(m_db->path()).at(18), '\1'); // no log
        QVERIFY(!Has_Index(own));
        QTRY_VERIFY(Has_Index(own));
    }

    /// Indexes that take their time are made beside the work of others, whom they let through.
    void Indexes_Are_Made_Beside_The_Work()
    {
        Connection_Pool::Set_Busy_Timeout(2000);
        const auto usual = qScopeGuard([] { Connection_Pool::Set_Busy_Timeout(Short_Timeout); });
        Database_Engine::Let_Go();
        Raw("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<99999) INSERT INTO "
            "Code_Info(Code_ID,Cate_ID,Code_Title,Code_Update) SELECT printf('%08d',i*7919%100000),"
            "printf('%03d',i%500),'t',printf('20%02d-01-01',i%90) FROM n; "
            "DROP INDEX zelqor_Code_Info_Cate_ID; DROP INDEX zelqor_Code_Info_Code_Update");
        Database_Engine::Settle(m_db->connection);
        bool made = false;
        for (int i = 0; !made && i < 2000; ++i) {
            m_db->Run(u"update code_info set code_title='%1' where code_id='00000001'"_s.arg(i));
            QCOMPARE(m_db->Rows(u"select code_title from code_info where code_id='00000001'"_s), QString::number(i));
            QTest::qWait(i % 500 == 499 ? 2000 : 3);
            made = Has_Index(u"zelqor_Code_Info_Cate_ID"_s) && Has_Index(u"zelqor_Code_Info_Code_Update"_s);
        }
        QVERIFY(made);
        QCOMPARE(m_db->Rows(u"select count(*) from code_info where cate_id='007'"_s), u"200"_s);
    }

    void A_Value_That_Is_Too_Large_Is_Not_Read()
    {
        Database_Engine::Let_Go();
        Raw("PRAGMA synchronous=OFF; INSERT INTO tab_file(file_name,file_cont) VALUES('f',zeroblob(303000000))");
        QCOMPARE(m_db->Rows(u"select file_name from tab_file"_s), u"f"_s);
        try {
            QFAIL(qPrintable(m_db->Rows(u"select file_cont from tab_file"_s).left(20)));
        } catch (const Run_Time_Error &error) {
            QVERIFY(error.failure == Failure::Too_Large);
        }
    }

    void What_Lies_Beside_Can_Do_No_Harm_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("kind");
        for (const QString &suffix : {u"-journal"_s, u"-wal"_s, u"-shm"_s}) {
            for (const QString &kind : {u"link"_s, u"second name"_s, u"pipe"_s})
                QTest::addRow("%s at %s", qPrintable(kind), qPrintable(suffix)) << suffix << kind;
        }
        QTest::addRow("super-journal") << u"-journal"_s << u"super-journal"_s;
    }
    void What_Lies_Beside_Can_Do_No_Harm()
    {
        QFETCH(QString, suffix);
        QFETCH(QString, kind);
        const QString victim = m_db->path() + u".letter"_s, planted = m_db->path() + suffix;
        Write(victim, "a letter");
        const auto plant = [&] {
            const QByteArray from = victim.toUtf8(), to = planted.toUtf8();
            if (kind == u"link")
                return ::symlink(from.constData(), to.constData()) == 0;
            if (kind == u"second name")
                return ::link(from.constData(), to.constData()) == 0;
            if (kind == u"pipe")
                return ::mkfifo(to.constData(), 0600) == 0;
            Write(planted, Journal_Naming(from));
            return true;
        };
        // While the file is open and at its opening.
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"0"_s);
        QVERIFY(plant());
        if (suffix == u"-journal")
            QCOMPARE(Failure_Of(u"insert into cate_info(cate_id) values ('1')"_s), Failure::Foreign_Journal);
        Database_Engine::Let_Go();
        QCOMPARE(Failure_Of(u"select * from cate_info"_s), Failure::Foreign_Journal);
        QCOMPARE(Read(victim), "a letter");
        QVERIFY(QFile::remove(planted));
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"0"_s);
    }

    void Compacting()
    {
        Fill(2000);
        m_db->Run(u"delete from cate_info where cate_id > '0005'"_s);
        const qint64 before = QFile(m_db->path()).size();
        const QStringList bystanders{m_db->path() + u"-copy-"_s, m_db->path() + u"-copy-1234567"_s};
        for (const QString &name : bystanders)
            Write(name, "a letter");
        Write(m_db->path() + u"-copy-AbC123"_s, "left by a killed program");
        Database_Engine::CompactDatabase(m_db->connection);
        QVERIFY(QFile(m_db->path()).size() < before);
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"500"_s);
        const QFileInfo file(m_db->path());
        QCOMPARE(file.dir().entryList({file.fileName() + u'*'}, QDir::Files).size(), 1 + bystanders.size());
    }

    /// Another program writes all the while: none of its commits is lost, and each copy is one moment of the file.
    void Whole_Copies_And_Another_Writer()
    {
        Fill(2000);
        Database_Engine::Let_Go();
        Raw("CREATE TABLE one (a INTEGER); CREATE TABLE two (a INTEGER)");
        Connection_Pool::Set_Busy_Timeout(10'000);
        int commits[2]; // told one byte each
        QCOMPARE(pipe(commits), 0);
        const pid_t writer = fork();
        if (writer == 0)
            Write_For_Ever(commits[1]);
        const QString copy = m_db->path() + u".backup"_s;
        for (int round = 0; round < 8; ++round) {
            Database_Engine::CompactDatabase(m_db->connection);
            Database_Engine::Copy_Database(m_db->connection, copy);
            const int rows = Rows_In(copy, "one");
            QVERIFY(rows >= 0 && Rows_In(copy, "two") == rows);
        }
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        close(commits[1]);
        QFile told;
        QVERIFY(told.open(commits[0], QFile::ReadOnly, QFile::AutoCloseHandle));
        const qsizetype count = told.readAll().size();
        Connection_Pool::Set_Busy_Timeout(Short_Timeout);
        QVERIFY(count > 0);
        const int rows = Rows_In(m_db->path(), "one");
        QVERIFY2(rows == count || rows == count + 1, qPrintable(u"%1 of %2"_s.arg(rows).arg(count)));
        QCOMPARE(Rows_In(m_db->path(), "Cate_Info"), 2000);
    }

    /// ZELQOR_KILL_ROUNDS sets the number of kills.
    void A_Kill_Leaves_Whole_Files()
    {
        Fill(2000);
        m_db->Run(u"delete from cate_info where cate_id > '0005'"_s);
        Database_Engine::Let_Go();
        const QString copy = m_db->path() + u".backup"_s;
        const int asked = qEnvironmentVariableIntValue("ZELQOR_KILL_ROUNDS");
        for (int round = 0; round < (asked > 0 ? asked : 40); ++round) {
            const pid_t child = fork();
            if (child == 0) {
                for (;;) {
                    Database_Engine::CompactDatabase(m_db->connection);
                    Database_Engine::Copy_Database(m_db->connection, copy);
                }
            }
            QVERIFY(child > 0);
            QThread::usleep(QRandomGenerator::global()->bounded(60'000U));
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            QCOMPARE(Rows_In(m_db->path(), "Cate_Info"), 500);
            if (QFile::exists(copy))
                QCOMPARE(Rows_In(copy, "Cate_Info"), 500);
        }
        Database_Engine::CompactDatabase(m_db->connection);
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"500"_s);
    }

    void One_Action_Commits_Whatever_Happens()
    {
        try {
            Database_Engine::One_Action(m_db->connection, [&] {
                m_db->Run(u"insert into cate_info(cate_id) values ('1')"_s);
                Database_Engine::One_Action(m_db->connection,
                                            [&] { m_db->Run(u"insert into cate_info(cate_id) values ('2')"_s); });
                Failure_Of(u"insert into cate_info(cate_id) values ('3'"_s);
                Failure_Of(u"insert into cate_info(cate_id) values ('1')"_s);
                m_db->Run(u"create table made (a Long)"_s);
                throw Run_Time_Error(1, u"stop"_s);
            });
            QFAIL("the body's error is lost");
        } catch (const Run_Time_Error &error) {
            QCOMPARE(error.number, 1);
        }
        Database_Engine::Let_Go();
        QCOMPARE(m_db->Rows(u"select cate_id from cate_info order by 1"_s), u"1;2"_s);
        QCOMPARE(m_db->Rows(u"select count(*) from made"_s), u"0"_s);
    }

    void A_Kill_Leaves_None_Of_An_Action()
    {
        m_db->Run(u"insert into cate_info(cate_id) values ('before')"_s);
        Database_Engine::Let_Go();
        const pid_t child = fork();
        if (child == 0) {
            Database_Engine::One_Action(m_db->connection, [&] {
                Fill(3000); // enough to spill pages into the file before the end
                _exit(0);
            });
        }
        QVERIFY(child > 0);
        waitpid(child, nullptr, 0);
        QCOMPARE(m_db->Rows(u"select cate_id from cate_info"_s), u"before"_s);
    }

private:
    Failure Failure_Of(const QString &statement, const QString &connection = {}) const
    {
        try {
            Recordset rows;
            rows.Open(statement, connection.isEmpty() ? m_db->connection : connection);
            while (rows.Is_Open() && !rows.Eof()) {
                rows.MoveNext();
            }
        } catch (const Run_Time_Error &error) {
            return error.failure;
        }
        return Failure::Other;
    }
    void Fill(int count) const
    {
        Database_Engine::One_Action(m_db->connection, [&] {
            for (int i = 0; i < count; ++i) {
                m_db->Run(u"insert into cate_info(cate_id,cate_name) values ('%1','name of the folder %1')"_s.arg(
                    i, 6, 10, QChar(u'0')));
            }
        });
    }
    void Raw(const QByteArray &sql) const
    {
        sqlite3 *other = nullptr;
        QCOMPARE(sqlite3_open(m_db->path().toUtf8().constData(), &other), SQLITE_OK);
        char *message = nullptr;
        sqlite3_exec(other, sql.constData(), nullptr, nullptr, &message);
        QCOMPARE(QByteArray(message), QByteArray());
        sqlite3_close(other);
    }
    [[nodiscard]] bool Has_Index(const QString &name) const
    {
        sqlite3 *other = nullptr;
        sqlite3_open(m_db->path().toUtf8().constData(), &other);
        bool found = false;
        const auto one = [](void *is, int, char **, char **) {
            *static_cast<bool *>(is) = true;
            return 0;
        };
        const QByteArray sql = "SELECT 1 FROM sqlite_schema WHERE name = '" + name.toUtf8() + '\'';
        sqlite3_exec(other, sql.constData(), one, &found, nullptr);
        sqlite3_close(other);
        return found;
    }
    [[noreturn]] void Write_For_Ever(int told) const
    {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        sqlite3 *other = nullptr;
        sqlite3_open(m_db->path().toUtf8().constData(), &other);
        sqlite3_busy_timeout(other, 10'000);
        for (;;) {
            if (sqlite3_exec(other, "BEGIN IMMEDIATE; INSERT INTO one VALUES (1); INSERT INTO two VALUES (1); COMMIT",
                             nullptr, nullptr, nullptr) == SQLITE_OK)
                (void)!write(told, "x", 1);
            QThread::usleep(2000); // or nobody else would get in
        }
    }
    /// Rows of a table as another program sees them, -1 for a file that is not sound.
    static int Rows_In(const QString &path, const QByteArray &table)
    {
        sqlite3 *other = nullptr;
        sqlite3_open(path.toUtf8().constData(), &other);
        sqlite3_busy_timeout(other, 10'000);
        const auto first = [&](const QByteArray &sql) {
            QByteArray cell;
            sqlite3_stmt *statement = nullptr;
            sqlite3_prepare_v2(other, sql.constData(), -1, &statement, nullptr);
            if (sqlite3_step(statement) == SQLITE_ROW)
                cell = reinterpret_cast<const char *>(sqlite3_column_text(statement, 0));
            sqlite3_finalize(statement);
            return cell;
        };
        const bool sound = first("PRAGMA integrity_check") == "ok";
        const int rows = sound ? first("SELECT count(*) FROM " + table).toInt() : -1;
        sqlite3_close(other);
        return rows;
    }
    /// A rollback journal of no pages whose commit was one of several files (sqlite.org/fileformat2.html, section
    /// 3).
    static QByteArray Journal_Naming(const QByteArray &file)
    {
        const QByteArray mark("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
        const auto number = [](quint32 value) {
            QByteArray bytes(4, '\0');
            qToBigEndian(value, bytes.data());
            return bytes;
        };
        quint32 sum = 0;
        for (const char letter : file)
            sum += static_cast<quint32>(static_cast<signed char>(letter));
        QByteArray journal = mark + number(0) + number(7) + number(1) + number(512) + number(4096);
        journal.resize(512, '\0');
        return journal + number(0x40000000 / 4096 + 1) + file + number(static_cast<quint32>(file.size())) +
               number(sum) + mark;
    }
    static QByteArray Read(const QString &name)
    {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static void Write(const QString &name, const QByteArray &content)
    {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(content), content.size());
    }

    std::unique_ptr<Database_Fixture> m_db;
};

QTEST_GUILESS_MAIN(Test_Database_Files)
#include "test_database_files.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "database_fixture.h"
#include "platform/database/connection_pool.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <memory>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// What can happen to a file between and under the statements.
class Test_Database_Files : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Connection_Pool::Set_Busy_Timeout(50); }
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

    /// The engine's own indexes serve folder lookups, and an old file gets them when it is opened.
    void Own_Indexes()
    {
        const auto indexes = [&] {
            return Read(m_db->path()).contains("zelqor_Code_Info_Cate_ID");
        };
        QVERIFY(indexes());
        Database_Engine::Let_Go();
        Raw("DROP INDEX zelqor_Code_Info_Cate_ID; VACUUM");
        QVERIFY(!indexes());
        QCOMPARE(m_db->Rows(u"select * from code_info"_s), QString());
        QVERIFY(indexes());
    }

    void Compacting()
    {
        Fill(2000);
        m_db->Run(u"delete from cate_info where cate_id > '0005'"_s);
        const QString target = m_db->path() + u".temp.mdb"_s;
        Write(target, "stale");
        const QString connection = Database_Engine::File_Connection_String(target);
        Database_Engine::CompactDatabase(m_db->connection, connection);
        QVERIFY(QFile(target).size() < QFile(m_db->path()).size());
        Recordset rows;
        rows.Open(u"select count(*) from cate_info"_s, connection);
        QCOMPARE(rows[0].Text(), m_db->Rows(u"select count(*) from cate_info"_s));
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

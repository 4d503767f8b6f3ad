// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/error_log.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/machine/machine.h"
#include "storage/database_lifecycle.h"
#include "support/test_program.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
const QStringList Tables{u"Cate_Info"_s, u"Code_Info"_s, u"Class_Info"_s, u"SmallClass_Info"_s, u"TinyClass_Info"_s,
                         u"test"_s,      u"tab_file"_s,  u"tab_tag"_s,    u"tab_VirCate"_s,     u"Mess_Conf"_s,
                         u"User_pass"_s, u"User_List"_s, u"tab_log"_s,    u"tab_tags"_s,        u"tab_Gene"_s};

/// With a log, and with columns of which the engine would keep indexes.
QByteArray Another_Programs_Database()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"other.db"_s);
    QProcess::execute(u"sqlite3"_s,
                      {path, u"create table song(song_id text primary key); create table list(a,song_id text);"
                             "create table log(id text primary key, made datetime); pragma journal_mode=wal"_s});
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Start()
{
    GetConfigInfo(Database_Steps_For_Start());
}
} // namespace

class Test_Database_Lifecycle : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(Test_Program::Start::Bare); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_First_Start_Makes_The_Database()
    {
        Start();
        QVERIFY(App().Conn_OK);
        QCOMPARE(Database_Path(), m_program->Path(u"data/Zelqor.db"_s));
        for (const QString &table : Tables)
            QCOMPARE(Sql_Cell(u"select count(*) from %1"_s.arg(table)), u"0"_s);
        for (const char *name : {"data", "data/ico", "data/img"})
            QVERIFY(QFileInfo(m_program->Path(QLatin1String(name))).isDir());
        QCOMPARE(GetIni(u"DataBase"_s, u"DATABASE_NAME"_s), u"\\data\\Zelqor.db"_s);
        // What the dialect's types promise, seen through a row of the widest table.
        Run_Statement(u"insert into Code_Info(Code_ID,Code_Title) values ('{1}','t')"_s, App().Conn_Str);
        Recordset row;
        row.Open(u"select * from Code_Info"_s, App().Conn_Str);
        QCOMPARE(row.Field_Count(), 34);
        QCOMPARE(row[u"Code_Title"_s].Defined_Size(), 255);
        QCOMPARE(row[u"Class_ID"_s].Number(), 1);
        QCOMPARE(row[u"Code_UpdateNum"_s].Number(), 0);
        QVERIFY(row[u"Code_ReadDate_Sta"_s].Is_Null());
        QVERIFY(row[u"Code_ReadDateNext"_s].Is_Null());
        QVERIFY(row[u"Code_Create"_s].Value().toDateTime().isValid());
    }

    void A_Failed_Creation_Leaves_No_File()
    {
        const QString path = m_program->Path(u"missing/new.db"_s);
        QVERIFY(!CreateDataBase(path));
        QVERIFY(App().Conn_Trouble.number != 0);
        QCOMPARE(Err().number, 0);
        QVERIFY(!QFile::exists(path));
        // A file that stands there is nobody's to overwrite or to delete.
        m_program->Write(u"taken.db"_s, "a letter");
        QVERIFY(!CreateDataBase(m_program->Path(u"taken.db"_s)));
        QCOMPARE(m_program->Bytes(u"taken.db"_s), QByteArray("a letter"));
    }

    void Paths_Are_Resolved_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("expected"); ///< "%" stands for the program directory
        QTest::addRow("below the program") << u"1"_s << u"\\data\\My.db"_s << u"%/data/My.db"_s;
        QTest::addRow("bare name") << u"1"_s << u"My.db"_s << u"%/My.db"_s;
        QTest::addRow("longer flag") << u"12"_s << u"My.db"_s << u"%/My.db"_s;
        QTest::addRow("absolute") << u"1"_s << u"%/elsewhere/My.db"_s << u"%/elsewhere/My.db"_s;
        QTest::addRow("semicolon") << u"1"_s << u"\\my; own\\a;b.db"_s << u"%/my; own/a;b.db"_s;
        QTest::addRow("quotes") << u"1"_s << u"%/the \"best\"; one.db"_s << u"%/the \"best\"; one.db"_s;
        QTest::addRow("absolute as it stands") << u"0"_s << u"%/elsewhere/My.db"_s << u"%/elsewhere/My.db"_s;
    }
    void Paths_Are_Resolved()
    {
        QFETCH(QString, relative);
        QFETCH(QString, stored);
        QFETCH(QString, expected);
        const auto here = [&](QString path) {
            return path.replace(u'%', App().App_Path.chopped(1));
        };
        QDir().mkpath(QFileInfo(here(expected)).path());
        QVERIFY(CreateDataBase(here(expected)));
        WriteIni(u"DataBase"_s, u"CH_PATH"_s, relative);
        WriteIni(u"DataBase"_s, u"DATABASE_NAME"_s, here(stored));
        Start();
        QVERIFY(App().Conn_OK);
        QCOMPARE(Database_Path(), here(expected));
        QCOMPARE(GetIni(u"DataBase"_s, u"DATABASE_NAME"_s), here(stored));
        QVERIFY(!QFile::exists(m_program->Path(u"data/Zelqor.db"_s)));
    }

    void A_Database_That_Is_Gone_data()
    {
        QTest::addColumn<QString>("relative");
        QTest::addColumn<QString>("stored");  ///< "%" stands for the program directory
        QTest::addColumn<bool>("gone");       ///< and not replaced unasked
        QTest::addColumn<QString>("written"); ///< once the default one is in force
        const QString usual = u"\\data\\Zelqor.db"_s, full = u"%data/Zelqor.db"_s;
        QTest::addRow("never named") << u"1"_s << QString() << false << usual;
        QTest::addRow("the default") << u"1"_s << usual << false << usual;
        QTest::addRow("elsewhere") << u"1"_s << u"%gone.db"_s << true << usual;
        QTest::addRow("relative to nothing") << u"0"_s << usual << true << full;
        QTest::addRow("the default in full") << u"0"_s << full << false << full;
        QTest::addRow("elsewhere in full") << u"0"_s << u"%gone.db"_s << true << full;
        QTest::addRow("on another system's drive") << u"0"_s << u"D:\\notes.db"_s << true << full;
    }
    void A_Database_That_Is_Gone()
    {
        QFETCH(QString, relative);
        QFETCH(QString, stored);
        QFETCH(bool, gone);
        QFETCH(QString, written);
        const auto here = [&](QString path) {
            return path.replace(u'%', App().App_Path);
        };
        const auto named = [] {
            return GetIni(u"DataBase"_s, u"DATABASE_NAME"_s);
        };
        WriteIni(u"DataBase"_s, u"CH_PATH"_s, relative);
        WriteIni(u"DataBase"_s, u"DATABASE_NAME"_s, here(stored));
        Start();
        QCOMPARE(Database_Is_Gone(), gone);
        QCOMPARE(App().Conn_OK, !gone);
        if (gone) {
            QCOMPARE(named(), here(stored));
            QVERIFY(!QFile::exists(m_program->Path(u"data/Zelqor.db"_s)));
            Use_Default_Database();
        }
        QVERIFY(App().Conn_OK);
        QCOMPARE(named(), here(written));
        // The next start finds it, and what is in it stays.
        Sql_Run(u"insert into Mess_Conf(Mess_ID) values ('mine')"_s);
        Database_Engine::Let_Go();
        Start();
        QVERIFY(App().Conn_OK && !Database_Is_Gone());
        QCOMPARE(Database_Path(), m_program->Path(u"data/Zelqor.db"_s));
        QCOMPARE(Sql_Cell(u"select Mess_ID from Mess_Conf"_s), u"mine"_s);
    }

    void A_Database_That_Cannot_Be_Made_Ends_The_Search()
    {
        m_program->Write(u"data"_s, "a file in the folder's place");
        Start();
        QVERIFY(!App().Conn_OK);
        QVERIFY(App().Conn_Trouble.number != 0);
    }

    void The_Opening_Test_Tells_Why_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addRow("no database") << QByteArray("This is a letter to a friend.").repeated(100);
        QTest::addRow("empty file") << QByteArray();
        QTest::addRow("another program's") << Another_Programs_Database();
        QTest::addRow("head of a database") << QByteArray("SQLite format 3\0", 16);
    }
    void The_Opening_Test_Tells_Why()
    {
        QFETCH(QByteArray, bytes);
        m_program->Write(u"other.db"_s, bytes);
        WriteIni(u"DataBase"_s, u"DATABASE_NAME"_s, m_program->Path(u"other.db"_s));
        Start();
        QVERIFY(!App().Conn_OK);
        QVERIFY(App().Conn_Trouble.number != 0);
        QCOMPARE(Err().number, 0);
        QCOMPARE(m_program->Logged(), QStringList());
        QCOMPARE(m_program->Bytes(u"other.db"_s), bytes);
        QVERIFY(Opening_Test(App().Conn_Str) == false);
        QVERIFY(CreateDataBase(m_program->Path(u"good.db"_s)));
        QVERIFY(Opening_Test(File_Conn_Str(m_program->Path(u"good.db"_s))));
        QCOMPARE(App().Conn_Trouble.number, 0);
    }

    void Compaction_Keeps_The_Rows_And_Frees_The_Space()
    {
        Start();
        const QString path = Database_Path();
        Sql_Run(u"insert into Mess_Conf(Mess_ID,Mess_Name1) values ('mine','%1')"_s.arg(QString(255, u'x')));
        for (int i = 0; i < 11; ++i)
            Sql_Run(u"insert into Mess_Conf(Mess_ID,Mess_Name1) select 'other',Mess_Name1 from Mess_Conf"_s);
        Sql_Run(u"delete from Mess_Conf where Mess_ID='other'"_s);
        const qint64 before = QFileInfo(path).size();
        QCOMPARE(Compact_Database(path, u"no"_s), u"Compact Ok"_s);
        QVERIFY2(QFileInfo(path).size() < before / 2, "the deleted rows still take their place");
        QCOMPARE(Sql_Cell(u"select Mess_ID from Mess_Conf"_s), u"mine"_s);
        QVERIFY(!QFile::exists(m_program->Path(u"data/temp.mdb"_s)));
        // The name that the copy had once is nobody's to delete.
        m_program->Write(u"data/Temp.mdb"_s, "a letter");
        QCOMPARE(Compact_Database(path, u"no"_s), u"Compact Ok"_s);
        QCOMPARE(m_program->Bytes(u"data/Temp.mdb"_s), QByteArray("a letter"));
        QCOMPARE(Compact_Database(m_program->Path(u"none.db"_s), u"no"_s), u"Compact No..."_s);
    }

    void A_Backup_Is_Due_After_So_Many_Days_data()
    {
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("days");
        QTest::addColumn<QString>("dialect");
        QTest::addColumn<bool>("due");
        QTest::addRow("six of seven") << u"2026-02-27"_s << u"7"_s << u"0"_s << false;
        QTest::addRow("seven of seven") << u"2026-02-26"_s << u"7"_s << u"0"_s << true;
        QTest::addRow("today, every day") << u"2026-03-05"_s << u"0"_s << u"0"_s << true;
        QTest::addRow("tomorrow") << u"2026-03-06"_s << u"9"_s << u"0"_s << true;
        QTest::addRow("a server") << u"2020-01-01"_s << u"7"_s << u"1"_s << false;
        QTest::addRow("slashes") << u"2026/02/26"_s << u"7"_s << u"0"_s << true;
        QTest::addRow("no date") << u"never"_s << u"7"_s << u"0"_s << true;
    }
    void A_Backup_Is_Due_After_So_Many_Days()
    {
        QFETCH(QString, last);
        QFETCH(QString, days);
        QFETCH(QString, dialect);
        QFETCH(bool, due);
        Config().Backup_Date = last;
        Config().Backup_Num = days;
        Config().Op_DB_Sql = dialect;
        QCOMPARE(Backup_Is_Due(), due);
    }

    void A_Backup_Is_Complete_Although_Connections_Are_Kept()
    {
        Start();
        Sql_Run(u"insert into Mess_Conf(Mess_ID) values ('just now')"_s);
        Recordset open;
        open.Open(u"select * from Mess_Conf"_s, App().Conn_Str);
        Config().Backup_Date = u"2020-01-01"_s;
        Back_Up();
        const QString copy = m_program->Path(u"backup/zelqor_2026-03-05.db"_s);
        open.Close();
        Recordset rows;
        rows.Open(u"select Mess_ID from Mess_Conf"_s, File_Conn_Str(copy));
        QCOMPARE(rows[0].Text(), u"just now"_s);
        QCOMPARE(GetIni(u"Col"_s, u"Backup_Date"_s), u"2026-03-05"_s);
        // A second one on the same day takes the first one's place.
        rows.Close();
        Sql_Run(u"update Mess_Conf set Mess_ID='later'"_s);
        Back_Up();
        Recordset again;
        again.Open(u"select Mess_ID from Mess_Conf"_s, File_Conn_Str(copy));
        QCOMPARE(again[0].Text(), u"later"_s);
    }

    void A_Backup_That_Fails_Is_Tried_Again()
    {
        Start();
        m_program->Write(u"blocked"_s, "a file");
        Config().Backup_Path = m_program->Path(u"blocked"_s);
        Config().Backup_Date = u"2020-01-01"_s;
        QVERIFY_EXCEPTION_THROWN(Back_Up(), Run_Time_Error);
        QCOMPARE(Config().Backup_Date, u"2020-01-01"_s);
        QVERIFY(Backup_Is_Due());
        // One of the same day stands until there is another.
        Config().Backup_Path = m_program->Path(u"backup"_s);
        Back_Up();
        const QByteArray first = m_program->Bytes(u"backup/zelqor_2026-03-05.db"_s);
        Database_Engine::Let_Go();
        m_program->Write(u"data/Zelqor.db"_s, first.left(first.size() / 2));
        QVERIFY_EXCEPTION_THROWN(Back_Up(), Run_Time_Error);
        QVERIFY(m_program->Bytes(u"backup/zelqor_2026-03-05.db"_s) == first);
    }

    void Cleaning_Takes_Attachments_First()
    {
        Start();
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Document(u"{kept}"_s, u"001"_s, u"t"_s);
        Add_Document(u"{lost}"_s, u"002"_s, u"t"_s);
        for (const QString &row : {u"'{kept}',0"_s, u"'{lost}',0"_s, u"'{none}',0"_s, u"'{none}',3"_s})
            Sql_Run(u"insert into tab_file(code_id,file_type) values (%1)"_s.arg(row));
        Add_Document(u"{blank}"_s, u"001 "_s, u"t"_s);
        QCOMPARE(Count_For_Cleaning().documents, 2);
        QCOMPARE(Count_For_Cleaning().attachments, 1);
        const QString copy = Copy_Before_Cleaning();
        Clean_Database();
        Recordset kept;
        kept.Open(u"select count(*) from Code_Info"_s, File_Conn_Str(copy));
        QCOMPARE(kept[0].Number(), 3);
        QCOMPARE(Sql_Rows(u"select Code_ID from Code_Info"_s), (QList<QStringList>{{u"{kept}"_s}}));
        QCOMPARE(Sql_Rows(u"select code_id,file_type from tab_file order by file_id"_s),
                 QList<QStringList>({{u"{kept}"_s, u"0"_s}, {u"{lost}"_s, u"0"_s}, {u"{none}"_s, u"3"_s}}));
        Clean_Database();
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file"_s), u"2"_s);
    }
};

QTEST_GUILESS_MAIN(Test_Database_Lifecycle)
#include "test_database_lifecycle.moc"

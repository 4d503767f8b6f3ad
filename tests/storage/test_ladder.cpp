// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/process_state.h"
#include "old_databases.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/paths.h"
#include "platform/lzma/zelqorfun.h"
#include "storage/database_lifecycle.h"
#include "storage/ladder.h"
#include "storage/update_235.h"
#include "support/test_program.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QTest>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
constexpr qsizetype Head = 100; ///< bytes of a file in which the engine counts changes

const QStringList Tables{u"Cate_Info"_s, u"Code_Info"_s, u"Class_Info"_s, u"SmallClass_Info"_s, u"TinyClass_Info"_s,
                         u"test"_s,      u"tab_file"_s,  u"tab_tag"_s,    u"tab_VirCate"_s,     u"Mess_Conf"_s,
                         u"User_pass"_s, u"User_List"_s, u"tab_log"_s,    u"tab_tags"_s,        u"tab_Gene"_s};
const QString File_Name = u"data/Old.db"_s;
const QString Copy_Name = u"data/bak/zelqor_Old_%1_2026-03-05.db"_s;
constexpr int Killed = 9;

QByteArray All_Bytes()
{
    QByteArray bytes;
    for (int i = 0; i < 25000; ++i)
        bytes += static_cast<char>(i * 7 / 3);
    return bytes;
}

QString Cell_Text(const QVariant &value)
{
    return value.isNull()                              ? u"(null)"_s
           : value.userType() == QMetaType::QByteArray ? QString::number(qHash(value.toByteArray()))
                                                       : value.toString();
}

/// Every row of every table, and the size of every column.
QStringList Dump()
{
    QStringList lines;
    for (const QString &table : Tables) {
        Recordset rows;
        rows.Open(u"select * from %1 order by 1"_s.arg(table), App().Conn_Str);
        for (int i = 0; i < rows.Field_Count(); ++i)
            lines << table + u'.' + rows[i].Name() + u' ' + QString::number(rows[i].Defined_Size());
        for (; !rows.Eof(); rows.MoveNext()) {
            QString line = table;
            for (int i = 0; i < rows.Field_Count(); ++i)
                line += u'|' + Cell_Text(rows[i].Value());
            lines << line;
        }
    }
    return lines;
}

/// Names, in lower case, and sizes of a table's columns.
QMap<QString, int> Columns(const QString &table)
{
    Recordset rows;
    rows.Open(u"select top 1 * from "_s + table, App().Conn_Str);
    QMap<QString, int> columns;
    for (int i = 0; i < rows.Field_Count(); ++i)
        columns[rows[i].Name().toLower()] = rows[i].Defined_Size();
    return columns;
}

/// A binary value that must come through, in a table that has the columns.
void Store_Bytes(const QString &statement, const QString &column)
{
    Recordset row;
    row.LockType = Lock_Type::Optimistic;
    row.Open(statement, App().Conn_Str);
    row[column].Set(All_Bytes());
    row.Update();
}

void Make_First_Release()
{
    App().Conn_Str = File_Conn_Str(App().App_Path + File_Name);
    QDir().mkpath(App().App_Path + u"data"_s);
    Database_Engine::Create_File(App().Conn_Str);
    for (const QString &statement : Old_Databases::First_Release)
        Sql_Run(statement);
    Store_Bytes(u"select * from tab_file"_s, u"file_cont"_s);
}

/// Makes the database as it was after a change; returns its place in the history.
void Make_Database_Of(const QString &change)
{
    Make_First_Release();
    for (const Old_Databases::Change &one : Old_Databases::Changes) {
        for (const QString &statement : one.statements)
            Sql_Run(statement);
        if (one.name == "235"_L1)
            Store_Bytes(u"select * from Code_Info where Code_ID='20070506-1'"_s, u"Code_Content_IO"_s);
        if (QLatin1StringView(one.name) == change)
            return;
    }
    qFatal("no change %s", qPrintable(change));
}

bool Raise(const QString &dialect = u"0"_s, const Ladder_Callbacks &callbacks = {})
{
    return Run_Ladder(App().Conn_Str, dialect, callbacks);
}

/// Runs the ladder in a process of its own, which dies before changing statement number `statement`.
/// @returns whether it died, that is, whether there were so many
bool Raise_And_Die(int statement)
{
    Database_Engine::Let_Go();
    const pid_t child = fork();
    if (child == 0) {
        int passed = 0;
        Raise(u"0"_s, {{}, [&] {
                           if (passed++ == statement)
                               _exit(Killed);
                       }});
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == Killed;
}
} // namespace

class Test_Ladder : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    [[nodiscard]] QByteArray File_Bytes() const
    {
        Database_Engine::Let_Go();
        return m_program->Bytes(File_Name);
    }

private slots:
    void init() { m_program.emplace(); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void The_Gate_Compares_Versions_data()
    {
        QTest::addColumn<QString>("row"); ///< Mess_Name1 of the version row; "-" for no row
        QTest::addColumn<bool>("needed");
        QTest::addRow("new file") << u"-"_s << true;
        QTest::addRow("older") << u"255"_s << true;
        QTest::addRow("much older, more digits wanted") << u"99"_s << true;
        QTest::addRow("current") << Version_Digits() << false;
        QTest::addRow("above") << u"1000"_s << false;
        QTest::addRow("empty") << QString() << true;
        QTest::addRow("no number") << u"new"_s << true;
    }
    void The_Gate_Compares_Versions()
    {
        QFETCH(QString, row);
        QFETCH(bool, needed);
        if (row != u"-"_s)
            Sql_Run(u"insert into Mess_Conf(Mess_ID,Mess_Name1) values ('DB_VER','%1')"_s.arg(row));
        QCOMPARE(Need_Update_Db(App().Conn_Str), needed);
    }

    void The_Gate_Reports_A_Missing_Table()
    {
        Sql_Run(u"drop table Mess_Conf"_s);
        try {
            static_cast<void>(Need_Update_Db(App().Conn_Str));
            QFAIL("no error");
        } catch (const Run_Time_Error &error) {
            QCOMPARE(error.number, Error_Number::Db_Missing_Table);
        }
    }

    void A_New_File_Gets_Its_First_Rows()
    {
        QVERIFY(CreateDataBase(m_program->Path(u"new.db"_s)));
        App().Conn_Str = File_Conn_Str(m_program->Path(u"new.db"_s));
        QVERIFY(Raise());
        QVERIFY(!Need_Update_Db(App().Conn_Str));
        QCOMPARE(Sql_Rows(u"select Cate_ID,Cate_Name,Cate_Memo,AutoColor_ID,Code_Num,Order_Id,Cate_Exp,Icon_Name,"
                          u"Cate_pass from Cate_Info"_s),
                 (QList<QStringList>{{u"000"_s, u"回收站"_s, u"回收站"_s, u""_s, u"0"_s, u"999"_s, u"1"_s,
                                      u"RECYCLEBIN.ico"_s, u""_s}}));
        QCOMPARE(Sql_Rows(u"select Mess_ID,Mess_Name1 from Mess_Conf"_s),
                 (QList<QStringList>{{u"DB_VER"_s, Version_Digits()}}));
        QVERIFY(!Columns(u"Code_Info"_s).contains(u"class_id"_s));
        QVERIFY(!Columns(u"Code_Info"_s).contains(u"smallclass_id"_s));
        QVERIFY(Columns(u"Code_Info"_s).contains(u"tinyclass_id"_s));
        QCOMPARE(Sql_Cell(u"select count(*) from User_pass"_s), u"0"_s);
        QVERIFY(!QFile::exists(m_program->Path(u"data/bak"_s)));
    }

    /// Every state that a release left reaches the schema of a new file, with every row and byte.
    void Every_Older_State_Reaches_The_Current_One_data()
    {
        QTest::addColumn<QString>("state");
        for (const Old_Databases::Change &change : Old_Databases::Changes)
            QTest::addRow("%s", change.name) << QString::fromLatin1(change.name);
    }
    void Every_Older_State_Reaches_The_Current_One()
    {
        QFETCH(QString, state);
        Raise(); // the prepared new database
        QMap<QString, QMap<QString, int>> expected;
        for (const QString &table : Tables)
            expected[table] = Columns(table);

        Make_Database_Of(state);
        const QByteArray before = File_Bytes();
        QVERIFY(Raise());
        QVERIFY(!Need_Update_Db(App().Conn_Str));
        QCOMPARE(m_program->Logged(), QStringList());
        for (const QString &table : Tables)
            QCOMPARE(Columns(table), expected[table]);
        QCOMPARE(Sql_Rows(u"select Code_ID,Cate_ID,Code_Title,Code_Content,Code_Done,Code_Type,Code_Date,Code_Create,"
                          u"Code_Update,Code_ReadDate,Code_ReadNum,Code_UpdateNum,Code_Tags,Code_ReadDate_gene_Id "
                          u"from Code_Info order by Code_ID"_s),
                 (QList<QStringList>{
                     {u"20070506-1"_s, u"001"_s, u"One"_s, u"{\\rtf1 plain é}"_s, u"★★★★★"_s, u"RTF"_s, u"2007-05-07"_s,
                      u"2007-05-07 08:09:10"_s, u"2007-05-07 08:09:10"_s, u"2007-05-07 08:09:10"_s, u"1"_s, u"0"_s,
                      u""_s, u"0"_s},
                     {u"20070506-2"_s, u"002001"_s, u"资料"_s, u"{\\rtf1 two}"_s, u"★★★★★"_s, u"RTF"_s, u"2008-01-02"_s,
                      u"2008-01-02"_s, u"2008-01-02"_s, u"2008-01-02"_s, u"1"_s, u"0"_s, u""_s, u"0"_s},
                     {u"20090101-3"_s, u"002001001"_s, u"Three"_s, u""_s, u"★★★★★"_s, u"RTF"_s, u"2009-01-01"_s,
                      u"2009-01-01"_s, u"2009-01-01"_s, u"2009-01-01"_s, u"1"_s, u"0"_s, u""_s, u"0"_s}}));
        QCOMPARE(Sql_Rows(u"select Cate_ID,Cate_Name,Code_Num,Cate_Exp,Cate_pass from Cate_Info order by Cate_ID"_s),
                 (QList<QStringList>{{u"000"_s, u"回收站"_s, u"0"_s, u"1"_s, u""_s},
                                     {u"001"_s, u"Work"_s, u"0"_s, u"1"_s, u""_s},
                                     {u"002"_s, u"It's mine"_s, u"0"_s, u"1"_s, u""_s},
                                     {u"002001"_s, u"100%1"_s, u"7"_s, u"1"_s, u""_s},
                                     {u"002001001"_s, u"Tiny"_s, u"0"_s, u"1"_s, u""_s}}));
        QCOMPARE(Sql_Rows(u"select order_id from Cate_Info where Cate_ID='000'"_s).value(0), QStringList{u"999"_s});
        QCOMPARE(Sql_Rows(u"select user_name,user_pass,user_start,user_end from user_pass"_s),
                 (QList<QStringList>{{u"Ann's"_s, u""_s, u"2007-05-06"_s, u"2019-12-01"_s}}));
        QCOMPARE(Sql_Rows(u"select user_name from user_list"_s), QList<QStringList>{{u"Ann's"_s}});
        QCOMPARE(Sql_Rows(u"select code_id,file_name,file_path,order_id,file_infor from tab_file"_s),
                 (QList<QStringList>{{u"20070506-2"_s, u"a.txt"_s, u"C:\\a.txt"_s, u"1"_s, u""_s}}));
        for (const QString &statement : {u"select file_cont from tab_file"_s,
                                         u"select Code_Content_IO from Code_Info where Code_ID='20070506-1'"_s}) {
            Recordset row;
            row.Open(statement, App().Conn_Str);
            QVERIFY(row[0].Bytes() == All_Bytes());
        }
        QCOMPARE(Sql_Cell(u"select Mess_Name1 from Mess_Conf where Mess_ID='NOTE'"_s), u"a fact"_s);

        const bool hadVersion = before.contains("DB_VER");
        QVERIFY(m_program->Bytes(Copy_Name.arg(hadVersion ? u"255"_s : u"unknown"_s)).mid(Head) == before.mid(Head));
        const QStringList raised = Dump();
        QVERIFY(Raise());
        QCOMPARE(Dump(), raised);
    }

    void An_Interrupted_Ladder_Is_Finished_By_The_Next_Run()
    {
        Make_Database_Of(u"236"_s);
        const QByteArray before = File_Bytes();
        QVERIFY(Raise());
        const QStringList expected = Dump();
        int statement = 0;
        for (bool died = true; died; ++statement) {
            Database_Engine::Let_Go();
            m_program->Write(File_Name, before);
            QFile::remove(m_program->Path(Copy_Name.arg(u"unknown"_s)));
            died = Raise_And_Die(statement);
            QVERIFY(!died || Need_Update_Db(App().Conn_Str));
            QVERIFY(Raise());
            QCOMPARE(Dump(), expected);
            QVERIFY2(m_program->Bytes(Copy_Name.arg(u"unknown"_s)).mid(Head) == before.mid(Head),
                     "the copy was made of a half-raised file");
        }
        QVERIFY2(statement > 60, "the ladder hardly ran");
    }

    void Null_Dates_Are_Filled_By_Every_Run()
    {
        Make_Database_Of(u"256"_s);
        Sql_Run(u"update Code_Info set Code_Date=null,Code_ReadDate=null where Code_ID='20070506-1'"_s);
        QVERIFY(Raise());
        QCOMPARE(Sql_Rows(u"select Code_Date,Code_ReadDate from Code_Info where Code_ID='20070506-1'"_s),
                 (QList<QStringList>{{u"2007-05-07"_s, u"2007-05-07 08:09:10"_s}}));
    }

    void The_Bin_Password_Is_Never_Null()
    {
        Make_Database_Of(u"256"_s);
        Sql_Run(u"update Cate_Info set Cate_pass=null where Cate_ID='000'"_s);
        Sql_Run(u"update Cate_Info set Cate_pass='x' where Cate_ID='001'"_s);
        QVERIFY(Raise());
        QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info where Cate_pass=''"_s), u"4"_s);
        QCOMPARE(Sql_Cell(u"select Cate_pass from Cate_Info where Cate_ID='001'"_s), u"x"_s);
    }

    void Ids_Are_Wide_Also_In_Tables_Made_Late()
    {
        Make_Database_Of(u"256"_s);
        Sql_Run(u"drop table tab_tag"_s);
        Sql_Run(u"drop table tab_VirCate"_s);
        QVERIFY(Raise());
        QCOMPARE(Columns(u"tab_tag"_s).value(u"code_id"_s), 38);
        QCOMPARE(Columns(u"tab_VirCate"_s).value(u"code_id"_s), 38);
    }

    /// The class tables stay in a file that was moved to the folder tree: they must not be moved twice.
    void Old_Classes_Never_Come_Back()
    {
        Make_Database_Of(u"250"_s);
        Sql_Run(u"delete from Cate_Info"_s);
        QVERIFY(Raise());
        QCOMPARE(Sql_Rows(u"select Cate_ID from Cate_Info"_s), QList<QStringList>{{u"000"_s}});
        QCOMPARE(Sql_Cell(u"select Cate_ID from Code_Info where Code_ID='20090101-3'"_s), u"002001001"_s);
    }

    void A_Move_That_Stopped_Behind_Its_Table_Is_Finished()
    {
        Make_Database_Of(u"238"_s);
        Sql_Run(u"CREATE TABLE Cate_Info ([Cate_ID] Text(250) PRIMARY KEY, [Cate_Name] Text(50), "
                u"[Cate_Memo] Text(200), [AutoColor_ID] Text(3), [Code_Num] Long DEFAULT 0, "
                u"[Order_Id] Long DEFAULT 0, [Icon_Name] Text(20))"_s);
        QVERIFY(Raise());
        QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info"_s), u"5"_s);
        QCOMPARE(Sql_Cell(u"select Cate_ID from Code_Info where Code_ID='20090101-3'"_s), u"002001001"_s);
    }

    void A_Later_Version_Is_Not_Lowered()
    {
        Make_Database_Of(u"256"_s);
        Sql_Run(u"update Mess_Conf set Mess_Name1='300' where Mess_ID='DB_VER'"_s);
        QVERIFY(Raise());
        QCOMPARE(Sql_Cell(u"select Mess_Name1 from Mess_Conf where Mess_ID='DB_VER'"_s), u"300"_s);
    }

    void The_Dialect_Chooses_The_Rungs_data()
    {
        QTest::addColumn<QString>("dialect");
        QTest::addColumn<QString>("bins");
        QTest::addRow("server") << u"1"_s << u"1"_s;
        QTest::addRow("other") << u"2"_s << u"0"_s;
    }
    void The_Dialect_Chooses_The_Rungs()
    {
        QFETCH(QString, dialect);
        QFETCH(QString, bins);
        Make_Database_Of(u"facts"_s);
        Sql_Run(u"delete from Cate_Info where Cate_ID='000'"_s);
        QVERIFY(Raise(dialect));
        QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info where Cate_ID='000'"_s), bins);
        QVERIFY(!Columns(u"Code_Info"_s).contains(u"code_readdate"_s));
        QVERIFY(!Columns(u"Code_Info"_s).contains(u"class_id"_s));
        QVERIFY(Columns(u"Code_Info"_s).contains(u"code_readdate_sta"_s));
        QVERIFY(!Columns(u"tab_Gene"_s).isEmpty());
        QVERIFY_EXCEPTION_THROWN(Columns(u"tab_log"_s), Run_Time_Error);
        QVERIFY(!Need_Update_Db(App().Conn_Str));
    }

    void Without_A_Copy_Nothing_Changes()
    {
        Make_Database_Of(u"250"_s);
        const QByteArray before = File_Bytes();
        m_program->Write(u"data/bak"_s, "a file in the folder's place");
        try {
            Raise();
            QFAIL("no error");
        } catch (const Run_Time_Error &error) {
            QCOMPARE(error.failure, Failure::Path_Access);
            QVERIFY(error.description.contains(u"data/bak/zelqor_Old_unknown_2026-03-05.db"_s));
        }
        QVERIFY(File_Bytes() == before);
        QFile::remove(m_program->Path(u"data/bak"_s));
        QVERIFY(Raise());
        QVERIFY(!Need_Update_Db(App().Conn_Str));
    }

    void A_File_That_Cannot_Be_Written_Is_Tried_Again()
    {
        Make_Database_Of(u"250"_s);
        const QByteArray before = File_Bytes();
        const QFile::Permissions writable = QFile::permissions(m_program->Path(File_Name));
        QFile::setPermissions(m_program->Path(File_Name), QFile::ReadOwner);
        QVERIFY(Raise());
        QVERIFY(File_Bytes() == before);
        QCOMPARE(m_program->Logged(), QStringList{u"Update_DB_Ver_Alter"_s});
        QFile::setPermissions(m_program->Path(File_Name), writable);
        QVERIFY(Raise());
        QCOMPARE(Sql_Cell(u"select Mess_Name1 from Mess_Conf where Mess_ID='DB_VER'"_s), Version_Digits());
    }

    void The_One_Time_Upgrade_Can_Be_Declined()
    {
        Make_First_Release();
        const QByteArray before = File_Bytes();
        QString asked;
        QVERIFY(!Raise(u"0"_s, {[&](const QString &connStr) {
                                    asked = connStr;
                                    return false;
                                },
                                {}}));
        QCOMPARE(asked, App().Conn_Str);
        QVERIFY(File_Bytes() == before);
    }

    void The_One_Time_Upgrade_Packs_The_Contents()
    {
        Make_First_Release();
        const QByteArray before = File_Bytes();
        qint64 packed = 0;
        QVERIFY(Raise(u"0"_s, {[&](const QString &connStr) {
                                   Update_235(connStr, [&](qint64 done) { packed = done; });
                                   return true;
                               },
                               {}}));
        QCOMPARE(packed, 2);
        QVERIFY(!Need_Update_Db(App().Conn_Str));
        QVERIFY(m_program->Bytes(u"data/bak/zelqor.db"_s).mid(Head) == before.mid(Head));
        QVERIFY(!m_program->Bytes(u"data/bak/zelqor241.db"_s).isEmpty());
        QCOMPARE(m_program->Bytes(u"data/bak/20070506-1.rtf"_s), QByteArray("{\\rtf1 plain \\u233?}"));
        QVERIFY(!QFile::exists(m_program->Path(u"data/bak/zip.dd"_s)));
        Recordset rows;
        rows.Open(u"select Cate_ID,Code_Content,Code_Content_IO from Code_Info order by Code_ID"_s, App().Conn_Str);
        QCOMPARE(rows[0].Text(), u"001"_s);
        QCOMPARE(rows[1].Text(), QString());
        bool complete = false;
        QCOMPARE(Lzma_Decode(rows[2].Bytes(), complete), QByteArray("{\\rtf1 plain \\u233?}"));
        QVERIFY(complete && rows[2].Bytes().endsWith('\0'));
        rows.MoveNext();
        QCOMPARE(rows[0].Text(), u"002001"_s);
        QCOMPARE(Sql_Rows(u"select Class_ID,SmallClass_ID from tab_file"_s), (QList<QStringList>{{u"2"_s, u"1"_s}}));
        QVERIFY_EXCEPTION_THROWN(Sql_Cell(u"select Class_ID from Code_Info"_s), Run_Time_Error);
    }

    /// A document that was packed already has no text any more: packing it again would lose it.
    void A_Half_Done_Upgrade_Packs_The_Rest_Only()
    {
        Make_First_Release();
        Sql_Run(u"ALTER TABLE code_info ADD COLUMN Code_Content_IO OLEOBJECT, TinyClass_ID long"_s);
        Store_Bytes(u"select * from Code_Info where Code_ID='20070506-1'"_s, u"Code_Content_IO"_s);
        Sql_Run(u"update Code_Info set Code_Content='' where Code_ID='20070506-1'"_s);
        Update_235(App().Conn_Str, [](qint64) {});
        Recordset rows;
        rows.Open(u"select Code_Content_IO from Code_Info order by Code_ID"_s, App().Conn_Str);
        QVERIFY(rows[0].Bytes() == All_Bytes());
        rows.MoveNext();
        bool complete = false;
        QCOMPARE(Lzma_Decode(rows[0].Bytes(), complete), QByteArray("{\\rtf1 two}"));
    }
};

QTEST_GUILESS_MAIN(Test_Ladder)
#include "test_ladder.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "../storage/old_databases.h"
#include "core/config_store.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/blob_stream.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/database/server.h"
#include "storage/database_lifecycle.h"
#include "storage/ladder.h"
#include "storage/server_link.h"
#include "support/error_number.h"
#include "support/test_program.h"
#include "support/test_server.h"
#include "tree/folder_editing.h"
#include "tree/folder_moving.h"

#include <QTest>
#include <thread>

using namespace Qt::StringLiterals;

namespace
{
/// The tables of a library with their columns and how many characters these hold.
QStringList Shape_Of(const QString &connection)
{
    QStringList shape;
    for (const char *table : {"Cate_Info", "Code_Info", "tab_file", "tab_tag", "tab_VirCate", "tab_tags", "tab_Gene",
                              "tab_log", "User_pass", "User_List", "Mess_Conf", "test"}) {
        Recordset rows;
        rows.Open(u"select top 1 * from "_s + QLatin1StringView(table), connection);
        for (int i = 0; i < rows.Field_Count(); ++i)
            shape << QLatin1StringView(table) + u'.' + rows[i].Name() + u' ' + QString::number(rows[i].Defined_Size());
    }
    shape.sort();
    return shape;
}
} // namespace

/// A library on a server is the one that a file would be, for one program and for several.
class Test_Server_Library : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_program = std::make_unique<Test_Program>();
        m_file = App().Conn_Str;
        App().Conn_Str = Test_Server::The_One().New_Link(m_program->Path(u"odbc.udl"_s));
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void An_Empty_Database_Becomes_A_Library()
    {
        QVERIFY(Opening_Test(App().Conn_Str));
        QVERIFY(Need_Update_Db(App().Conn_Str));
        for (const QString &connection : {App().Conn_Str, m_file})
            QVERIFY(Run_Ladder(connection, connection == m_file ? u"0"_s : u"1"_s, {}));
        QVERIFY(!Need_Update_Db(App().Conn_Str));
        QCOMPARE(Shape_Of(App().Conn_Str), Shape_Of(m_file));
        QCOMPARE(Sql_Cell(u"select cate_name from cate_info"_s), u"回收站"_s);
        QVERIFY(Opening_Test(App().Conn_Str)); // nothing is made twice
        QCOMPARE(Sql_Cell(u"select count(*) from cate_info"_s), u"1"_s);
    }

    void An_Old_Library_Is_Raised()
    {
        const QString server = App().Conn_Str;
        Database_Engine::Create_File(File_Conn_Str(m_program->Path(u"old.db"_s)));
        const QString file = File_Conn_Str(m_program->Path(u"old.db"_s));
        const auto rows = [](const QString &connection) {
            App().Conn_Str = connection;
            return Sql_Rows(
                u"select code_id,cate_id,code_title,code_create,code_color from code_info order by code_id"_s);
        };
        for (const QString &connection : {server, file}) {
            App().Conn_Str = connection;
            for (const QString &statement : Old_Databases::First_Release)
                Sql_Run(statement);
            for (const Old_Databases::Change &change : Old_Databases::Changes) {
                for (const QString &statement : change.statements)
                    Sql_Run(statement);
                if (change.name == QByteArray("236"))
                    break;
            }
            QVERIFY(Run_Ladder(connection, u"0"_s, {}));
        }
        QCOMPARE(Shape_Of(server), Shape_Of(file));
        QCOMPARE(rows(server), rows(file));
    }

    /// What ten programs do at once is there, with no id given twice and counters that count.
    void Ten_Programs_At_Once()
    {
        constexpr int programs = 10;
        constexpr int rounds = 8;
        Make_Library();
        std::vector<std::thread> all;
        std::atomic<int> failed = 0;
        for (int program = 0; program < programs; ++program) {
            all.emplace_back([&, program] {
                for (int round = 0; round < rounds; ++round) {
                    const QString name = u"p%1-%2"_s.arg(program).arg(round);
                    const QString id = MakeExistCateId({}, name);
                    const bool moves = round % 2 == 1 && !id.isEmpty();
                    failed += id.isEmpty() || (moves && Mod_Cate_Action(id, u"001"_s).isEmpty()) ? 1 : 0;
                    failed += Number_Of_Error([&] {
                                  Run_Statement(u"update cate_info set code_num = code_num + 1 where cate_id = '001'"_s,
                                                App().Conn_Str);
                                  Add_Document(u"{%1}"_s.arg(name), u"001"_s, name);
                              }) != 0
                                  ? 1
                                  : 0;
                }
                Database_Engine::Let_Go();
            });
        }
        for (std::thread &one : all)
            one.join();
        QVERIFY2(m_program->Logged().isEmpty(), m_program->Bytes(u"Error.log"_s).left(1500).constData());
        QCOMPARE(failed.load(), 0);
        const QString count = QString::number(programs * rounds);
        QCOMPARE(Sql_Cell(u"select count(*) from cate_info where cate_name like 'p%-%'"_s), count);
        QCOMPARE(Sql_Cell(u"select count(*) from cate_info where cate_id like '001___'"_s),
                 QString::number(programs * rounds / 2));
        QCOMPARE(Sql_Cell(u"select count(*) from code_info where cate_id = '001'"_s), count);
        QCOMPARE(Sql_Cell(u"select code_num from cate_info where cate_id = '001'"_s), count);
    }

    /// A failing statement in an action takes nothing else with it; one whose connection is cut leaves nothing at all,
    /// and the next one finds the server again by itself.
    void Actions()
    {
        Make_Library();
        const QString insert = u"insert into cate_info(cate_id,cate_name) values ('%1','x')"_s;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            Sql_Run(insert.arg(u"002"_s));
            QVERIFY(Number_Of_Error([&] { Sql_Run(insert.arg(u"002"_s)); }) != 0);
            Sql_Run(insert.arg(u"003"_s));
        });
        const QString folders = u"select count(*) from cate_info where cate_name = 'x'"_s;
        QCOMPARE(Sql_Cell(folders), u"2"_s);
        const qint32 cut = Number_Of_Error([&] {
            Database_Engine::One_Action(App().Conn_Str, [&] {
                Sql_Run(insert.arg(u"004"_s));
                Test_Server::The_One().Restart();
                QCOMPARE(Number_Of_Error([&] { Sql_Run(insert.arg(u"005"_s)); }), Database_Server::Gone);
                QVERIFY(Number_Of_Error([&] { Sql_Run(insert.arg(u"006"_s)); }) != 0);
            });
        });
        QCOMPARE(cut, Database_Server::Gone);
        QCOMPARE(Sql_Cell(folders), u"2"_s);
        Test_Server::The_One().Restart();
        QCOMPARE(Sql_Cell(folders), u"2"_s); // a question is asked anew
    }

    void Changes_Of_Others_Are_Told()
    {
        Make_Library();
        const QString connection = App().Conn_Str;
        QCOMPARE(Database_Server::Changed_By_Others(connection), QStringList());
        Sql_Run(u"update cate_info set cate_name = 'own'"_s);
        QCOMPARE(Database_Server::Changed_By_Others(connection), QStringList());
        Test_Server::The_One().Sql(connection, u"UPDATE \"Code_Info\" SET \"Code_Title\" = 'x'"_s);
        QCOMPARE(Database_Server::Changed_By_Others(connection), QStringList{u"Code_Info"_s});
        QCOMPARE(Database_Server::Changed_By_Others(connection), QStringList());
    }

    void A_Statement_Is_Called_Off()
    {
        Make_Library();
        for (int i = 0; i < 12; ++i)
            Sql_Run(u"insert into tab_tags(tags_id,tags_name) values (1,'%1')"_s.arg(i));
        QList<qint64> told;
        Database_Server::Set_Patience([&told](qint64 milliseconds) {
            told << milliseconds;
            return milliseconds < 200;
        });
        Failure failure = Failure::Other;
        try { // twelve rows, eight times by themselves
            Sql_Run(u"select count(*) from tab_tags a, tab_tags b, tab_tags c, tab_tags d, tab_tags e, tab_tags f, "
                    "tab_tags g, tab_tags h where a.tags_name & b.tags_name & h.tags_name like '%[0-9]%'"_s);
        } catch (const Run_Time_Error &error) {
            failure = error.failure;
        }
        Database_Server::Set_Patience({});
        QCOMPARE(failure, Failure::Stopped);
        QCOMPARE(told.last(), -1);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_tags"_s), u"12"_s);
    }

    void Long_Values_Go_Block_By_Block()
    {
        Make_Library();
        Sql_Run(u"insert into tab_file(code_id) values ('x')"_s);
        const Database_Engine::Blob_Place place{App().Conn_Str, u"tab_file"_s, u"file_cont"_s, 1};
        const qint64 size = (qint64(5) << 19) + 3;
        qint64 given = 0;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            Database_Engine::Write_Blob(place, size, [&](char *block, qint64 room) {
                for (qint64 i = 0; i < room; ++i)
                    block[i] = static_cast<char>((given + i) * 31 % 251);
                given += room;
                return room;
            });
        });
        qint64 read = 0;
        bool same = true;
        Database_Engine::Read_Blob(place, [&](const char *block, qint64 part) {
            for (qint64 i = 0; i < part; ++i)
                same = same && block[i] == static_cast<char>((read + i) * 31 % 251);
            read += part;
            return true;
        });
        QCOMPARE(read, size);
        QVERIFY(same);
    }

    /// The link is for its owner only, whatever stood there, and says what was typed.
    void The_Link()
    {
        m_program->Write(u"odbc.udl"_s, "old");
        QFile::setPermissions(m_program->Path(u"odbc.udl"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ReadOther);
        Server_Link link{u"db.example,db2.example"_s, u"6000"_s, u"notes"_s, u"me"_s, u"se cret"_s, u"require"_s};
        Write_Server_Link(link);
        QVERIFY((QFile::permissions(m_program->Path(u"odbc.udl"_s)) & (QFile::ReadOther | QFile::ReadGroup)) == 0);
        const Server_Link read = Present_Server_Link();
        QCOMPARE(QStringList({read.server, read.port, read.database, read.user, read.password, read.encryption}),
                 QStringList({link.server, link.port, link.database, link.user, link.password, link.encryption}));
        for (const QString &sign : {u"a;b"_s, u"a}b"_s, u"a\"b"_s, u"DRIVER=x"_s, u"a\nb"_s}) {
            link.password = sign;
            QVERIFY2(!Can_Be_Written(link), qPrintable(sign));
        }
    }

private:
    static void Make_Library()
    {
        QVERIFY2(Opening_Test(App().Conn_Str), qPrintable(App().Conn_Trouble.description));
        Add_Folder(u"001"_s, u"all"_s);
    }

    std::unique_ptr<Test_Program> m_program;
    QString m_file;
};

QTEST_GUILESS_MAIN(Test_Server_Library)
#include "test_server_library.moc"

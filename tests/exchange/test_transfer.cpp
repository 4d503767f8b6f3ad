// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "exchange/import_source.h"
#include "exchange/transfer.h"
#include "exchange/transfer_by_name.h"
#include "exchange/transfer_candidates.h"
#include "exchange/transfer_comparison.h"
#include "platform/database/database.h"
#include "storage/database_lifecycle.h"
#include "support/stopping_work.h"
#include "support/test_program.h"
#include "support/test_server.h"
#include "users/scrambling.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;
using namespace Mod_DataBaseExport;

namespace
{
const QString Tables[] = {u"Code_Info"_s,   u"tab_file"_s,  u"tab_tag"_s,   u"tab_tags"_s, u"tab_Gene"_s,
                          u"tab_VirCate"_s, u"Cate_Info"_s, u"User_List"_s, u"User_pass"_s};

/// While it lives, statements of the test go to another database.
class In_Database
{
public:
    explicit In_Database(const QString &connection) : m_before(App().Conn_Str) { App().Conn_Str = connection; }
    ~In_Database() { App().Conn_Str = m_before; }
    In_Database(const In_Database &) = delete;
    In_Database &operator=(const In_Database &) = delete;

private:
    QString m_before;
};

QStringList Counts(const QString &connection)
{
    const In_Database other(connection);
    QStringList counts;
    for (const QString &table : Tables)
        counts << Sql_Cell(u"select count(*) from "_s + table);
    return counts;
}

/// Everything that two databases hold, but the numbers that each engine gives.
QList<QStringList> Contents(const QString &connection)
{
    const In_Database other(connection);
    QList<QStringList> all;
    for (
        const QString &statement :
        {u"select * from Code_Info order by Code_ID"_s,
         u"select * from Cate_Info where Cate_ID <> '000' order by Cate_ID"_s,
         u"select code_id,file_name,file_cont,file_infor,file_size,file_path,file_type from tab_file order by file_name"_s,
         u"select * from tab_tag order by tag_id"_s,
         u"select tags_Id,tags_Name,tags_Count from tab_tags order by tags_Id"_s,
         u"select Cate_ID,Code_id from tab_VirCate order by Cate_ID"_s,
         u"select * from User_List order by User_Name"_s})
        all += Sql_Rows(statement);
    return all;
}
} // namespace

class Test_Transfer : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    QString m_other; ///< connection to the other database

    void Add_Source()
    {
        const In_Database other(m_other);
        Add_Folder(u"001"_s, u"出差"_s);
        Add_Folder(u"001002"_s, u"b"_s);
        Add_Folder(u"001002003"_s, u"locked"_s, -1, Scramble_Text(u"pw"_s));
        Add_Document(u"{1}"_s, u"001002003"_s, u"deep"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"two"_s);
        Sql_Run(u"update Code_Info set Code_Tags = '{1}', Code_ReadDate_gene_Id = 1 where Code_ID = '{1}'"_s);
        Sql_Run(u"insert into tab_file(code_id,file_name,file_type) values ('{1}','f',0)"_s);
        Sql_Run(u"insert into tab_tag(code_id,tag_name,tag_date,tag_lineno) values ('{1}','mark','2026-01-02',7)"_s);
        Sql_Run(u"insert into tab_tags(tags_Id,tags_Name) values (1,'work')"_s);
        Sql_Run(u"insert into tab_Gene(Gene_Id,Gene_Name,Gene_Num) values (1,'daily',1.7)"_s);
        Sql_Run(u"insert into tab_VirCate(Cate_ID,Code_id) values ('001','{1}')"_s);
        Sql_Run(u"insert into User_List(User_Name) values ('ann')"_s);
        Sql_Run(u"insert into User_pass(User_Name,User_Pass) values ('ann','x')"_s);
    }

private slots:
    void init()
    {
        m_program.emplace();
        Sql_Run(u"delete from User_List"_s);
        Sql_Run(u"delete from User_pass"_s);
        const QString path = m_program->Path(u"of a friend; 'x'.db"_s);
        QVERIFY(CreateDataBase(path));
        m_other = File_Conn_Str(path);
        Add_Source();
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        Database_Engine::Let_Go();
        m_program.reset();
    }

    /// What goes from a file to a server and back is what it was.
    void By_Way_Of_A_Server()
    {
        const QString server = Test_Server::The_One().New_Link(m_program->Path(u"odbc.udl"_s));
        QVERIFY(Opening_Test(server));
        QVERIFY(CreateDataBase(m_program->Path(u"back.db"_s)));
        const QString back = File_Conn_Str(m_program->Path(u"back.db"_s));
        Unwatched_Work work;
        QList<QStringList> expected = Contents(m_other);
        for (QStringList &row : expected) // a bookmark arrives without its date
            row.replaceInStrings(u"2026-01-02"_s, QString());
        for (const auto &[target, source] : {std::pair{server, m_other}, {back, server}}) {
            const Transfer_Result result =
                Transfer_Documents(target, source, {{u"{1}"_s, u"deep"_s}, {u"{2}"_s, u"two"_s}}, work);
            QCOMPARE(result.done, 2);
            QVERIFY(result.failed.isEmpty());
            QCOMPARE(Contents(target), expected);
        }
    }

    void A_Document_Brings_Everything_That_Hangs_On_It_Once()
    {
        Unwatched_Work work;
        const QList<Transfer_Row> rows{{u"{1}"_s, u"deep"_s}, {u"{2}"_s, u"two"_s}, {u"{9}"_s, u"gone"_s}};
        Transfer_Result result = Transfer_Documents(App().Conn_Str, m_other, rows, work);
        QCOMPARE(result.done, 2);
        QCOMPARE(result.failed.size(), 1);
        QCOMPARE(result.failed[0].name, u"gone"_s);

        QList<QStringList> expected = Contents(m_other);
        for (QStringList &row : expected) { // a bookmark arrives without its date
            if (row.contains(u"mark"_s))
                row.replaceInStrings(u"2026-01-02"_s, QString());
        }
        QCOMPARE(Contents(App().Conn_Str), expected);

        const QStringList counts = Counts(App().Conn_Str);
        result = Transfer_Documents(App().Conn_Str, m_other, rows, work);
        QCOMPARE(result.done, 0);
        QCOMPARE(result.present, 2);
        QCOMPARE(Counts(App().Conn_Str), counts);
    }

    void Nothing_Of_The_Target_Is_Changed()
    {
        Add_Folder(u"001"_s, u"mine"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"my two"_s);
        Sql_Run(u"insert into tab_tags(tags_Id,tags_Name) values (1,'home')"_s);
        Sql_Run(u"insert into tab_tag(code_id,tag_name) values ('{2}','mine')"_s); // has the number of the other's
        Sql_Run(u"insert into User_List(User_Name) values ('me')"_s);
        Unwatched_Work work;
        const Transfer_Result result =
            Transfer_Documents(App().Conn_Str, m_other, {{u"{1}"_s, {}}, {u"{2}"_s, {}}}, work);
        QCOMPARE(result.done, 1);
        QCOMPARE(result.failed.size(), 0);
        QCOMPARE(Sql_Rows(u"select Cate_Name from Cate_Info where Cate_ID = '001'"_s), QList<QStringList>{{u"mine"_s}});
        QCOMPARE(Sql_Rows(u"select Code_Title from Code_Info where Code_ID = '{2}'"_s),
                 QList<QStringList>{{u"my two"_s}});
        QCOMPARE(Sql_Rows(u"select tags_Name from tab_tags"_s), QList<QStringList>{{u"home"_s}});
        QCOMPARE(Sql_Rows(u"select tag_name from tab_tag order by tag_id"_s),
                 (QList<QStringList>{{u"mine"_s}, {u"mark"_s}}));
        QCOMPARE(Sql_Rows(u"select User_Name from User_List"_s), QList<QStringList>{{u"me"_s}});
        QCOMPARE(Sql_Rows(u"select User_Name from User_pass"_s), QList<QStringList>{{u"ann"_s}});
    }

    void A_Run_That_Is_Called_Off_Is_Completed_By_The_Next()
    {
        const QList<Transfer_Row> rows{{u"{1}"_s, {}}, {u"{2}"_s, {}}};
        Stopping_Work stopping(1);
        const Transfer_Result first = Transfer_Documents(App().Conn_Str, m_other, rows, stopping);
        QVERIFY(first.stopped);
        QCOMPARE(first.done, 1);
        QCOMPARE(Sql_Cell(u"select count(*) from User_List"_s), u"0"_s);
        Unwatched_Work work;
        QCOMPARE(Transfer_Documents(App().Conn_Str, m_other, rows, work).done, 1);
        QCOMPARE(Sql_Cell(u"select count(*) from User_List"_s), u"1"_s);
    }

    void Candidates_Follow_The_Direction_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<bool>("exporting");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<bool>("refused");
        QTest::addColumn<QString>("listed");
        QTest::addRow("a folder with those below") << u"001"_s << true << QString() << false << u"{1} {2}"_s;
        QTest::addRow("a locked one") << u"001002003"_s << true << u"pw"_s << false << u"{1}"_s;
        QTest::addRow("with a wrong password") << u"001002003"_s << true << u"PW"_s << true << QString();
        QTest::addRow("imported") << u"001002003"_s << false << QString() << false << u"{1}"_s;
        QTest::addRow("the root exported") << QString() << true << QString() << false << QString();
        QTest::addRow("the root imported") << QString() << false << QString() << false << u"{1} {2}"_s;
        QTest::addRow("no folder") << u"x' or '1'='1"_s << false << QString() << false << QString();
    }
    void Candidates_Follow_The_Direction()
    {
        QFETCH(QString, folder);
        QFETCH(bool, exporting);
        QFETCH(QString, typed);
        QFETCH(bool, refused);
        QFETCH(QString, listed);
        List_Model list;
        const Candidates answer = Fill_Candidates(
            folder, list, m_other, exporting ? Direction::Export : Direction::Import, [&] { return typed; });
        QCOMPARE(answer == Candidates::Wrong_Password, refused);
        QStringList ids;
        for (int i = 0; i < list.Row_Count(); ++i)
            ids << list.Row(i).tag;
        QCOMPARE(ids.join(u' '), listed);
    }

    void What_Both_Sides_Have_Is_Told()
    {
        Unwatched_Work work;
        QCOMPARE(Find_Conflicts(App().Conn_Str, m_other, {u"{1}"_s}, work).size(), 0);
        Transfer_Documents(App().Conn_Str, m_other, {{u"{1}"_s, {}}, {u"{2}"_s, {}}}, work);
        QCOMPARE(Compare_Documents(App().Conn_Str, m_other, {u"{1}"_s}, work).value(u"{1}"_s), Known::Same);
        Sql_Run(u"update Code_Info set Code_Content = 'x', Code_Update = '1999-01-01' where Code_ID = '{1}'"_s);
        Sql_Run(u"update Code_Info set Code_Content = 'x', Code_Update = '2999-01-01' where Code_ID = '{2}'"_s);
        const auto known = Compare_Documents(App().Conn_Str, m_other, {u"{1}"_s, u"{2}"_s, u"{3}"_s}, work);
        QCOMPARE(known.value(u"{1}"_s), Known::Older);
        QCOMPARE(known.value(u"{2}"_s), Known::Newer);
        QCOMPARE(known.value(u"{3}"_s), Known::Nothing);

        Sql_Run(u"delete from Code_Info"_s);
        Sql_Run(u"update Cate_Info set Cate_Name = 'mine' where Cate_ID = '001'"_s);
        Sql_Run(u"update tab_tags set tags_Name = 'home'"_s);
        Sql_Run(u"update tab_Gene set Gene_Id = 5"_s);
        QStringList told;
        for (const Conflict &conflict : Find_Conflicts(App().Conn_Str, m_other, {u"{1}"_s, u"{2}"_s}, work))
            told << conflict.there + u'>' + conflict.here;
        QCOMPARE(told, QStringList({u"出差>mine"_s, u"work>home"_s, u"daily>"_s}));
    }

    void Names_Decide_When_That_Is_Wanted()
    {
        Add_Folder(u"001"_s, u"mine"_s);
        Add_Folder(u"002"_s, u"出差"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"my two"_s);
        Sql_Run(u"insert into tab_tags(tags_Id,tags_Name) values (1,'home')"_s);
        Sql_Run(u"insert into tab_Gene(Gene_Id,Gene_Name,Gene_Num) values (1,'weekly',1.7)"_s);
        Unwatched_Work work;
        const QList<Transfer_Row> rows{{u"{1}"_s, u"deep"_s}, {u"{2}"_s, u"two"_s}};
        QCOMPARE(Transfer_By_Name(m_other, rows, work).done, 2);
        const Transfer_Result again = Transfer_By_Name(m_other, rows, work);
        QCOMPARE(again.present, 2);
        QCOMPARE(again.failed.size(), 0);
        QCOMPARE(
            Sql_Rows(u"select Cate_ID,Cate_Name from Cate_Info where Cate_ID <> '000' order by Cate_ID"_s),
            (QList<QStringList>{
                {u"001"_s, u"mine"_s}, {u"002"_s, u"出差"_s}, {u"002001"_s, u"b"_s}, {u"002001001"_s, u"locked"_s}}));
        QCOMPARE(Sql_Rows(u"select Code_Title,Cate_ID from Code_Info order by Code_Title"_s),
                 (QList<QStringList>{{u"deep"_s, u"002001001"_s}, {u"my two"_s, u"001"_s}, {u"two"_s, u"002"_s}}));
        QCOMPARE(
            Sql_Rows(
                u"select tags_Name,Gene_Name from Code_Info,tab_tags,tab_Gene where Code_ID = '{1}' and Code_Tags = "
                u"'{2}' and tags_Id = 2 and Gene_Id = Code_ReadDate_gene_Id"_s),
            (QList<QStringList>{{u"work"_s, u"daily"_s}}));
        QCOMPARE(Sql_Rows(u"select Cate_ID,Code_id from tab_VirCate"_s), (QList<QStringList>{{u"002"_s, u"{1}"_s}}));
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file"_s), u"1"_s);
    }

    void A_Source_Is_Raised_Where_It_Can_Be_Written()
    {
        const QString path = Database_Engine::File_Of(m_other);
        Database_Engine::Let_Go(m_other);
        const Ladder_Callbacks callbacks{[](const QString &) { return true; },
                                         [] {
                                         }};
        QVERIFY(!Import_Source(path, callbacks).Is_Copy());
        QVERIFY_EXCEPTION_THROWN(Import_Source(Database_Path(), callbacks), Run_Time_Error);
        if (QFile::setPermissions(path, QFileDevice::ReadOwner) && !QFileInfo(path).isWritable()) {
            const Import_Source copy(path, callbacks);
            QVERIFY(copy.Is_Copy());
            QVERIFY(Test_Db_Conn(copy.Conn_Str()));
        }
        m_program->Write(u"broken.db"_s, QByteArray(8192, 'x'));
        QVERIFY_EXCEPTION_THROWN(Import_Source(m_program->Path(u"broken.db"_s), callbacks), Run_Time_Error);
    }
};

QTEST_GUILESS_MAIN(Test_Transfer)
#include "test_transfer.moc"

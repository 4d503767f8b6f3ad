// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "support/test_program.h"
#include "users/scrambling.h"
#include "views/list_columns.h"
#include "views/list_engine.h"

#include <QSet>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
using Labels = std::array<qint64, 4>;

QString Padded(int number)
{
    return u"%1"_s.arg(number, 3, 10, QLatin1Char('0'));
}

/// `count` documents of a folder, "d001" the oldest.
void Add_Documents(const QString &folder, int count)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (int i = 1; i <= count; ++i) {
            const QString name = u"d"_s + Padded(i);
            Add_Document(folder + name, folder, name,
                         u"Code_Create='2026-01-01 10:%1:%2'"_s.arg(i / 60, 2, 10, QLatin1Char('0'))
                             .arg(i % 60, 2, 10, QLatin1Char('0')));
        }
    });
}
} // namespace

class Test_List_Engine : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::optional<List_Model> m_list;
    QString m_password;

    Page_Info Fill(const QString &folder, int page = 1, bool all = false, const QString &date = {})
    {
        return ShowCodeInfoToList_Ex(folder, *m_list, all, page, date, m_password);
    }
    [[nodiscard]] QStringList Shown(const QString &key = u"Lsv_Code_Info_Title"_s) const
    {
        QStringList texts;
        for (int row = 0; row < m_list->Row_Count(); ++row)
            texts << m_list->Row(row).texts.value(m_list->Column(key));
        return texts;
    }

private slots:
    void init()
    {
        m_program.emplace();
        m_list.emplace();
        m_list->Set_Columns(Captioned_Columns());
        m_password.clear();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        QCOMPARE(m_program->Logged(), QStringList());
        m_list.reset();
        m_program.reset();
    }

    void Pages_Are_Cut_data()
    {
        QTest::addColumn<int>("documents");
        QTest::addColumn<int>("page");
        QTest::addColumn<qint64>("pages");
        QTest::addColumn<bool>("paging");
        QTest::addColumn<QString>("first"); ///< number and title of the first row
        QTest::addColumn<qint64>("shown");
        QTest::addRow("none") << 0 << 1 << qint64(0) << false << QString() << qint64(0);
        QTest::addRow("one") << 1 << 1 << qint64(1) << false << u"1 d001"_s << qint64(1);
        QTest::addRow("45") << 45 << 1 << qint64(1) << false << u"1 d045"_s << qint64(45);
        QTest::addRow("46") << 46 << 1 << qint64(1) << true << u"1 d046"_s << qint64(46);
        QTest::addRow("47, first page") << 47 << 1 << qint64(2) << true << u"1 d047"_s << qint64(46);
        QTest::addRow("47, last page") << 47 << 2 << qint64(2) << true << u"1 d001"_s << qint64(1);
        QTest::addRow("past the end") << 47 << 3 << qint64(2) << true << QString() << qint64(0);
        QTest::addRow("far past the end") << 3 << 1000 << qint64(1) << false << QString() << qint64(0);
    }
    void Pages_Are_Cut()
    {
        QFETCH(int, documents);
        QFETCH(int, page);
        QFETCH(qint64, pages);
        QFETCH(bool, paging);
        QFETCH(QString, first);
        QFETCH(qint64, shown);
        Add_Documents(u"001"_s, documents);
        const Page_Info info = Fill(u"001"_s, page);
        QCOMPARE(info.labels, (Labels{documents, pages, 46, shown}));
        QCOMPARE(info.paging, paging);
        QCOMPARE(qint64(m_list->Row_Count()), shown);
        QCOMPARE(shown == 0 ? QString() : m_list->Row(0).texts.value(0) + u' ' + Shown().value(0), first);
    }

    void Folders_List_What_Belongs_To_Them_data()
    {
        QTest::addColumn<QString>("showLow");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<qint64>("total");
        QTest::addRow("subtree and virtual members")
            << u"TRUE"_s << u"001"_s
            << QStringList({u"in 001"_s, u"in 001001"_s, u"member of 001"_s, u"member of 001001"_s}) << qint64(3);
        QTest::addRow("inner folder") << u"TRUE"_s << u"001001"_s
                                      << QStringList({u"in 001001"_s, u"member of 001001"_s}) << qint64(1);
        QTest::addRow("locked inner folder hidden, still counted")
            << u"TRUE"_s << u"003"_s << QStringList(u"in 003"_s) << qint64(2);
        // The second half of the statement asks for the documents' own folder, so members are those of elsewhere.
        QTest::addRow("folder alone") << u"FALSE"_s << u"001"_s << QStringList(u"in 001"_s) << qint64(1);
        QTest::addRow("folder alone that lends a document")
            << u"FALSE"_s << u"002"_s << QStringList({u"member of 001"_s, u"member of 001001"_s}) << qint64(2);
        QTest::addRow("root") << u"TRUE"_s << u""_s
                              << QStringList({u"in 001"_s, u"in 001001"_s, u"in 003"_s, u"member of 001"_s,
                                              u"member of 001001"_s})
                              << qint64(8);
        QTest::addRow("recycle bin") << u"TRUE"_s << u"000"_s << QStringList(u"thrown away"_s) << qint64(1);
    }
    void Folders_List_What_Belongs_To_Them()
    {
        QFETCH(QString, showLow);
        QFETCH(QString, folder);
        QFETCH(QStringList, titles);
        QFETCH(qint64, total);
        Add_Folder(u"001001"_s, u"inner"_s);
        Add_Folder(u"002"_s, u"lender"_s);
        Add_Folder(u"003"_s, u"open"_s);
        Add_Folder(u"003001"_s, u"locked"_s, 1, Scramble_Text(u"pass"_s));
        Add_Document(u"{1}"_s, u"001"_s, u"in 001"_s);
        Add_Document(u"{2}"_s, u"001001"_s, u"in 001001"_s);
        Add_Document(u"{3}"_s, u"002"_s, u"member of 001"_s);
        Add_Document(u"{4}"_s, u"002"_s, u"member of 001001"_s);
        Add_Document(u"{5}"_s, u"003"_s, u"in 003"_s);
        Add_Document(u"{6}"_s, u"003001"_s, u"in 003001"_s);
        Add_Document(u"{7}"_s, u"000"_s, u"thrown away"_s);
        Add_Document(u"{8}"_s, u"001999"_s, u"lost"_s); // its folder is not there
        Sql_Run(u"insert into tab_VirCate(Cate_ID,Code_id) values ('001','{3}')"_s);
        Sql_Run(u"insert into tab_VirCate(Cate_ID,Code_id) values ('001001','{4}')"_s);
        Config().ShowLow = showLow;
        Config().Cob_OrderBy = u"3"_s;
        const Page_Info info = Fill(folder);
        QCOMPARE(Shown(), titles);
        QCOMPARE(info.labels[Page_Info::Total], total);
    }

    void A_Locked_Folder_Asks_data()
    {
        QTest::addColumn<QString>("known");
        QTest::addColumn<QString>("typed"); ///< "-" where nothing may be asked
        QTest::addColumn<bool>("listed");
        QTest::addColumn<QString>("kept");
        QTest::addRow("right") << u""_s << u"pass"_s << true << u"pass"_s;
        QTest::addRow("known") << u"pass"_s << u"-"_s << true << u"pass"_s;
        QTest::addRow("known no longer, right") << u"old"_s << u"pass"_s << true << u"pass"_s;
        QTest::addRow("wrong") << u"old"_s << u"Pass"_s << false << u"old"_s;
        QTest::addRow("empty") << u""_s << u""_s << false << u""_s;
    }
    void A_Locked_Folder_Asks()
    {
        QFETCH(QString, known);
        QFETCH(QString, typed);
        QFETCH(bool, listed);
        QFETCH(QString, kept);
        Add_Folder(u"002"_s, u"locked"_s, 2, Scramble_Text(u"pass"_s));
        Add_Document(u"{1}"_s, u"002"_s, u"t"_s);
        m_password = known;
        if (typed != u"-")
            m_program->prompts.Expect({}, typed);
        if (typed == u"Pass")
            m_program->prompts.Expect({}, u"ok"_s);
        const Page_Info info = Fill(u"002"_s);
        QCOMPARE(info.labels, (Labels{1, 1, 46, listed ? 1 : 0}));
        QCOMPARE(m_list->Row_Count(), listed ? 1 : 0);
        QCOMPARE(m_password, kept);
    }

    void Orders_Follow_The_Setting_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("expected"); ///< titles in a row
        const char *rows[][2] = {{"1", "abc"}, {"2", "cba"}, {"3", "abc"}, {"4", "cba"},
                                 {"5", "cab"}, {"6", "bac"}, {"7", "bca"}, {"8", "acb"}};
        for (const auto &row : rows)
            QTest::addRow("%s", row[0]) << QString::fromLatin1(row[0]) << QString::fromLatin1(row[1]);
    }
    void Orders_Follow_The_Setting()
    {
        QFETCH(QString, code);
        QFETCH(QString, expected);
        const QString set = u"Code_Create='%1',Code_Keys='%2',Code_Date='%3',Code_Update='%4'"_s;
        Add_Document(u"{1}"_s, u"001"_s, u"a"_s, set.arg(u"2026-01-01"_s, u"k2"_s, u"2020-01-01"_s, u"2026-03-03"_s));
        Add_Document(u"{2}"_s, u"001"_s, u"b"_s, set.arg(u"2026-01-02"_s, u"k3"_s, u"2020-01-03"_s, u"2026-03-01"_s));
        Add_Document(u"{3}"_s, u"001"_s, u"c"_s, set.arg(u"2026-01-03"_s, u"k1"_s, u"2020-01-02"_s, u"2026-03-02"_s));
        Config().Cob_OrderBy = code;
        Fill(u"001"_s);
        QCOMPARE(Shown().join(QString()), expected);
    }

    /// Whatever page is turned to first, the pages together are the list as one page shows it: rows that are equal in
    /// its order are neither left out nor shown twice.
    void Pages_Together_Are_The_List_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("showLow");
        QTest::addColumn<QString>("date"); ///< "-" for a list of a folder
        QTest::addColumn<int>("documents");
        QTest::addRow("root") << u""_s << u"TRUE"_s << u"-"_s << 60;
        QTest::addRow("root, which counts nothing") << u""_s << u"FALSE"_s << u"-"_s << 60;
        QTest::addRow("subtree, members of another folder too") << u"001"_s << u"TRUE"_s << u"-"_s << 50;
        QTest::addRow("folder alone") << u"002"_s << u"FALSE"_s << u"-"_s << 20;
        QTest::addRow("year") << u""_s << u"TRUE"_s << u"2020"_s << 60;
    }
    void Pages_Together_Are_The_List()
    {
        QFETCH(QString, folder);
        QFETCH(QString, showLow);
        QFETCH(QString, date);
        QFETCH(int, documents);
        constexpr int perPage = 7;
        Add_Folder(u"002"_s, u"other"_s);
        for (int i = 0; i < 60; ++i) {
            // Many are alike in every column that a list can be ordered by.
            const QString id = u"{%1}"_s.arg(i * 37 % 60, 2, 10, QLatin1Char('0'));
            Add_Document(
                id, i % 3 == 0 ? u"002"_s : u"001"_s, u"title %1"_s.arg(i % 2),
                u"Code_Create='2020-01-0%1',Code_Date='2020-01-01',Code_Update='2020-02-01',Code_Keys='k'"_s.arg(
                    1 + i % 2));
            if (i % 6 == 0)
                Sql_Run(u"insert into tab_VirCate(Cate_ID,Code_id) values ('001','%1')"_s.arg(id));
            if (i % 5 == 0)
                Sql_Run(u"insert into tab_VirCate(Cate_ID,Code_id) values ('002','%1')"_s.arg(id));
        }
        Config().ShowLow = showLow;
        qint64 last = 1;
        const auto ids = [&](int page) {
            last = Fill(folder, page, date != u"-", date == u"-" ? QString() : date).last_page;
            QStringList found;
            for (int row = 0; row < m_list->Row_Count(); ++row)
                found << m_list->Row(row).tag;
            return found;
        };
        for (int order = 1; order <= 8; ++order) {
            Config().Cob_OrderBy = QString::number(order);
            Config().MAX_RECORD = perPage;
            const QStringList lastPage = ids((documents + perPage - 1) / perPage);
            QStringList pages = ids(1);
            for (int page = 2; page <= last; ++page)
                pages << ids(page);
            QVERIFY(pages.endsWith(lastPage.last()));
            Config().MAX_RECORD = 32767;
            QCOMPARE(pages, ids(1));
            QCOMPARE(pages.size(), documents);
            QCOMPARE(QSet<QString>(pages.begin(), pages.end()).size(), documents);
        }
        Config().MAX_RECORD = perPage;
        const QStringList second = ids(2);
        Sql_Run(u"delete from Code_Info where Code_ID='%1'"_s.arg(second.first()));
        QCOMPARE(ids(2).mid(0, perPage - 1), second.mid(1));
    }

    /// The order of a list is found anew for a change of what it is made of, and for no other one.
    void Changes_Reach_Every_Page_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<bool>("outlived");
        const QString some = u" where Code_ID='{03}'"_s;
        QTest::addRow("reading") << u"update code_info set code_readnum=5,code_readdate='2026-01-01'"_s + some << true;
        QTest::addRow("title") << u"update Code_Info set Code_Title='a first one',code_readnum=5"_s + some << false;
        QTest::addRow("folder") << u"update Code_Info set Cate_ID='000'"_s + some << false;
        QTest::addRow("key") << u"update Code_Info set Code_ID='{99}'"_s + some << false;
        QTest::addRow("row gone") << u"delete from Code_Info"_s + some << false;
        QTest::addRow("row added") << u"insert into Code_Info(Code_ID,Cate_ID,Code_Title) values ('{98}','001','a')"_s
                                   << false;
        QTest::addRow("locked") << u"update Cate_Info set Cate_pass='x' where Cate_ID='001001'"_s << false;
        QTest::addRow("member") << u"insert into tab_VirCate(Cate_ID,Code_id) values ('001','{20}')"_s << false;
        QTest::addRow("log") << u"insert into tab_log(log_text) values ('x')"_s << true;
    }
    void Changes_Reach_Every_Page()
    {
        QFETCH(QString, statement);
        Add_Folder(u"001001"_s, u"below"_s);
        Add_Folder(u"002"_s, u"other"_s);
        for (int i = 0; i <= 20; ++i)
            Add_Document(u"{%1}"_s.arg(i, 2, 10, QLatin1Char('0')),
                         i == 20 ? u"002"_s
                         : i % 2 ? u"001"_s
                                 : u"001001"_s,
                         u"title %1"_s.arg(i % 10));
        Config().Cob_OrderBy = u"3"_s;
        Config().MAX_RECORD = 7;
        const auto pages = [&] {
            QStringList found;
            for (int page = 1; page <= 3; ++page) {
                Fill(u"001"_s, page);
                for (int row = 0; row < m_list->Row_Count(); ++row)
                    found << m_list->Row(row).tag;
            }
            return found;
        };
        const QStringList before = pages();
        Sql_Run(statement);
        const auto connection = Connection_Pool::Get(Database_Engine::File_Of(App().Conn_Str));
        QTEST(connection->Kept().version == connection->Data_Version(), "outlived");
        const QStringList after = pages();
        Database_Engine::Let_Go();
        QCOMPARE(after, pages());
        QTEST(after == before, "outlived");
    }

    void An_Unknown_Order_Is_No_Order()
    {
        Config().Cob_OrderBy = u"9"_s;
        Add_Document(u"{1}"_s, u"001"_s, u"a"_s);
        Fill(u"001"_s);
        // The statement then ends in a bare "order by"; like any failing one it is recorded and lists nothing.
        QCOMPARE(m_list->Row_Count(), 0);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\ShowCodeInfoToList_Ex"_s));
        m_program->Write(u"Error.log"_s, {});
    }

    void Dates_Select_data()
    {
        QTest::addColumn<QString>("date");
        QTest::addColumn<QStringList>("titles");
        QTest::addColumn<qint64>("total");
        QTest::addRow("a day") << u"2020-01-03"_s << QStringList(u"third"_s) << qint64(2);
        QTest::addRow("a day in slashes") << u"2020/01/03"_s << QStringList(u"third"_s) << qint64(2);
        QTest::addRow("a month") << u"2020-01"_s << QStringList({u"fourth"_s, u"third"_s}) << qint64(3);
        QTest::addRow("a year") << u"2021"_s << QStringList(u"next year"_s) << qint64(1);
        QTest::addRow("none") << u"1999-01-01"_s << QStringList() << qint64(0);
        QTest::addRow("all") << u""_s << QStringList({u"fourth"_s, u"next year"_s, u"third"_s}) << qint64(4);
    }
    void Dates_Select()
    {
        QFETCH(QString, date);
        QFETCH(QStringList, titles);
        QFETCH(qint64, total);
        Add_Folder(u"002"_s, u"locked"_s, 2, Scramble_Text(u"pass"_s));
        Add_Document(u"{1}"_s, u"001"_s, u"third"_s, u"Code_Date='2020-01-03'"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"fourth"_s, u"Code_Date='2020-01-04'"_s);
        Add_Document(u"{3}"_s, u"001"_s, u"next year"_s, u"Code_Date='2021-01-03'"_s);
        Add_Document(u"{4}"_s, u"002"_s, u"locked"_s, u"Code_Date='2020-01-03'"_s);
        Config().Cob_OrderBy = u"3"_s;
        const Page_Info info = Fill({}, 1, true, date);
        QCOMPARE(Shown(), titles);
        QCOMPARE(info.labels[Page_Info::Total], total);
    }

    void Columns_Show_Their_Fields()
    {
        Add_Document(
            u"{1}"_s, u"001"_s, u"title"_s,
            u"Code_Color='★★☆☆☆',Code_Done='done',Code_Keys='keys',Code_Author='author',Code_Date='2020-01-03',"
            u"Code_Create='2019-09-09 09:09:09',Code_Update='2021-02-03 04:05:06',Code_Provenance='source',"
            u"Code_Promulgator='issuer',Code_File='f.pdf',Code_Type='PDF',Code_Explain='digest',Code_ReadNum=3,"
            u"Code_ReadDate='2022-02-02 02:02:02',Code_ReadDateNext='2023-03-03',Code_LineColor='255|16711680|True'"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"bare"_s, u"Code_ReadDate='2022-02-02',Code_Update='2020-02-03'"_s);
        for (int type = 0; type <= 3; ++type)
            Sql_Run(u"insert into tab_file(code_id,file_type) values ('{1}',%1)"_s.arg(type));
        Config().Cob_OrderBy = u"8"_s;
        Config().CH_Lsv_ToolTips = u"1"_s;
        Fill(u"001"_s);
        QCOMPARE(m_list->Row(0).texts,
                 QStringList({u"1"_s, u"★★☆☆☆"_s, u"☆☆☆☆☆"_s, u"title"_s, u"Work"_s, u"keys"_s, u"author"_s,
                              u"2020-01-03"_s, u"2021-02-03 04:05:06"_s, u"2"_s, u"source"_s, u"issuer"_s, u"f.pdf"_s,
                              u"PDF"_s, u"digest"_s, u"3"_s, u"2022-02-02 02:02:02"_s, u"2023-03-03"_s}));
        QCOMPARE(m_list->Row(0).tag, u"{1}"_s);
        QCOMPARE(m_list->Row(0).tag2, u"001"_s);
        QCOMPARE(m_list->Row(0).tool_tip, u"digest"_s);
        QCOMPARE(m_list->Row(0).sub_color, QColor(255, 0, 0));
        QCOMPARE(m_list->Row(0).item_color, QColor(0, 0, 255));
        QVERIFY(m_list->Row(0).bold && !m_list->Row(1).bold);
        QCOMPARE(m_list->Row(1).texts, QStringList({u"2"_s, u"☆☆☆☆☆"_s, u"☆☆☆☆☆"_s, u"bare"_s, u"Work"_s, u""_s, u""_s,
                                                    u""_s, u"2020-02-03"_s, u""_s, u""_s, u""_s, u""_s, u""_s, u""_s,
                                                    u"0"_s, u"2022-02-02"_s, u""_s}));
        Config().CH_Lsv_ToolTips = u"0"_s;
        Sql_Run(u"update Code_Info set Code_Title='renamed',Cate_ID='999' where Code_ID='{2}'"_s);
        Refresh_List_Row(*m_list, u"{2}"_s);
        QCOMPARE(m_list->Row(1).texts.mid(0, 5), QStringList({u"2"_s, u"☆☆☆☆☆"_s, u"☆☆☆☆☆"_s, u"renamed"_s, u"--"_s}));
    }

    void A_Condition_Lists_At_Most_So_Many()
    {
        Add_Documents(u"001"_s, 5);
        const auto fill = [&](const QString &where) {
            return ShowCodeInfoToList_Ex_Key(where, *m_list, {}, 1, 3);
        };
        const Page_Info info = fill(u"where Code_Title like 'd%' order by Code_Title desc"_s);
        QCOMPARE(info.labels, (Labels{5, 1, 3, 3}));
        QCOMPARE(info.unlisted, 2);
        QCOMPARE(Shown(), QStringList({u"d005"_s, u"d004"_s, u"d003"_s}));
        QCOMPARE(fill(u"where Code_Title='x'"_s).labels, (Labels{0, 0, 0, 0}));
        QCOMPARE(m_list->Row_Count(), 0);
    }
};

QTEST_MAIN(Test_List_Engine)
#include "test_list_engine.moc"

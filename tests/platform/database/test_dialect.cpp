// SPDX-License-Identifier: GPL-3.0-or-later
#include "database_fixture.h"

#include <QCollator>
#include <QRandomGenerator>
#include <QTest>
#include <memory>

using namespace Qt::StringLiterals;

/// Statements as the system writes them, over one set of rows.
class Test_Dialect : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Database_Fixture::Both_Kinds(); }

    void init()
    {
        const bool same = m_db != nullptr && m_kind == Database_Fixture::Kind_Now();
        if (same && m_unchanged)
            return;
        m_db.reset();
        m_kind = Database_Fixture::Kind_Now();
        m_db = std::make_unique<Database_Fixture>(m_kind);
        Database_Engine::One_Action(m_db->connection, [this] { Fill(); });
    }
    /// Statements that only ask, or fail, leave the rows to the next ones.
    void cleanup()
    {
        const QByteArray function = QTest::currentTestFunction();
        m_unchanged = (function == "Query" || function == "Error") && !QTest::currentTestFailed();
    }
    void cleanupTestCase() { m_db.reset(); }

private:
    void Fill() const
    {
        for (const char *statement : {
                 "insert into Cate_Info(cate_id,Cate_Name,Code_Num,Order_Id,Cate_Exp,Cate_pass) "
                 "values('000','回收站',0,999,'1','')",
                 " insert into cate_info(cate_id,cate_name,Order_Id,Cate_Memo,Cate_Exp,Cate_Pass) values "
                 "('001','Books',2,' ','1','')",
                 "insert into cate_info(cate_id,cate_name,Order_Id,Cate_pass) values ('001001','It''s É',1,'x')",
                 "insert into cate_info(cate_id,cate_name,Order_Id,Cate_pass) values ('002','books 2',1,'')",
                 "insert into Code_Info(Code_ID,Cate_ID,Code_Title,Code_Content,Code_Date,Code_ReadNum,Code_Tags) "
                 "values ('{A-1}','001','中文 Title','Hello WORLD ünï','2023-05-01',3,'{12}{7}')",
                 "insert into Code_Info(Code_ID,Cate_ID,Code_Title,Code_Content,Code_Date,Code_Tags) "
                 "values ('{a-2}','001001','阿',NULL,#2023-05-01 10:20:30#,'{7}')",
                 "insert into Code_Info(Code_ID,Cate_ID,Code_Title,Code_Content,Code_Date) "
                 "values ('{B-3}','000001','Émile','x','2024/1/5')",
                 "insert into tab_VirCate(code_id,cate_id) values ('{B-3}','001')",
                 "insert into tab_file(code_id,file_name,file_type,order_id) values ('{A-1}','b.TXT',0,2)",
                 "insert into tab_file(code_id,file_name,file_type,order_id) values ('{A-1}','a.txt',1,1)",
                 "insert into tab_file(code_id,file_name,file_type) values ('lost','lost.txt',0)",
                 "insert into tab_file(code_id,file_name,file_type) values ('icon','i.ico',3)",
             }) {
            m_db->Run(QString::fromUtf8(statement));
        }
    }

private slots:

    /// Texts of ASCII characters are compared without the dictionary and must stand where it puts them.
    void The_Dictionary_Orders_Texts()
    {
        QRandomGenerator random(5);
        QStringList titles{u"中文"_s, u"阿"_s, u"zebra"_s, u"Émile"_s, u""_s, u"{A-1}"_s, u"{a-2}"_s};
        for (int i = 0; i < 300; ++i) {
            QString title;
            for (int length = 1 + random.bounded(4); length > 0; --length)
                title += QChar(u' ' + random.bounded(i % 3 == 0 ? 95 : 20) + (i % 3 == 1 ? 45 : 0));
            titles << title;
        }
        m_db->Run(u"delete from tab_file"_s);
        Recordset rows;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(u"select * from tab_file"_s, m_db->connection);
        for (const QString &title : titles) {
            rows.AddNew();
            rows[u"file_name"_s].Set(title);
            rows.Update();
        }
        QCollator dictionary(QLocale(QLocale::Chinese, QLocale::China));
        dictionary.setCaseSensitivity(Qt::CaseInsensitive);
        Recordset sorted;
        sorted.Open(u"select file_name from tab_file order by file_name"_s, m_db->connection);
        QString last = sorted[0].Text();
        for (sorted.MoveNext(); !sorted.Eof(); sorted.MoveNext()) {
            QVERIFY2(dictionary.compare(last, sorted[0].Text()) <= 0,
                     qPrintable(last + u" before "_s + sorted[0].Text()));
            last = sorted[0].Text();
        }
    }

    void Query_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("rows");
        const auto row = [](const char *statement, const char *rows) {
            QTest::addRow("%s", statement) << QString::fromUtf8(statement) << QString::fromUtf8(rows);
        };
        row("SELECT top 1 Cate_id  FROM Cate_Info where Cate_ID = '000'", "000");
        row("Select cate_ID From Cate_Info  Order by len(cate_id),order_id asc ", "002;001;000;001001");
        row("select cate_id from cate_Info where cate_id like '001[0-9][0-9][0-9]'  order by cate_id asc ", "001001");
        row("select cate_id from cate_Info where cate_id not like '000%' order by cate_id desc", "002;001001;001");
        row("select cate_id from cate_Info where cate_id like '[!0]%'", "");
        row("select cate_id from cate_Info where cate_name like 'b_OKS%' order by cate_id", "001;002");
        row("select cate_id from cate_Info where cate_name = 'BOOKS'", "001");
        row("select cate_id from cate_Info where cate_name = 'it''S é'", "001001");
        row("select cate_id from cate_Info where cate_name = \"BOOKS\"", "001");
        row("select count(*) from Cate_Info where cate_id <> \"\"", "4");
        row("Select count(*)  From Code_Info where code_date = #2023-05-01# ", "1");
        row("Select count(*)  From Code_Info where code_date = '2023/5/1' ", "1");
        row("Select count(*)  From Code_Info where code_date like '2023%' ", "2");
        row("Select count(*)  From Code_Info where code_date like '2023-05%' ", "2");
        row("Select count(*)  From Code_Info where code_date like '%-05 %'", "0");
        row("Select count(*)  From Code_Info where code_date like '%-05-01%'", "2");
        row("Select count(*)  From Code_Info where code_date not like '2023%' ", "1");
        row("Select count(*),Code_date  From Code_Info where code_date like '2023%' group by Code_date Order by "
            "Code_date asc",
            "1|2023-05-01;1|2023-05-01 10:20:30");
        row("select code_id from code_info where code_date >= #2023-05-01 00:00:00# and code_date<= #2023-05-01 "
            "23:59:59# order by code_id",
            "{A-1};{a-2}");
        row("Select Code_ID From Code_Info WHERE ( Cate_ID = '001'    or Cate_ID = '001001'   ) and ( "
            "instr(1,lcase(Code_Content),lcase('wORLD'),0)<>0 ) order by Code_ID ",
            "{A-1}");
        row("Select Code_ID From Code_Info WHERE Cate_ID like '%'    and ( instr(1,lcase(Code_Title),lcase('ÉM'),0)<>0 "
            " or ( instr(1,lcase(Code_Content),lcase('ÜN'),0)<>0 )) order by Code_ID ",
            "{A-1};{B-3}");
        row("Select instr(1,Code_Content,'WORLD',0), instr(Code_Content,'world'), instr(8,Code_Content,'World',1) from "
            "code_info where code_id = '{a-1}'",
            "7|7|0");
        row("select code_id from code_info where Code_Tags like '%{7}%' order by code_id", "{A-1};{a-2}");
        row("Select top 1 Code_Title From Code_Info ,Cate_Info  Where Code_Info.Cate_ID like '001%'  and "
            "Code_Info.Cate_id = Cate_Info.Cate_id   and Cate_Info.Cate_pass = '' order by  Code_Update DESC union "
            "select Code_Title  from code_info ,tab_VirCate where code_info.code_id = tab_VirCate.code_id and "
            "tab_VirCate.cate_id like '001%'  order by  Code_Title DESC",
            "Émile;中文 Title");
        row("Select top 9 Code_Info.Cate_ID From Code_Info inner join Cate_Info on   Code_Info.Cate_id = "
            "Cate_Info.Cate_id  left join tab_VirCate on code_info.code_id = tab_VirCate.code_id  Where "
            "Code_Info.Cate_ID = '001'   order by  Code_Title",
            "001");
        row("select a.cate_id from (cate_info a inner join code_info b on a.cate_id=b.cate_id) left join tab_file c on "
            "b.code_id = c.code_id order by c.order_id",
            "001001;001;001");
        row("SELECT count(*)  From tab_file WHERE (file_type = 0 or file_type = 1) and code_id='{a-1}'", "2");
        row("select code_title from code_info order by code_title", "阿;中文 Title;Émile");
        row("select distinct left(cate_id,3) from cate_info order by 1", "000;001;002");
        row("select right(cate_id,3),mid(cate_name,2,2),ucase(cate_name),trim('  a '),len(cate_name) from cate_info "
            "where cate_id='001001'",
            "001|t'|IT'S É|a|6");
        row("select format(code_date,'yyyy-mm-dd HH:MM:SS'),format(code_date,'YYYYMM') from code_info where "
            "code_id='{a-2}'",
            "2023-05-01 10:20:30|202305");
        row("select iif(cate_pass='',cate_id & '-' & code_num,'locked') as shown from cate_info where order_id between "
            "1 and 2 order by shown",
            "001-0;002-0;locked");
        row("select max(order_id),min(cate_id),sum(order_id),avg(order_id) from cate_info where order_id<10",
            "2|001|4|1.33333333333333");
        row("select cate_id from cate_info c where exists (select * from code_info where code_info.cate_id = "
            "c.cate_id) order by cate_id",
            "001;001001");
        row("select left(code_id,2), count(*) from code_info group by left(code_id,2) having count(*) > 1", "{A|2");
        row("select cate_id from cate_info where cate_memo is null and isnull(cate_memo) and cate_id in "
            "('001','002','000') order by cate_id",
            "000;002");
        row("select 1+2*3, 7 mod 4, 7\\2, 3/2, -2, val('12ab'), cstr(5)", "7|3|3|1.5|-2|12|5");
    }
    void Query()
    {
        QFETCH(QString, statement);
        QFETCH(QString, rows);
        QCOMPARE(m_db->Rows(statement), rows);
        QCOMPARE(m_db->Rows(statement), rows); // again, from the kept plan
    }

    void Change_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<QString>("check");
        QTest::addColumn<QString>("rows");
        const auto row = [](const char *statement, const char *check, const char *rows) {
            QTest::addRow("%s", statement)
                << QString::fromUtf8(statement) << QString::fromUtf8(check) << QString::fromUtf8(rows);
        };
        row("delete Code_id from tab_file where tab_file.file_type <> 3 and tab_file.code_id not in (select "
            "Code_Info.code_id from Code_Info)",
            "select file_name from tab_file order by file_id", "b.TXT;a.txt;i.ico");
        row("delete Code_id from Code_Info where Code_Info.Cate_ID not in (select Cate_Info.Cate_ID from Cate_Info)",
            "select code_id from code_info order by code_id", "{A-1};{a-2}");
        row(" Delete Cate_Info from Cate_Info where Cate_Id  like '00[1-2]%'", "select cate_id from cate_info", "000");
        row("delete * from tab_file", "select count(*) from tab_file", "0");
        row("delete from tab_file where file_id=2;", "select count(*) from tab_file", "3");
        row("update Cate_Info set order_id=right(cate_id,3) where cate_id <> \"\"",
            "select order_id from cate_info order by cate_id", "0;1;1;2");
        row("update Cate_Info set  Cate_Exp=0 Where Cate_id='001'",
            "select cate_exp from cate_info where cate_id='001'", "0");
        row("update Code_Info set Code_Date=format(Code_Date,'YYYY-MM-DD') where code_id='{a-2}'",
            "select code_date from code_info where code_id='{a-2}'", "2023-05-01");
        row("update code_info set code_readnum = 4 ,Code_ReadDateNext = '2026-11-22 08:05:00' , Code_ReadDate_Sta = '' "
            "where Code_ID='{A-1}'",
            "select code_readnum,Code_ReadDateNext from code_info where code_id='{a-1}'", "4|2026-11-22 08:05:00");
        row("update code_info set code_content = code_title, code_title = null where code_id='?'",
            "select count(*) from code_info", "3");
        row("insert into tab_VirCate (Cate_ID,Code_id) select cate_id,code_id from code_info where cate_id like '001%'",
            "select count(*) from tab_vircate", "3");
        row("insert into tab_gene(gene_id,gene_name,gene_num) values (7,12,'1.5')",
            "select gene_id,gene_name,gene_num from tab_gene", "7|12|1.5");
        row("ALTER TABLE tab_file Add COLUMN file_infor TEXT(255),file_txt memo ",
            "select top 1 file_infor,file_txt from tab_file", "~|~");
        row("ALTER TABLE Code_Info Add COLUMN Author TEXT(250), [Code_Create] DateTime DEFAULT Now() NOT NULL  ",
            "select count(*) from code_info where code_create is not null and author is null", "3");
        row("ALTER TABLE Code_Info DROP COLUMN Class_ID    ", "select count(*) from code_info", "3");
        row("ALTER TABLE tab_VirCate DROP COLUMN code_id", "select cate_id from tab_vircate", "001");
        row("ALTER TABLE tab_file ALTER COLUMN order_id TEXT(9)", "select order_id from tab_file", "2;1;~;~");
        row("create table s (a AutoIncrement, n Text(5) PRIMARY KEY, c Long DEFAULT 1)", "select count(*) from s", "0");
        row("create table s (a AutoIncrement, b Long, n Text(5), PRIMARY KEY (b, n))", "select count(*) from s", "0");
    }
    void Change()
    {
        QFETCH(QString, statement);
        QFETCH(QString, check);
        QFETCH(QString, rows);
        m_db->Run(statement);
        QCOMPARE(m_db->Rows(check), rows);
    }

    void Error_data()
    {
        QTest::addColumn<QString>("statement");
        QTest::addColumn<quint32>("number");
        QTest::addColumn<Failure>("failure");
        const auto row = [](const char *statement, quint32 number, Failure failure) {
            QTest::addRow("%s", statement) << QString::fromUtf8(statement) << number << failure;
        };
        row("select * from nothing", 0x80040E37, Failure::Missing_Table);
        row("select * from sqlite_schema", 0x80040E37, Failure::Missing_Table);
        row("ALTER TABLE nothing Add COLUMN a Long", 0x80040E37, Failure::Missing_Table);
        row("select nothing from cate_info", 0x80040E10, Failure::Missing_Column);
        row("select \"cate_id\".x from cate_info", 0x80040E14, Failure::Syntax);
        row("update cate_info set nothing = 1", 0x80040E10, Failure::Missing_Column);
        row("delete nothing from cate_info", 0x80040E10, Failure::Missing_Column);
        row("select cate_id from cate_info where and cate_pass = ''", 0x80040E14, Failure::Syntax);
        row("select cate_id from cate_info, code_info", 0x80040E14, Failure::Syntax);
        row("delete from cate_info; delete from code_info", 0x80040E14, Failure::Syntax);
        row("delete from cate_info;;", 0x80040E14, Failure::Syntax);
        row("select 'open from cate_info", 0x80040E14, Failure::Syntax);
        row("", 0x80040E14, Failure::Syntax);
        row("pragma user_version", 0x80040E14, Failure::Syntax);
        row("select load_extension('x')", 0x80040E14, Failure::Syntax);
        row("insert into cate_info(cate_id,cate_exp) values ('9','12')", 0x80040E57, Failure::Too_Long);
        row("update cate_info set cate_exp = cate_name where cate_id = '001'", 0x80040E57, Failure::Too_Long);
        row("insert into cate_info(cate_id,order_id) values ('9','abc')", 0x80040E07, Failure::Type_Mismatch);
        row("insert into cate_info(cate_id,order_id) values ('9',3000000000)", 0x80040E07, Failure::Type_Mismatch);
        row("update code_info set code_date = 'soon'", 0x80040E07, Failure::Type_Mismatch);
        row("select * from code_info where code_date = 'soon'", 0x80040E07, Failure::Type_Mismatch);
        row("insert into cate_info(cate_id) values ('001')", 0x80004005, Failure::Duplicate);
        row("insert into code_info(code_id) values ('new')", 0x80004005, Failure::Null_Value);
        row("insert into cate_info(cate_id) values ('1','2')", 0x80040E14, Failure::Syntax);
    }
    void Error()
    {
        QFETCH(QString, statement);
        QFETCH(quint32, number);
        QFETCH(Failure, failure);
        const QString before = m_db->Rows(u"select * from cate_info order by cate_id"_s);
        try {
            m_db->Run(statement);
            QFAIL("no error");
        } catch (const Run_Time_Error &error) {
            QCOMPARE(QString::number(static_cast<quint32>(error.number), 16), QString::number(number, 16));
            QVERIFY2(error.failure == failure, error.what());
            QVERIFY(!error.description.isEmpty());
        }
        QCOMPARE(m_db->Rows(u"select * from cate_info order by cate_id"_s), before);
    }

    /// A search over thousands of ticked folders is one long chain of "or".
    void Long_Chain()
    {
        QString where = u" WHERE ( Cate_ID = '001'   "_s;
        for (int i = 0; i < 5000; ++i) {
            where += u" or Cate_ID = '%1'   "_s.arg(i, 6, 10, QChar(u'0'));
        }
        const QString select = u"Select Code_ID From Code_Info "_s;
        QCOMPARE(m_db->Rows(select + where + u") order by Code_ID"_s), u"{A-1};{a-2};{B-3}"_s);
        QCOMPARE(m_db->Rows(select + where.replace(u"Cate_ID ="_s, u"Cate_ID <>"_s) + u") order by Code_ID"_s),
                 u"{A-1};{a-2};{B-3}"_s);
    }

    void Short_Dates_Follow_The_Separator()
    {
        Database_Engine::Set_Date_Separator(u'/');
        const QString like =
            m_db->Rows(u"select code_date from code_info where code_date like '2023/05%' order by code_date"_s);
        const QString other = m_db->Rows(u"select count(*) from code_info where code_date like '2023-05%'"_s);
        Database_Engine::Set_Date_Separator(u'-');
        QCOMPARE(like, u"2023/05/01;2023/05/01 10:20:30"_s);
        QCOMPARE(other, u"0"_s);
    }

private:
    std::unique_ptr<Database_Fixture> m_db;
    Database_Fixture::Kind m_kind = Database_Fixture::Kind::File;
    bool m_unchanged = false;
};

QTEST_GUILESS_MAIN(Test_Dialect)
#include "test_dialect.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "database_fixture.h"
#include "support/error_number.h"

#include <QTest>
#include <memory>

using namespace Qt::StringLiterals;

class Test_Recordset : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase_data() { Database_Fixture::Both_Kinds(); }

    void init() { m_db = std::make_unique<Database_Fixture>(Database_Fixture::Kind_Now()); }
    void cleanup() { m_db.reset(); }

    void New_Row_Has_Its_Number_And_Defaults()
    {
        Recordset rows = Open(u"select * from tab_file where code_id = 'none'"_s);
        QVERIFY(rows.Bof() && rows.Eof());
        rows.AddNew();
        rows[u"CODE_ID"_s].Set(u"doc"_s);
        rows[u"file_date"_s].Set(QDateTime(QDate(2026, 11, 22), QTime(0, 0)));
        rows[u"order_id"_s].Set(3.0);
        rows.Update();
        QCOMPARE(rows[u"file_id"_s].Value(), QVariant(1));
        QCOMPARE(rows[u"file_date"_s].Text(), u"2026-11-22"_s);
        QCOMPARE(rows[u"file_date"_s].Value().toDateTime(), QDateTime(QDate(2026, 11, 22), QTime(0, 0)));
        QCOMPARE(rows[u"order_id"_s].Value().typeId(), static_cast<int>(QMetaType::Int));
        rows[u"file_name"_s].Set(u"changed"_s);
        QCOMPARE(rows[u"file_name"_s].Text(), u"changed"_s);
        rows.CancelUpdate();
        QVERIFY(rows[u"file_name"_s].Is_Null());
        QCOMPARE(rows.RecordCount(), 1);
        QCOMPARE(m_db->Rows(u"select file_id,code_id,order_id from tab_file"_s), u"1|doc|3"_s);
    }

    void Moves()
    {
        Fill_Files(5);
        Recordset rows = Open(u"select file_id from tab_file order by file_id"_s);
        rows.Move(3);
        QCOMPARE(rows[0].Number(), 4);
        rows.MovePrevious();
        QCOMPARE(rows[0].Number(), 3);
        rows.MoveLast();
        QCOMPARE(rows[0].Number(), 5);
        rows.Move(7);
        QVERIFY(rows.Eof());
        QCOMPARE(Number_Of_Error([&] { static_cast<void>(rows[0].Value()); }), 3021);
        QCOMPARE(Number_Of_Error([&] { rows.MoveNext(); }), 3021);
        rows.Move(-9);
        QVERIFY(rows.Bof());
        rows.MoveFirst();
        rows.Delete();
        QCOMPARE(Number_Of_Error([&] { static_cast<void>(rows[0].Value()); }), 3021);
        rows.MoveNext();
        QCOMPARE(rows[0].Number(), 2);
        QCOMPARE(rows.RecordCount(), 4);
        QCOMPARE(Number_Of_Error([&] { static_cast<void>(rows[u"nothing"_s]); }), 3265);
    }

    /// A long walk whose body writes the table that it reads, and changes tables beside it.
    void Walk_And_Write()
    {
        Fill_Files(300);
        Recordset rows = Open(u"select file_id,order_id from tab_file order by file_id"_s);
        int walked = 0;
        for (; !rows.Eof(); rows.MoveNext(), ++walked) {
            if (walked == 10) {
                m_db->Run(u"create table beside (a Long)"_s);
            }
            m_db->Run(u"insert into tab_file(code_id,order_id) values ('x',1)"_s);
            rows[u"order_id"_s].Set(walked);
            rows.Update();
            if (walked > 20) {
                break;
            }
        }
        while (!rows.Eof()) {
            rows.MoveNext();
            ++walked;
        }
        QCOMPARE(walked, 300);
        QCOMPARE(m_db->Rows(u"select count(*) from tab_file where code_id = 'x'"_s), u"22"_s);
        QCOMPARE(m_db->Rows(u"select order_id from tab_file where file_id = 5"_s), u"4"_s);
    }

    void Batch_Is_All_Or_None()
    {
        const auto fill = [&](Recordset &rows, const QString &second) {
            for (const QString &id : {u"001"_s, second}) {
                rows.AddNew();
                rows[u"cate_id"_s].Set(id);
                rows.Update();
            }
        };
        Recordset rows = Open(u"select * from cate_info"_s, Lock_Type::Batch_Optimistic);
        fill(rows, u"002"_s);
        QCOMPARE(m_db->Rows(u"select count(*) from cate_info"_s), u"0"_s);
        rows.UpdateBatch();
        QCOMPARE(m_db->Rows(u"select cate_id from cate_info order by 1"_s), u"001;002"_s);
        rows.Close();
        Recordset bad = Open(u"select * from cate_info"_s, Lock_Type::Batch_Optimistic);
        fill(bad, u"001"_s);
        QCOMPARE(Number_Of_Error([&] { bad.UpdateBatch(); }), Error_Number::Db_Failed);
        bad.Close();
        Recordset discarded = Open(u"select * from cate_info"_s, Lock_Type::Batch_Optimistic);
        fill(discarded, u"003"_s);
        discarded.Close();
        QCOMPARE(m_db->Rows(u"select cate_id from cate_info order by 1"_s), u"001;002"_s);
    }

    void Chunks()
    {
        QByteArray content(100000, '\0');
        for (qsizetype i = 0; i < content.size(); ++i) {
            content[i] = static_cast<char>(i * 7);
        }
        Recordset rows = Open(u"select file_cont from tab_file"_s);
        rows.AddNew();
        for (qsizetype at = 0; at < content.size(); at += 30000) {
            rows[0].AppendChunk(content.mid(at, 30000));
        }
        rows.Update();
        Recordset read = Open(u"select file_cont from tab_file"_s, Lock_Type::Read_Only);
        QByteArray got;
        for (QByteArray chunk = read[0].GetChunk(4096); !chunk.isEmpty(); chunk = read[0].GetChunk(4096)) {
            got += chunk;
        }
        QCOMPARE(got, content);
        rows[0].AppendChunk("new");
        rows.Update();
        QCOMPARE(rows[0].Bytes(), QByteArray("new"));
    }

    /// No sign of a text means anything to what carries it.
    void Texts_Of_Any_Signs()
    {
        const QStringList texts{u"end\\"_s, u"?{fn x}? $1 $$ $f$"_s, u"'\"`; -- /*"_s, u"a\r\nb\tc"_s, u"😀é中"_s,
                                u"\\x41"_s};
        for (const QString &text : texts) {
            m_db->Run(u"delete from tab_file"_s);
            Recordset rows = Open(u"select * from tab_file"_s);
            rows.AddNew();
            rows[u"file_name"_s].Set(text);
            rows.Update();
            QCOMPARE(rows[u"file_name"_s].Text(), text);
            m_db->Run(u"insert into tab_file(file_name) values ('%1')"_s.arg(QString(text).replace(u"'"_s, u"''"_s)));
            QCOMPARE(m_db->Rows(u"select distinct file_name from tab_file"_s), text);
            QCOMPARE(m_db->Rows(u"select max(len(file_name)) from tab_file"_s), QString::number(text.size()));
        }
    }

    void Defined_Sizes_And_Widening()
    {
        m_db->Run(u"insert into tab_file(code_id,file_name) values ('a','name')"_s);
        Recordset rows = Open(u"select code_id,file_name,order_id,file_date,file_cont from tab_file"_s);
        const QList<qint32> sizes{38, 50, 4, 8, 2147483647};
        for (int i = 0; i < sizes.size(); ++i) {
            QCOMPARE(rows[i].Defined_Size(), sizes[i]);
        }
        const QString tooLong(51, u'x');
        QCOMPARE(Number_Of_Error([&] { rows[u"file_name"_s].Set(tooLong); }), Error_Number::Db_Field_Value);
        QCOMPARE(Number_Of_Error([&] { rows[u"file_date"_s].Set(u"soon"_s); }), Error_Number::Db_Field_Value);
        rows.Close();
        m_db->Run(u"ALTER TABLE tab_file ALTER COLUMN file_name TEXT(255) "_s);
        Recordset wide = Open(u"select top 1 file_name from tab_file"_s);
        QCOMPARE(wide[0].Defined_Size(), 255);
        QCOMPARE(wide[0].Text(), u"name"_s);
        wide[0].Set(tooLong);
        wide.Update();
        QCOMPARE(m_db->Rows(u"select file_name from tab_file"_s), tooLong);
    }

    void Names_Of_Columns()
    {
        Recordset rows = Open(u"select count(*), Code_Info.Code_ID as shown, code_info.CATE_ID, 1 from code_info group "
                              "by code_id, cate_id"_s,
                              Lock_Type::Read_Only);
        QStringList names;
        for (int i = 0; i < rows.Field_Count(); ++i) {
            names.append(rows[i].Name());
        }
        QCOMPARE(names.join(u','), u"Expr1000,shown,Cate_ID,Expr1001"_s);
        QCOMPARE(Number_Of_Error([&] { rows.AddNew(); }), 3251);
    }

    /// A vanished row is reported, and a failed row stays pending so that nothing typed is lost.
    void Failed_Update_Keeps_The_Pending_Row()
    {
        m_db->Run(u"insert into cate_info(cate_id) values ('001')"_s);
        Recordset rows = Open(u"select * from cate_info"_s);
        rows.AddNew();
        rows[u"cate_id"_s].Set(u"001"_s);
        rows[u"cate_name"_s].Set(u"typed"_s);
        QCOMPARE(Number_Of_Error([&] { rows.Update(); }), Error_Number::Db_Failed);
        rows[u"cate_id"_s].Set(u"002"_s);
        rows.Update();
        QCOMPARE(m_db->Rows(u"select cate_name from cate_info where cate_id='002'"_s), u"typed"_s);
        m_db->Run(u"delete from cate_info where cate_id='002'"_s);
        rows[u"cate_name"_s].Set(u"late"_s);
        QVERIFY(Number_Of_Error([&] { rows.Update(); }) != 0);
    }

    /// "É" and "é" are one key, whichever way they are written and compared; the file's own index tells them apart.
    void Keys_Know_No_Case_In_Any_Script()
    {
        const auto folders = [&] {
            return m_db->Rows(u"select cate_id from cate_info order by cate_id"_s);
        };
        const QString insert = u"insert into cate_info(cate_id) values ('%1')"_s;
        m_db->Run(insert.arg(u"É"_s));
        m_db->Run(insert.arg(u"ü"_s));
        m_db->Run(u"insert into code_info(code_id,cate_id,code_title) values ('x','é','t')"_s);
        QCOMPARE(Number_Of_Error([&] { m_db->Run(insert.arg(u"é"_s)); }), Error_Number::Db_Failed);
        QCOMPARE(Number_Of_Error([&] { m_db->Run(u"update cate_info set cate_id='é' where cate_id='ü'"_s); }),
                 Error_Number::Db_Failed);
        Recordset rows = Open(u"select * from cate_info"_s);
        rows.AddNew();
        rows[u"cate_id"_s].Set(u"é"_s);
        QCOMPARE(Number_Of_Error([&] { rows.Update(); }), Error_Number::Db_Failed);
        QCOMPARE(folders(), u"É;ü"_s);
        QCOMPARE(m_db->Rows(u"select code_id from code_info,cate_info where code_info.cate_id = cate_info.cate_id"_s),
                 u"x"_s);
        QCOMPARE(m_db->Rows(u"select code_id from code_info where cate_id not in (select cate_id from cate_info)"_s),
                 QString());
        m_db->Run(u"update cate_info set cate_id='é' where cate_id='É'"_s);
        QCOMPARE(folders(), u"é;ü"_s);
    }

    /// What a search tells ahead are rows of its result, in the result's order; the first news are of its front.
    void Rows_Told_Ahead_Stand_In_Order()
    {
        Database_Engine::One_Action(m_db->connection, [&] {
            for (int i = 0; i < 5000; ++i) {
                const QString id = QString::number(10000 + i * 7919 % 5000);
                m_db->Run(u"insert into code_info(code_id,code_title,code_content) values ('%1','t','%2')"_s.arg(
                    id, i % 3 == 0 ? u"a Key here"_s : u"nothing"_s));
            }
        });
        QList<QStringList> told;
        Recordset rows;
        const auto ids = [](Recordset &of) {
            QStringList all;
            for (; !of.Eof(); of.MoveNext()) {
                all << of[0].Text();
            }
            return all;
        };
        rows.Found_So_Far = [&](Recordset &found) {
            told << ids(found);
        };
        rows.Open(
            u"select code_id from code_info where instr(1,lcase(code_content),lcase('key'),0)<>0 order by code_id"_s,
            m_db->connection);
        const QStringList all = ids(rows);
        QCOMPARE(all.size(), 1667);
        if (Database_Fixture::Kind_Now() == Database_Fixture::Kind::Server)
            return; // it has all at once
        QVERIFY(!told.isEmpty());
        QCOMPARE(told.first(), all.mid(0, told.first().size()));
        for (const QStringList &some : std::as_const(told)) {
            QVERIFY(std::is_sorted(some.begin(), some.end()));
            QVERIFY(QSet<QString>(all.begin(), all.end()).contains(QSet<QString>(some.begin(), some.end())));
        }
    }

    void Open_Recordsets_Outlive_The_Kept_Connection()
    {
        Fill_Files(200);
        Recordset rows = Open(u"select file_id from tab_file order by file_id"_s, Lock_Type::Read_Only);
        Database_Engine::Let_Go(m_db->connection);
        qint64 sum = 0;
        for (; !rows.Eof(); rows.MoveNext()) {
            sum += rows[0].Number();
        }
        QCOMPARE(sum, 200 * 201 / 2);
    }

private:
    [[nodiscard]] Recordset Open(const QString &statement, Lock_Type lock = Lock_Type::Optimistic) const
    {
        Recordset rows;
        rows.CursorType = Cursor_Type::Keyset;
        rows.LockType = lock;
        rows.Open(statement, m_db->connection);
        return rows;
    }
    void Fill_Files(int count) const
    {
        Database_Engine::One_Action(m_db->connection, [&] {
            for (int i = 1; i <= count; ++i) {
                m_db->Run(u"insert into tab_file(code_id,order_id) values ('doc',%1)"_s.arg(i));
            }
        });
    }

    std::unique_ptr<Database_Fixture> m_db;
};

QTEST_GUILESS_MAIN(Test_Recordset)
#include "test_recordset.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_deletion.h"
#include "documents/html_pictures.h"
#include "platform/database/recordset.h"
#include "support/test_program.h"

#include <QFile>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Document_Deletion : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    static Deletion Delete(const QStringList &ids)
    {
        return Ask_And_Delete(ids, Asked_In::Form, [](const QString &id, bool) { return id != u"{kept}"; });
    }
    static QStringList Column(const QString &statement)
    {
        QStringList cells;
        for (const QStringList &row : Sql_Rows(statement))
            cells << row.value(0);
        return cells;
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Document(u"{a}"_s, u"001"_s, u"It is"_s);
        Add_Document(u"{b}"_s, u"001"_s, u"Bee"_s);
        Add_Document(u"{x}"_s, u"000"_s, u"Ex"_s);
        Add_Document(u"{y}"_s, u"000"_s, u"Why"_s);
        Add_Document(u"{kept}"_s, u"001"_s, u"Kept"_s);
        for (const QString &id : {u"{a}"_s, u"{x}"_s}) {
            Sql_Run(u"insert into tab_file(code_id,file_name) values ('%1','f')"_s.arg(id));
            Sql_Run(u"insert into tab_tag(code_id,tag_name) values ('%1','t')"_s.arg(id));
        }
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Each_Case_Has_Its_Question_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("left");
        QTest::addColumn<QStringList>("inBin");
        QTest::addColumn<QString>("status");
        const QStringList all{u"{a}"_s, u"{b}"_s, u"{kept}"_s, u"{x}"_s, u"{y}"_s};
        const QStringList bin{u"{x}"_s, u"{y}"_s};
        QTest::addRow("one") << QStringList(u"{a}"_s) << u"确实要把“It is”放入回收站吗？"_s << u"yes"_s << all
                             << QStringList({u"{a}"_s, u"{x}"_s, u"{y}"_s}) << u"It is 成功放入 回收站。"_s;
        QTest::addRow("one, no") << QStringList(u"{a}"_s) << u"确实要把“It is”放入回收站吗？"_s << u"no"_s << all << bin
                                 << u""_s;
        QTest::addRow("one in the bin") << QStringList(u"{x}"_s) << u"确实要删除“Ex”吗？"_s << u"yes"_s
                                        << QStringList({u"{a}"_s, u"{b}"_s, u"{kept}"_s, u"{y}"_s})
                                        << QStringList(u"{y}"_s) << u"Ex 删除成功。"_s;
        QTest::addRow("several") << QStringList({u"{a}"_s, u"{b}"_s}) << u"确实要把这 2 项放入回收站吗？"_s << u"yes"_s
                                 << all << QStringList({u"{a}"_s, u"{b}"_s, u"{x}"_s, u"{y}"_s})
                                 << u"Bee 成功放入 回收站。"_s;
        QTest::addRow("several in the bin")
            << bin << u"确实要删除这 2 项资料吗？"_s << u"yes"_s << QStringList({u"{a}"_s, u"{b}"_s, u"{kept}"_s})
            << QStringList() << u"Why 删除成功。"_s;
        QTest::addRow("some in the bin") << QStringList({u"{x}"_s, u"{b}"_s}) << u"确实要把这 2 项放入回收站吗？"_s
                                         << u"yes"_s << all << QStringList({u"{b}"_s, u"{x}"_s, u"{y}"_s})
                                         << u"Bee 成功放入 回收站。"_s;
        QTest::addRow("one must stay") << QStringList({u"{kept}"_s, u"{b}"_s}) << u"确实要把这 2 项放入回收站吗？"_s
                                       << u"yes"_s << all << QStringList({u"{b}"_s, u"{x}"_s, u"{y}"_s})
                                       << u"Bee 成功放入 回收站。"_s;
    }
    void Each_Case_Has_Its_Question()
    {
        QFETCH(QStringList, ids);
        QFETCH(QString, question);
        QFETCH(QString, answer);
        QFETCH(QStringList, left);
        QFETCH(QStringList, inBin);
        QFETCH(QString, status);
        m_program->prompts.Expect(question, answer);
        QCOMPARE(Delete(ids).status, status);
        QCOMPARE(Column(u"select Code_ID from Code_Info order by Code_ID"_s), left);
        QCOMPARE(Column(u"select Code_ID from Code_Info where Cate_ID='000' order by Code_ID"_s), inBin);
        const QString owners = left.contains(u"{x}"_s) ? u"{a},{x}"_s : u"{a}"_s;
        QCOMPARE(Column(u"select code_id from tab_file order by code_id"_s).join(u','), owners);
        QCOMPARE(Column(u"select code_id from tab_tag order by code_id"_s).join(u','), owners);
    }

    void Nothing_Is_Asked_For_A_Document_That_Is_Gone() { QVERIFY(Delete({u"{none}"_s}).gone.isEmpty()); }

    void The_Item_Goes_With_Its_Document()
    {
        List_Model list;
        std::vector<List_Row> rows(3);
        rows[0].tag = u"{a}"_s;
        rows[1].tag = u"{b}"_s;
        rows[2].tag = u"{x}"_s;
        list.Replace(rows);
        QVERIFY(MoveCode_Ex(u"{b}"_s, &list, 2));
        QVERIFY(DelCode_Ex(u"{x}"_s, &list, 2));
        QVERIFY(MoveCode_Ex(u"{a}"_s, &list, 0));
        QCOMPARE(list.Row_Count(), 1);
        QCOMPARE(list.Row(0).tag, u"{a}"_s);
    }

    void A_Failure_Is_Told_By_Its_Number()
    {
        Sql_Run(u"drop table tab_tag"_s);
        m_program->prompts.Expect(u"Error:"_s, u"ok"_s);
        QVERIFY(!DelCode_Ex(u"{x}"_s));
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\AddClass"_s));
    }

    void An_Odd_Id_Takes_No_Other_Document_Along()
    {
        const QString odd = u"x' or '1'='1"_s;
        Add_Document(QString(odd).replace(u'\'', u"''"_s), u"001"_s, u"Odd"_s);
        const QList<QStringList> before = Sql_Rows(u"select code_id,cate_id from code_info order by code_id"_s);
        m_program->prompts.Expect(u"Error:"_s, u"ok"_s);
        m_program->prompts.Expect(u"Error:"_s, u"ok"_s);
        QVERIFY(!MoveCode_Ex(odd) && !DelCode_Ex(odd));
        QCOMPARE(Sql_Rows(u"select code_id,cate_id from code_info order by code_id"_s), before);
    }

    void The_Pictures_Of_A_Page_Go_With_It()
    {
        for (const QString &name : {u"Pic/a.jpg"_s, u"Pic/sub/b c.png"_s, u"Pic/other.jpg"_s, u"Pic/&d.gif"_s,
                                    u"outside.jpg"_s, u"Pic/folder.jpg/in the way"_s})
            m_program->Write(name, "picture");
        QVERIFY(QFile::link(m_program->Path(u"outside.jpg"_s), m_program->Path(u"Pic/link.jpg"_s)));
        const QString page =
            u"<html><img src=<<<Pic_Dir>>>folder.jpg><IMG border=0 src=<<<Pic_Dir>>>a.jpg><img alt='x>y' src = "
            u"\"<<<Pic_Dir>>>sub/b c.png\">"
            "<img src='file:///c:/&lt;&lt;&lt;Pic_Dir>>>\\&amp;d.gif'><img src=<<<Pic_Dir>>>../outside.jpg>"
            "<img src=<<<Pic_Dir>>>link.jpg><img src=other.jpg><img src=<<<Pic_Dir>>>><img src=>"_s;
        Recordset row;
        row.LockType = Lock_Type::Optimistic;
        row.Open(u"select * from Code_Info where Code_ID='{x}'"_s, App().Conn_Str);
        row[u"Code_Content"_s].Set(page);
        row[u"Code_Type"_s].Set(u"Htm"_s);
        row.Update();
        row.Close();
        QVERIFY(DelCode_Ex(u"{x}"_s));
        QVERIFY(!QFile::exists(m_program->Path(u"Pic/a.jpg"_s)));
        QVERIFY(!QFile::exists(m_program->Path(u"Pic/sub/b c.png"_s)));
        QVERIFY(!QFile::exists(m_program->Path(u"Pic/&d.gif"_s)));
        QVERIFY(QFile::exists(m_program->Path(u"Pic/other.jpg"_s)));
        QVERIFY(QFile::exists(m_program->Path(u"outside.jpg"_s)));
        QCOMPARE(m_program->Logged(), QStringList());
    }
};

QTEST_MAIN(Test_Document_Deletion)
#include "test_document_deletion.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/bookmarks.h"
#include "support/test_program.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Bookmarks : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Bookmark_List m_list;

    [[nodiscard]] QString Names() const
    {
        QStringList names;
        for (const Bookmark &row : m_list.Rows())
            names << row.name + row.line;
        return names.join(u' ');
    }

private slots:
    void init()
    {
        m_program.emplace();
        m_list = {};
        for (const QString &name : {u"a"_s, u"b"_s, u"c"_s})
            m_list.Add({name, u"1"_s, {}, {}});
    }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void The_List_Is_Edited()
    {
        QCOMPARE(m_list.Add({u"b"_s, u"2"_s, {}, {}}), 1);
        QCOMPARE(Names(), u"a1 b2 c1"_s);
        QCOMPARE(m_list.Down(0), 1);
        QCOMPARE(m_list.Up(2), 1);
        QCOMPARE(m_list.Up(0), 0);
        QCOMPARE(m_list.Down(2), 2);
        QCOMPARE(Names(), u"b2 c1 a1"_s);
        QCOMPARE(m_list.Find(u"c"_s, 1), -1);
        QCOMPARE(m_list.Update(2, {u"b"_s, u"7"_s, {}, {}}), 1); // the other one of that name goes
        QCOMPARE(Names(), u"c1 b7"_s);
        m_list.Delete(0);
        QCOMPARE(Names(), u"b7"_s);
    }

    void What_Is_Typed_Is_Tested()
    {
        QVERIFY(Bookmark_List::Check({u" "_s, u"1"_s, {}, {}}) == Bookmark_Refusal::No_Name);
        QVERIFY(Bookmark_List::Check({QString(256, u'x'), u"1"_s, {}, {}}) == Bookmark_Refusal::Too_Long);
        for (const QString &line : {u""_s, u"x"_s, u"0"_s, u"99999999999"_s})
            QVERIFY(Bookmark_List::Check({u"a"_s, line, {}, {}}) == Bookmark_Refusal::No_Line);
        QVERIFY(Bookmark_List::Check({u"a"_s, u"12"_s, {}, {}}) == Bookmark_Refusal::None);
        QCOMPARE(Line_Of_Text(u"3"_s, 3), std::optional(3));
        for (const QString &line : {u"4"_s, u"0"_s, u"-1"_s, u"x"_s, u""_s})
            QCOMPARE(Line_Of_Text(line, 3), std::nullopt);
    }

    void A_Set_Takes_The_Place_Of_The_Old_One()
    {
        const QString document = u"{1}"_s;
        QVERIFY(m_list.Store(u"{2}"_s));
        m_list.Add({u"it's \"here\""_s, u"40"_s, u"don't "_s + QString(300, u'字'), u"O'Neill"_s});
        m_list.Up(3);
        QVERIFY(m_list.Store(document));
        QVERIFY(m_list.Store(document));
        Bookmark_List read;
        QVERIFY(read.Load(document));
        QCOMPARE(read.Rows().size(), 4U);
        QCOMPARE(read.Rows()[2].name, u"it's \"here\""_s);
        QCOMPARE(read.Rows()[2].selected.size(), 255);
        QCOMPARE(read.Rows()[2].title, u"O'Neill"_s);
        QCOMPARE(Sql_Cell(u"select max(order_id) from tab_tag where code_id='{1}'"_s), u"4"_s);

        m_list.Add({QString(256, u'x'), u"1"_s, {}, {}}); // no field takes it: the old set stays
        QVERIFY(!m_list.Store(document));
        QVERIFY(read.Load(document));
        QCOMPARE(read.Rows().size(), 4U);
        QCOMPARE(m_program->Logged(), QStringList(u"Frm_BookMark_Admin\\Store"_s));
        QVERIFY(Bookmark_List().Store(document));
        QCOMPARE(Sql_Rows(u"select distinct code_id from tab_tag"_s), QList<QStringList>({{u"{2}"_s}}));
        m_program.emplace();
    }
};

QTEST_MAIN(Test_Bookmarks)
#include "test_bookmarks.moc"

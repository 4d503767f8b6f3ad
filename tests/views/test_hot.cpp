// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/machine/machine.h"
#include "support/test_program.h"
#include "views/hot.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Hot : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    List_Model m_list;

    QStringList Titles(const QString &key)
    {
        List_Hot(key, m_list);
        QStringList ids;
        for (int i = 0; i < m_list.Row_Count(); ++i)
            ids << m_list.Row(i).tag;
        return ids;
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void The_Tree_Has_Its_Nodes()
    {
        Tree_Model tree;
        Reload_Hot(tree);
        QCOMPARE(tree.Node_Count(), 14);
        QCOMPARE(tree.Node(tree.Find(u"T_004"_s)).caption, u"已作标签"_s);
        const Tree_Node &due = tree.Node(tree.Find(u"G_007"_s));
        QCOMPARE(due.caption, u"下月阅读"_s);
        QCOMPARE(tree.Node(due.parent).key, u"G_000"_s);
        QVERIFY(Hot_Where(u"G_000"_s, QDate(2026, 3, 5)).isEmpty());
        QVERIFY(Hot_Where(u"qvmxcode_"_s, QDate(2026, 3, 5)).isEmpty());
    }

    void Ranges_Count_From_The_Weekday_data()
    {
        QTest::addColumn<QDate>("today");
        QTest::addColumn<QStringList>("ranges"); ///< of G_003 to G_007
        QTest::addRow("Sunday") << QDate(2026, 3, 1)
                                << QStringList({u"2026-03-02 2026-03-02"_s, u"2026-03-01 2026-03-07"_s,
                                                u"2026-03-08 2026-03-17"_s, u"2026-03-01 2026-03-31"_s,
                                                u"2026-03-31 2026-05-01"_s});
        QTest::addRow("Saturday") << QDate(2026, 3, 7)
                                  << QStringList({u"2026-03-08 2026-03-08"_s, u"2026-03-07 2026-03-07"_s,
                                                  u"2026-03-08 2026-03-17"_s, u"2026-03-07 2026-03-31"_s,
                                                  u"2026-03-31 2026-05-01"_s});
        QTest::addRow("31 December, a Wednesday")
            << QDate(2025, 12, 31)
            << QStringList({u"2026-01-01 2026-01-01"_s, u"2025-12-31 2026-01-03"_s, u"2026-01-04 2026-01-13"_s,
                            u"2025-12-31 2026-01-27"_s, u"2026-01-27 2026-02-27"_s});
        QTest::addRow("29 February, a Thursday")
            << QDate(2024, 2, 29)
            << QStringList({u"2024-03-01 2024-03-01"_s, u"2024-02-29 2024-03-02"_s, u"2024-03-03 2024-03-12"_s,
                            u"2024-02-29 2024-03-26"_s, u"2024-03-26 2024-04-26"_s});
    }
    void Ranges_Count_From_The_Weekday()
    {
        QFETCH(QDate, today);
        QFETCH(QStringList, ranges);
        for (int i = 0; i < ranges.size(); ++i) {
            const QString clause =
                u" where  ( ( Code_ReadDate >=  #%1 00:00:00# and  Code_ReadDate <=  #%2 23:59:59# )   and  "
                "Code_ReadDate_Sta = 'X' ) or ( Code_ReadDateNext >=  #%1 00:00:00# and  Code_ReadDateNext <=  #%2 "
                "23:59:59# ) order by Code_Date desc "_s.arg(ranges[i].left(10), ranges[i].right(10));
            QCOMPARE(Hot_Where(u"G_00%1"_s.arg(i + 3), today), clause);
            App().Date_Delim = u"'"_s; // a server's
            QCOMPARE(Hot_Where(u"G_00%1"_s.arg(i + 3), today), QString(clause).replace(u'#', u'\''));
            App().Date_Delim = u"#"_s;
        }
    }

    void Nodes_List_Their_Documents()
    {
        const QStringList fields = {
            u"Code_ReadNum=1,Code_Date='2025-12-31',Code_Tags='{1}',Code_ReadDateNext='2026-03-04 23:59:59'"_s,
            u"Code_ReadNum=9,Code_Date='2026-01-01',Code_ReadDateNext='2026-03-05'"_s,
            u"Code_Date='2026-02-01',Code_ReadDateNext='2026-03-05 23:59:59'"_s,
            u"Code_Date='2025-01-01',Code_ReadDate='2026-03-05 08:00:00',Code_ReadDate_Sta='X'"_s,
            u"Code_Date='2025-01-02',Code_ReadDate='2026-03-05 08:00:00',Code_ReadDate_Sta=''"_s};
        for (int i = 0; i < fields.size(); ++i)
            Add_Document(u"{%1}"_s.arg(i), i == 0 ? u"000"_s : u"001"_s, u"t"_s,
                         u"Code_ReadDate='2020-01-01',Code_Update='2020-01-01',"_s + fields[i]);
        Machine::Fix_Clock(Test_Program::Now()); // 2026-03-05
        QCOMPARE(Titles(u"T_000"_s), QStringList({u"{1}"_s, u"{0}"_s}));
        QCOMPARE(Titles(u"T_001"_s), QStringList({u"{2}"_s, u"{1}"_s}));
        QCOMPARE(Titles(u"T_002"_s), QStringList());
        QCOMPARE(Titles(u"T_004"_s), QStringList(u"{0}"_s));
        QCOMPARE(Titles(u"G_001"_s), QStringList(u"{0}"_s));
        QCOMPARE(Titles(u"G_002"_s), QStringList({u"{2}"_s, u"{1}"_s, u"{3}"_s}));
        QCOMPARE(Titles(u"G_000"_s).size(), 3); // as it was
        const Due_Counts due = Count_Due(Test_Program::Now().date());
        QCOMPARE(due.overdue, 1);
        QCOMPARE(due.today, 3);
        Config().Hot_NUM = u"1"_s;
        QCOMPARE(Titles(u"T_000"_s), QStringList(u"{1}"_s));
    }
};

QTEST_MAIN(Test_Hot)
#include "test_hot.moc"

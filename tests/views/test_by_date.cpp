// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "platform/database/database.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "users/scrambling.h"
#include "views/by_date.h"
#include "views/day_marks.h"
#include "views/list_engine.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_By_Date : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Tree_Model m_tree;

    [[nodiscard]] QStringList Children(const QString &key) const
    {
        QStringList lines;
        for (const int child : m_tree.Node(m_tree.Find(key)).children)
            lines << m_tree.Node(child).key + u' ' + m_tree.Node(child).caption;
        return lines;
    }

private slots:
    void init()
    {
        m_program.emplace();
        Load_Root_Facts();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void Years_Span_The_Documents_data()
    {
        QTest::addColumn<QStringList>("dates"); ///< "" for Null
        QTest::addColumn<QStringList>("years");
        const int now = Test_Program::Now().date().year();
        const QString presentYear = u"Y_%1 %1年 [%2]"_s.arg(now);
        QTest::addRow("empty") << QStringList() << QStringList(presentYear.arg(0));
        QTest::addRow("gap") << QStringList({u"1999-05-05"_s, u"2005-01-01"_s})
                             << QStringList({u"Y_1999 1999年 [1]"_s, u"Y_2000 2000年 [0]"_s, u"Y_2001 2001年 [0]"_s,
                                             u"Y_2002 2002年 [0]"_s, u"Y_2003 2003年 [0]"_s, u"Y_2004 2004年 [0]"_s,
                                             u"Y_2005 2005年 [1]"_s});
        QTest::addRow("Null before the others")
            << QStringList({u""_s, u"2005-01-01"_s}) << QStringList(u"Y_2005 2005年 [1]"_s);
        QTest::addRow("only Null") << QStringList(u""_s) << QStringList(presentYear.arg(0));
        QTest::addRow("far past") << QStringList({u"0998-12-31"_s, u"0999-01-01"_s})
                                  << QStringList({u"Y_0998 0998年 [1]"_s, u"Y_0999 0999年 [1]"_s});
    }
    void Years_Span_The_Documents()
    {
        QFETCH(QStringList, dates);
        for (int i = 0; i < dates.size(); ++i)
            Add_Document(u"{%1}"_s.arg(i), u"001"_s, u"t"_s,
                         dates[i].isEmpty() ? u"Code_Date=Null"_s : u"Code_Date='%1'"_s.arg(dates[i]));
        Reload_ByDate(m_tree);
        QTEST(Children(u"qvmxcode_"_s), "years");
    }

    void Levels_Load_Once_And_List_Their_Period()
    {
        const QStringList dates = {u"2005-03-01"_s, u"2005-03-01"_s, u"2005-03-20"_s, u"2005-03-20 08:00:00"_s,
                                   u"2005-12-31"_s};
        for (int i = 0; i < dates.size(); ++i)
            Add_Document(u"{%1}"_s.arg(i), u"001"_s, u"t"_s, u"Code_Date='%1'"_s.arg(dates[i]));
        Reload_ByDate(m_tree);
        for (int click = 0; click < 2; ++click) {
            Load_Date_Node(m_tree, m_tree.Find(u"Y_2005"_s));
            Load_Date_Node(m_tree, m_tree.Find(u"M_2005-03"_s));
            const QStringList months = Children(u"Y_2005"_s);
            QCOMPARE(months.size(), 12);
            QCOMPARE(months[0], u"M_2005-01 01月 [0]"_s);
            QCOMPARE(months[2], u"M_2005-03 03月 [4]"_s);
            // Days that differ by their time only have a node each.
            QCOMPARE(Children(u"M_2005-03"_s),
                     QStringList({u"D_2005-03-01 01日 [2]"_s, u"D_2005-03-20 20日 [1]"_s, u"D_2005-03-20 20日 [1]"_s}));
        }
        QCOMPARE(Date_Text_Of(u"qvmxcode_"_s), QString());
        QCOMPARE(Date_Text_Of(u"Y_2005"_s), u"2005"_s);
        QCOMPARE(Date_Text_Of(u"M_2005-03"_s), u"2005-03"_s);
        QCOMPARE(Date_Text_Of(u"D_2005-03-20"_s), u"2005-03-20"_s);
        QCOMPARE(Date_Path(u"D_2005-03-20"_s), QStringList({u"Y_2005"_s, u"M_2005-03"_s, u"D_2005-03-20"_s}));
    }

    void Days_Carry_Marks()
    {
        const QString fields = u"Code_Date='%1',Code_Update='%2',Code_ReadDate='%3',Code_ReadDateNext='%4'"_s;
        const QString old = u"2020-01-01"_s;
        Add_Document(u"{0}"_s, u"001"_s, u"t"_s, fields.arg(u"2026-03-05"_s, u"2026-03-31 23:59:59"_s, old, old));
        Add_Document(u"{1}"_s, u"001"_s, u"t"_s, fields.arg(old, old, u"2026-03-05 08:00:00"_s, u"2026-04-01"_s));
        Add_Document(u"{2}"_s, u"001"_s, u"t"_s, fields.arg(old, old, old, u"2026-03-05 09:00:00"_s));
        Add_Document(u"{3}"_s, u"000"_s, u"t"_s, fields.arg(u"2026-03-09"_s, old, old, u"2026-03-09"_s));
        QCOMPARE(Month_Marks(2026, 3), (QHash<int, Day_Marks>{{5, Day_Mark::Made | Day_Mark::Read | Day_Mark::Due},
                                                              {31, Day_Mark::Changed}}));
        List_Model list;
        ShowCodeInfoToList_Ex_Key(Day_Where(QDate(2026, 3, 5), Day_Mark::Due), list, {}, 1, 100);
        QCOMPARE(list.Row_Count(), 1);
        QCOMPARE(list.Row(0).tag, u"{2}"_s);
    }
};

QTEST_MAIN(Test_By_Date)
#include "test_by_date.moc"

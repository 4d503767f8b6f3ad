// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "support/test_program.h"
#include "tree/folder_allocation.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "tree/folder_order.h"
#include "tree/folder_search.h"
#include "tree/folder_trouble.h"
#include "tree/tree_loading.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// The rows of Cate_Info without the bin's own, as "id name order".
QStringList Folders()
{
    QStringList rows;
    for (const QStringList &row : Sql_Rows(u"select Cate_ID,Cate_Name,Order_Id from Cate_Info order by Cate_ID"_s)) {
        if (row[0] != u"000")
            rows << row.join(u' ');
    }
    return rows;
}

QString Order_Of(const QString &id)
{
    return Sql_Cell(u"select Order_Id from Cate_Info where Cate_ID='%1'"_s.arg(id));
}
} // namespace

class Test_Folder_Editing : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Tree_Model m_tree;

    void Load() { QVERIFY(GetClassInfo_Ex(m_tree, App().Conn_Str, u"Zelqor"_s)); }
    int Node(const QString &id) { return m_tree.Find(Folder_Key(id)); }

private slots:
    void init() { m_program.emplace(); }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Ids_Are_Allocated_data()
    {
        QTest::addColumn<QStringList>("existing");
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("fromFirst");
        QTest::addColumn<QString>("lowest");
        const QString deep = u"001002003004005006"_s; // 18 digits
        QTest::addRow("first of the top level") << QStringList() << u""_s << u"001"_s << u"001"_s;
        QTest::addRow("gap in the top level") << QStringList({u"001"_s, u"003"_s}) << u""_s << u"002"_s << u"002"_s;
        QTest::addRow("no 001") << QStringList({u"002"_s}) << u""_s << u"001"_s << u"001"_s;
        QTest::addRow("first child") << QStringList({u"001"_s}) << u"001"_s << u"001001"_s << u"001001"_s;
        QTest::addRow("gap in front") << QStringList({u"001"_s, u"001002"_s, u"001003"_s}) << u"001"_s << u"001004"_s
                                      << u"001001"_s;
        QTest::addRow("gap behind") << QStringList({u"001"_s, u"001001"_s, u"001003"_s}) << u"001"_s << u"001002"_s
                                    << u"001002"_s;
        QTest::addRow("in the bin") << QStringList({u"000001"_s}) << u"000"_s << u"000002"_s << u"000002"_s;
        QTest::addRow("carries") << QStringList({u"001"_s, u"001999"_s}) << u"001"_s << u"002000"_s << u"001001"_s;
        QTest::addRow("six levels") << QStringList({deep + u"001"_s, deep + u"002"_s}) << deep << deep + u"003"_s
                                    << deep + u"003"_s;
    }
    void Ids_Are_Allocated()
    {
        QFETCH(QStringList, existing);
        QFETCH(QString, parent);
        for (const QString &id : existing)
            Add_Folder(id, u"f"_s);
        QTEST(Next_Id_From_First(parent), "fromFirst");
        QTEST(Lowest_Free_Id(parent), "lowest");
    }

    void Names_Are_Cleaned_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addRow("forbidden") << u"a\\b/c:d*e?f\"g<h>i|j"_s << u"a_b_c_d_e_f_g_h_i_j"_s;
        QTest::addRow("only forbidden") << u"???"_s << u"___"_s;
        QTest::addRow("line ends") << u"\r\na\r\nb\n"_s << u"ab"_s;
        QTest::addRow("kept") << u" it's [中文] 😀 "_s << u" it's [中文] 😀 "_s;
    }
    void Names_Are_Cleaned()
    {
        QFETCH(QString, text);
        QTEST(Clean_Name(text), "name");
    }

    void Folders_Are_Added_To_Rows_And_Nodes()
    {
        Load();
        QCOMPARE(AddClass_Ex({}, u"one"_s, m_tree, u"book.ico"_s, false, u"memo"_s, u"0"_s), u"001"_s);
        QCOMPARE(AddClass_Ex(u"001"_s, u"下级"_s, m_tree, u"home.ico"_s, false, {}, u"1"_s), u"001001"_s);
        QCOMPARE(AddClass_Ex(u"001001"_s, u"beside"_s, m_tree, u"home.ico"_s, true, {}, u"1"_s), u"001002"_s);
        QCOMPARE(AddClass_Ex(u"001"_s, u"next"_s, m_tree, u"home.ico"_s, true, {}, u"1"_s), u"002"_s);
        QCOMPARE(Folders(), QStringList({u"001 one 1"_s, u"001001 下级 1"_s, u"001002 beside 2"_s, u"002 next 2"_s}));
        QCOMPARE(Sql_Rows(u"select Icon_Name,Cate_Memo,Cate_Exp,Cate_pass from Cate_Info where Cate_ID='001'"_s),
                 QList<QStringList>({{u"BOOK.ICO"_s, u"memo"_s, u"0"_s, u""_s}}));
        const Tree_Node &node = m_tree.Node(Node(u"001002"_s));
        QCOMPARE(node.caption, u"beside[0]"_s);
        QCOMPARE(m_tree.Node(node.parent).key, u"C_001"_s);
        QCOMPARE(m_tree.Index_Of(Node(u"001002"_s)).row(), 1);
        QVERIFY(!m_tree.Node(Node(u"001"_s)).expanded);
    }

    void What_Cannot_Be_Stored_Changes_Nothing_data()
    {
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::addRow("quote") << u"001"_s << u"it's"_s << u"单引号"_s;
        QTest::addRow("long") << u"001"_s << QString(51, u'长') << u"超"_s;
        QTest::addRow("no parent") << u"007"_s << u"a"_s << u"007001"_s;
        QTest::addRow("malformed parent") << u"0015"_s << u"a"_s << u"0015001"_s;
        QTest::addRow("full level") << u"001"_s << u"a"_s << u"002000"_s;
        QTest::addRow("84 levels") << QString(u"001"_s).repeated(83) << u"a"_s << u"超"_s;
    }
    void What_Cannot_Be_Stored_Changes_Nothing()
    {
        QFETCH(QString, parent);
        QFETCH(QString, name);
        QFETCH(QString, reason);
        Add_Folder(u"001"_s, u"a"_s);
        if (reason == u"002000")
            Add_Folder(u"001999"_s, u"last"_s);
        for (qsizetype length = 6; length <= parent.size() && parent.size() > 6; length += 3)
            Add_Folder(parent.left(length), u"deep"_s);
        Load();
        const QStringList before = Folders();
        const int nodes = m_tree.Node_Count();
        QCOMPARE(AddClass_Ex(parent, name, m_tree, u"home.ico"_s, false, {}, u"1"_s), QString());
        QCOMPARE(Folders(), before);
        QCOMPARE(m_tree.Node_Count(), nodes);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\AddClass_Ex"_s));
        QVERIFY2(Folder_Trouble().contains(reason), qPrintable(Folder_Trouble()));
        Load();
        AddClass_Ex({}, u"good"_s, m_tree, u"home.ico"_s, false, {}, u"1"_s);
        QCOMPARE(Folder_Trouble(), QString());
    }

    void Import_Finds_Or_Makes_Folders()
    {
        Add_Folder(u"001"_s, u"Notes"_s);
        Add_Folder(u"003"_s, u"notes"_s);
        QCOMPARE(MakeExistCateId({}, u"Notes"_s), u"003"_s);
        QCOMPARE(MakeExistCateId({}, u"new"_s), u"002"_s);
        QCOMPARE(Sql_Rows(u"select Icon_Name,Order_Id,Cate_Memo,Cate_Exp from Cate_Info where Cate_ID='002'"_s),
                 QList<QStringList>({{u"home.ico"_s, u"2"_s, u" "_s, u"1"_s}}));
        QCOMPARE(MakeExistCateId(u"002"_s, u"new"_s), u"002001"_s);
        QCOMPARE(MakeExistCateId(u"002"_s, u"it's"_s), QString());
    }

    void Dialogs_Rename_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("oldName");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("caption");
        QTest::addRow("count stays") << u"001"_s << u"Work"_s << u"Play"_s << u"Play[2]"_s;
        QTest::addRow("count follows a name of digits") << u"002"_s << u"1"_s << u"5"_s << u"5[55]"_s;
        QTest::addRow("a quote goes through the field") << u"001"_s << u"Work"_s << u"it's"_s << u"it's[2]"_s;
        QTest::addRow("case differs") << u"001"_s << u"work"_s << u"Play"_s << u"Work[2]"_s;
        QTest::addRow("root") << u""_s << u"Zelqor"_s << u"图书馆"_s << u"图书馆"_s;
    }
    void Dialogs_Rename()
    {
        QFETCH(QString, id);
        QFETCH(QString, oldName);
        QFETCH(QString, name);
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"002"_s, u"1"_s);
        for (int i = 0; i < 2; ++i)
            Add_Document(u"{%1}"_s.arg(i), u"001"_s, u"t"_s);
        Load_Root_Facts();
        Load();
        if (id == u"002")
            m_tree.Set_Caption(Node(id), u"1[11]"_s);
        const int node = id.isEmpty() ? 0 : Node(id);
        QVERIFY(ReNameClass_Ex(id, oldName, name, u"memo"_s, m_tree, node, u"note.ico"_s, false));
        QTEST(m_tree.Node(node).caption, "caption");
        QCOMPARE(m_tree.Node(node).image, u"NOTE.ICO"_s);
        const std::optional<Folder_Facts> facts = Read_Folder(id);
        QVERIFY(facts);
        QCOMPARE(facts->name, name);
        QCOMPARE(facts->icon, u"NOTE.ICO"_s);
        QCOMPARE(facts->memo, id.isEmpty() ? QString() : u"memo"_s);
        QCOMPARE(facts->expanded, id.isEmpty());
    }

    void Labels_Are_Edited_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("logged");
        QTest::addRow("renamed") << u"001"_s << u"Play[1]"_s << u"Play"_s << false;
        QTest::addRow("nothing is cleaned") << u"001"_s << u"a/b?[1]"_s << u"a/b?"_s << false;
        QTest::addRow("cut at the bracket") << u"001"_s << u"a[b]c[1]"_s << u"a"_s << false;
        QTest::addRow("no name") << u"001"_s << u"[1]"_s << u"Work"_s << false;
        QTest::addRow("empty") << u"001"_s << u""_s << u"Work"_s << false;
        QTest::addRow("quote") << u"001"_s << u"it's[1]"_s << u"Work"_s << true;
        QTest::addRow("bin") << u"000"_s << u"Bin[0]"_s << u"回收站"_s << false;
        QTest::addRow("root") << u""_s << u"Home"_s << u"Home"_s << false;
        QTest::addRow("root with quote") << u""_s << u"it's"_s << u"Zelqor"_s << true;
    }
    void Labels_Are_Edited()
    {
        QFETCH(QString, id);
        QFETCH(QString, text);
        QFETCH(QString, name);
        QFETCH(bool, logged);
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"t"_s);
        Load_Root_Facts();
        Load();
        const int node = id.isEmpty() ? 0 : Node(id);
        const QString count = GetKeyPart(m_tree.Node(node).caption, Key_Part::From_Bracket);
        const bool changes = m_tree.Node(node).caption != name + count;
        QCOMPARE(ReName_In_Place(m_tree, node, text).has_value(), changes);
        QCOMPARE(Folder_Trouble().isEmpty(), !logged);
        QCOMPARE(m_tree.Node(node).caption, name + count);
        QCOMPARE(Read_Folder(id)->name, name);
        QCOMPARE(m_program->Logged().size(), logged ? 1 : 0);
    }

    void Icons_Are_Set()
    {
        Add_Folder(u"001"_s, u"Work"_s);
        Load_Root_Facts();
        Load();
        QVERIFY(Set_Node_Icon(m_tree, Node(u"001"_s), u"book.ico"_s));
        QVERIFY(Set_Node_Icon(m_tree, 0, u"note.ico"_s));
        QVERIFY(!Set_Node_Icon(m_tree, Node(u"000"_s), u"note.ico"_s));
        QCOMPARE(Read_Folder(u"001"_s)->icon, u"BOOK.ICO"_s);
        QCOMPARE(Read_Folder({})->icon, u"NOTE.ICO"_s);
        QCOMPARE(m_tree.Node(0).image, u"NOTE.ICO"_s);
        QCOMPARE(m_tree.Node(Node(u"000"_s)).image, u"RECYCLEBIN.ICO"_s);
    }

    void Siblings_Exchange_Their_Places_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<bool>("up");
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QStringList>("orders"); // of 001001, 001002, 001003 and 001004
        QTest::addRow("down") << u"001001"_s << false << u"a ==> b"_s << u"yes"_s
                              << QStringList({u"2"_s, u"1"_s, u"2"_s, u"0"_s});
        QTest::addRow("down is called off") << u"001001"_s << false << u"不需再次保存。\na ==> b"_s << u"no"_s
                                            << QStringList({u"1"_s, u"2"_s, u"2"_s, u"0"_s});
        QTest::addRow("down to an equal number takes the highest id's")
            << u"001002"_s << false << u"b ==> c"_s << u"yes"_s << QStringList({u"1"_s, u"4"_s, u"2"_s, u"0"_s});
        QTest::addRow("last") << u"001003"_s << false << u"没有同级后方节点"_s << u"ok"_s
                              << QStringList({u"1"_s, u"2"_s, u"2"_s, u"0"_s});
        QTest::addRow("position 0 finds nobody behind") << u"001004"_s << false << u"没有同级后方节点"_s << u"ok"_s
                                                        << QStringList({u"1"_s, u"2"_s, u"2"_s, u"0"_s});
        QTest::addRow("up") << u"001001"_s << true << u"a ==> d"_s << u"yes"_s
                            << QStringList({u"0"_s, u"2"_s, u"2"_s, u"1"_s});
        QTest::addRow("up with equal numbers")
            << u"001003"_s << true << u"c ==> b"_s << u"yes"_s << QStringList({u"1"_s, u"2"_s, u"2"_s, u"0"_s});
        QTest::addRow("first") << u"001004"_s << true << u"没有同级前方节点"_s << u"ok"_s
                               << QStringList({u"1"_s, u"2"_s, u"2"_s, u"0"_s});
    }
    void Siblings_Exchange_Their_Places()
    {
        QFETCH(QString, id);
        QFETCH(bool, up);
        QFETCH(QString, prompt);
        QFETCH(QString, answer);
        QFETCH(QStringList, orders);
        Add_Folder(u"001"_s, u"parent"_s);
        Add_Folder(u"001001"_s, u"a"_s, 1);
        Add_Folder(u"001002"_s, u"b"_s, 2);
        Add_Folder(u"001003"_s, u"c"_s, 2);
        Add_Folder(u"001004"_s, u"d"_s, 0);
        m_program->prompts.Expect(prompt, answer);
        QCOMPARE(up ? Move_Node_Up(id) : Move_Node_Down(id, "_NoSave"), answer == u"yes");
        QStringList after;
        for (const QString &one : {u"001001"_s, u"001002"_s, u"001003"_s, u"001004"_s})
            after << Order_Of(one);
        QCOMPARE(after, orders);
    }

    void Reordering_Asks_Only_When_Wanted()
    {
        Config().CH_Tree_Comfirm = u"0"_s;
        Add_Folder(u"001"_s, u"a"_s);
        Add_Folder(u"002"_s, u"b"_s);
        QVERIFY(Move_Node_Down(u"001"_s, "_NodeUpdate"));
        QCOMPARE(Order_Of(u"001"_s), u"2"_s);
    }

    void Folders_Are_Found_By_Name_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("whole");
        QTest::addColumn<QStringList>("paths");
        QTest::addRow("contains") << u" PLAN "_s << false
                                  << QStringList({u"Plans"_s, u"Plans \\ plan"_s, u"Plans \\ b_x \\ Plan"_s});
        QTest::addRow("whole") << u"plan"_s << true << QStringList({u"Plans \\ plan"_s, u"Plans \\ b_x \\ Plan"_s});
        QTest::addRow("chinese") << u"收"_s << false << QStringList(u"回收站"_s);
        QTest::addRow("the root, which has no count") << u"zel"_s << false << QStringList(u"Zelqor"_s);
        QTest::addRow("the count is no part of the name") << u"[0]"_s << false << QStringList();
        QTest::addRow("empty") << u"  "_s << false << QStringList();
    }
    void Folders_Are_Found_By_Name()
    {
        QFETCH(QString, text);
        QFETCH(bool, whole);
        Add_Folder(u"001"_s, u"Plans"_s);
        Add_Folder(u"001001"_s, u"plan"_s);
        Add_Folder(u"001002"_s, u"b_x"_s);
        Add_Folder(u"001002001"_s, u"Plan"_s);
        Load();
        QStringList paths;
        for (const Found_Folder &found : Find_Folders(m_tree, text, whole))
            paths << found.path;
        QTEST(paths, "paths");
    }
};

QTEST_GUILESS_MAIN(Test_Folder_Editing)
#include "test_folder_editing.moc"

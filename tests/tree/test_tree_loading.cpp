// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "support/test_program.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"

#include <QRandomGenerator>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
QStringList Captions(const Tree_Model &tree)
{
    QStringList captions;
    for (int i = 0; i < tree.Node_Count(); ++i)
        captions << tree.Node(i).caption;
    return captions;
}

Tree_Model &Loaded(Tree_Model &tree)
{
    GetClassInfo_Ex(tree, App().Conn_Str, u"Zelqor"_s);
    return tree;
}
} // namespace

class Test_Tree_Loading : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
    void cleanup() { m_program.reset(); }

    void A_New_Database_Shows_Root_And_Recycle_Bin()
    {
        Tree_Model tree;
        QVERIFY(GetClassInfo_Ex(tree, App().Conn_Str, u"Zelqor"_s));
        QCOMPARE(Captions(tree), QStringList({u"Zelqor"_s, u"回收站[0]"_s}));
        QCOMPARE(tree.Node(0).key, u"qvmxcode_"_s);
        QCOMPARE(tree.Node(0).image, u"ZELQOR.ICO"_s);
        App().Com_Name.clear();
        QVERIFY(GetClassInfo_Ex(tree, App().Conn_Str, u"默认"_s));
        QCOMPARE(tree.Node(0).caption, u"默认"_s);
    }

    void Siblings_Stand_In_Their_Order()
    {
        Add_Folder(u"001"_s, u"b"_s, 5);
        Add_Folder(u"002"_s, u"a"_s, 1);
        Add_Folder(u"001002"_s, u"b2"_s, 1);
        Add_Folder(u"001001"_s, u"b1"_s, 2);
        Add_Folder(u"002001"_s, u"a1"_s, 9);
        Add_Folder(u"000001"_s, u"thrown away"_s, 1);
        Tree_Model tree;
        Loaded(tree);
        const auto children = [&](int node) {
            QStringList names;
            const QModelIndex parent = tree.Index_Of(node);
            for (int row = 0; row < tree.rowCount(parent); ++row)
                names << tree.index(row, 0, parent).data().toString();
            return names;
        };
        QCOMPARE(children(0), QStringList({u"a[0]"_s, u"b[0]"_s, u"回收站[0]"_s}));
        QCOMPARE(children(tree.Find(u"C_001"_s)), QStringList({u"b2[0]"_s, u"b1[0]"_s}));
        QCOMPARE(children(tree.Find(u"C_000"_s)), QStringList(u"thrown away[0]"_s));
    }

    /// The captions are those of one count statement for each folder.
    void Counts_Equal_The_Statements_data()
    {
        QTest::addColumn<QString>("showLow");
        QTest::addRow("subtree") << u"TRUE"_s;
        QTest::addRow("any other word") << u"no"_s;
        QTest::addRow("folder alone") << u"False"_s;
    }
    void Counts_Equal_The_Statements()
    {
        QFETCH(QString, showLow);
        Config().ShowLow = showLow;
        QRandomGenerator random(3);
        QStringList ids{u"000"_s};
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (int i = 1; i <= 60; ++i) {
                const QString parent = i < 8 ? QString() : ids.at(random.bounded(static_cast<int>(ids.size())));
                const QString id = parent + u"%1"_s.arg(i, 3, 10, QLatin1Char('0'));
                Add_Folder(id, u"f%1"_s.arg(i));
                ids << id;
            }
            for (int i = 0; i < 600; ++i) {
                // Some stand in folders that are not there, and in none.
                const QString folder =
                    i % 50 == 0 ? ids.at(i / 50) + u"999"_s : ids.at(random.bounded(static_cast<int>(ids.size())));
                Add_Document(u"{%1}"_s.arg(i), folder, u"t"_s, i % 97 == 0 ? u"Cate_ID=null"_s : QString());
            }
        });
        Tree_Model tree;
        QVERIFY(GetClassInfo_Ex(tree, App().Conn_Str, {}));
        QCOMPARE(tree.Node_Count(), ids.size() + 1);
        const bool alone = showLow == u"False";
        for (const QString &id : ids) {
            const QString count = Sql_Cell((alone ? u"Select count(*) from Code_Info where cate_id = '%1'"_s
                                                  : u"Select count(*) from Code_Info where cate_id like '%1%'"_s)
                                               .replace(u"%1"_s, id));
            QCOMPARE(GetKeyPart(tree.Node(tree.Find(u"C_"_s + id)).caption, Key_Part::From_Bracket),
                     u'[' + count + u']');
        }
    }

    void Misplaced_Folders_Hang_Below_The_Root()
    {
        for (const auto &[id, name] : {std::pair(u"001"_s, u"first"_s),
                                       {u"002001"_s, u"orphan"_s},
                                       {u"12"_s, u"odd"_s},
                                       {u"002001001"_s, u"below it"_s}})
            Add_Folder(id, name);
        Add_Document(u"{1}"_s, u"002001001"_s, u"t"_s);
        Tree_Model tree;
        QVERIFY(!GetClassInfo_Ex(tree, App().Conn_Str, {}));
        QCOMPARE(Captions(tree), QStringList({u"Zelqor"_s, u"odd（位置有误：12）[0]"_s, u"first[0]"_s, u"回收站[0]"_s,
                                              u"orphan（位置有误：002001）[1]"_s, u"below it[1]"_s}));
        QCOMPARE(tree.Node(5).parent, 4);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\GetClassInfo_Ex"_s));
    }

    /// Rows that break the grammar, made by hand: every one with an id is shown, and the log names what is misplaced.
    void Hostile_Rows_data()
    {
        QTest::addColumn<QStringList>("ids");
        QTest::addColumn<int>("placed"); // of them
        QStringList deep;
        for (int level = 1; level <= 83; ++level)
            deep << QString(u"001"_s).repeated(level);
        QStringList many;
        for (int i = 1; i <= 999; ++i)
            many << u"%1"_s.arg(i, 3, 10, QLatin1Char('0'));
        QTest::addRow("letters") << QStringList({u"abc"_s, u"abc001"_s}) << 2;
        QTest::addRow("one digit") << QStringList(u"1"_s) << 0;
        QTest::addRow("no id") << QStringList(u""_s) << 0;
        QTest::addRow("four digits") << QStringList({u"001"_s, u"0012"_s}) << 1;
        QTest::addRow("blank at the end") << QStringList({u"001"_s, u"00 "_s}) << 2;
        QTest::addRow("a prefix of a folder") << QStringList({u"001001"_s, u"001"_s, u"00"_s}) << 0;
        QTest::addRow("83 levels") << deep << 83;
        QTest::addRow("1,000 siblings") << many << 999;
        QTest::addRow("1,001 siblings") << many + QStringList(u"1000"_s) << 999;
        QTest::addRow("a loop has no way to be: the id is the place")
            << QStringList({u"001"_s, u"001001"_s, u"002002"_s, u"002002001"_s}) << 2;
    }
    void Hostile_Rows()
    {
        QFETCH(QStringList, ids);
        QFETCH(int, placed);
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (const QString &id : ids)
                Add_Folder(id, u"名前 имя 😀 ['\""_s + QString(30, u'x'));
        });
        Tree_Model tree;
        const bool complete = GetClassInfo_Ex(tree, App().Conn_Str, {});
        QCOMPARE(complete, placed == ids.size());
        QCOMPARE(m_program->Logged().size(), complete ? 0 : 1);
        int found = 0;
        for (const QString &id : ids)
            found += tree.Find(Folder_Key(id)) >= 0 ? 1 : 0;
        QCOMPARE(found, ids.size() - ids.count(QString()));
        QVERIFY(tree.Find(u"C_000"_s) > 0);
        Update_Tree_Num_Ex(tree, ids.last(), App().Conn_Str, true);
        Tree_Model copy;
        Copy_Tree(tree, copy);
        QCOMPARE(copy.Node_Count(), tree.Node_Count());
    }

    void Images_And_Open_Nodes_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("set");
        QTest::addColumn<QString>("image");
        QTest::addColumn<bool>("expanded");
        QTest::addRow("icon in other case") << u"001"_s << u"Icon_Name='Book.ICO'"_s << u"BOOK.ICO"_s << true;
        QTest::addRow("icon gone") << u"001"_s << u"Icon_Name='gone.ico'"_s << u"RECYCLEBIN.ICO"_s << true;
        QTest::addRow("no icon") << u"001"_s << u"Icon_Name=null"_s << u"RECYCLEBIN.ICO"_s << true;
        QTest::addRow("recycle bin") << u"000"_s << u"Icon_Name='book.ico'"_s << u"RECYCLEBIN.ICO"_s << true;
        QTest::addRow("null is open") << u"001"_s << u"Cate_Exp=null"_s << u"RECYCLEBIN.ICO"_s << true;
        QTest::addRow("closed") << u"001"_s << u"Cate_Exp='0'"_s << u"RECYCLEBIN.ICO"_s << false;
    }
    void Images_And_Open_Nodes()
    {
        QFETCH(QString, id);
        QFETCH(QString, set);
        QFETCH(QString, image);
        QFETCH(bool, expanded);
        m_program->Write(u"data/ico/bOOk.ico"_s, "icon");
        Add_Folder(u"001"_s, u"f"_s);
        Sql_Run(u"update Cate_Info set %1 where Cate_ID='%2'"_s.arg(set, id));
        Tree_Model tree;
        const Tree_Node node = Loaded(tree).Node(tree.Find(u"C_"_s + id));
        QCOMPARE(node.image, image);
        QCOMPARE(node.expanded, expanded);
    }

    void Only_Ancestors_Are_Counted_Anew()
    {
        for (const QString &id : {u"001"_s, u"001001"_s, u"001002"_s, u"002"_s})
            Add_Folder(id, u"f"_s + id);
        Tree_Model tree;
        Loaded(tree);
        Add_Document(u"{1}"_s, u"001001"_s, u"t"_s);
        Add_Document(u"{2}"_s, u"001002"_s, u"t"_s);
        Update_Tree_Num_Ex(tree, u"001001"_s, App().Conn_Str, true);
        QCOMPARE(Captions(tree), QStringList({u"Zelqor"_s, u"f001[2]"_s, u"f002[0]"_s, u"回收站[0]"_s, u"f001001[1]"_s,
                                              u"f001002[0]"_s}));
        Update_Tree_Num_Ex(tree, u"001001"_s, App().Conn_Str, false);
        QCOMPARE(tree.Node(tree.Find(u"C_001"_s)).caption, u"f001[0]"_s);
    }

    void A_Copy_Has_No_Counts()
    {
        Add_Folder(u"001"_s, u"a_b"_s);
        Add_Folder(u"001001"_s, u"c"_s);
        Sql_Run(u"update Cate_Info set Cate_Exp='0' where Cate_ID='001'"_s);
        Tree_Model tree;
        Tree_Model copy;
        Copy_Tree(Loaded(tree), copy);
        QCOMPARE(Captions(copy), QStringList({u"Zelqor"_s, u"a_b"_s, u"回收站"_s, u"c"_s}));
        QCOMPARE(copy.Node(copy.Node(3).parent).key, u"C_001"_s);
        QVERIFY(!copy.Node(1).expanded);
    }

    void Combos_List_Folders_By_Id()
    {
        Add_Folder(u"002"_s, u"a"_s, 1);
        Add_Folder(u"001"_s, u"b"_s, 2);
        Add_Folder(u"001001"_s, u"b1"_s);
        Add_Folder(u"001001001"_s, u"b11"_s);
        Add_Folder(u"000001"_s, u"old"_s);
        const QStringList items{u"b"_s, u"   ├ b1"_s, u"      ├ b11"_s, u"a"_s, u"回收站"_s, u"   ├ old"_s};
        Folder_Combo combo{u"Cob_Cate"_s, {u"stale"_s}};
        Reload_Cate(combo);
        QCOMPARE(combo.items, items);
        const QStringList ids{u"001"_s, u"001001"_s, u"001001001"_s, u"002"_s, u"000"_s, u"000001"_s, u""_s};
        QCOMPARE(Cate_ID_List(), ids);
        Folder_Combo find{u"Comb_Find_Cate"_s, {}};
        Reload_Cate(find);
        QCOMPARE(find.items, QStringList(u"全部节点"_s) + items);
        QCOMPARE(Cate_ID_List(), ids);
    }

    void The_Last_Folder_Is_Remembered()
    {
        Add_Folder(u"001"_s, u"f"_s);
        Save_Tree_Status(u"001"_s, false);
        QCOMPARE(GetIni(u"Col"_s, u"Tree_LastKey"_s), u"001"_s);
        QCOMPARE(Sql_Cell(u"select Cate_Exp from Cate_Info where Cate_ID='001'"_s), u"0"_s);
        Save_Tree_Status(u"001"_s, true);
        QCOMPARE(Sql_Cell(u"select Cate_Exp from Cate_Info where Cate_ID='001'"_s), u"1"_s);
        Save_Tree_Status(u"it's"_s, true);
        QCOMPARE(m_program->Logged().size(), 1);
    }

    void Root_Facts_Are_Made_Where_They_Are_Missing()
    {
        Sql_Run(u"insert into Mess_Conf(Mess_ID,Mess_Name1) values ('COM_NAME','我的库')"_s);
        for (int start = 0; start < 2; ++start)
            Load_Root_Facts();
        QCOMPARE(App().Com_Name, u"我的库"_s);
        QCOMPARE(App().Com_Icon, u"ZELQOR.ICO"_s);
        QCOMPARE(Sql_Cell(u"select count(*) from Mess_Conf"_s), u"2"_s);
    }

    void Keys_And_Captions_Split_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("parts");
        QTest::addRow("folder key") << u"C_001002"_s << QStringList({u"001002"_s, u"C"_s, u""_s, u""_s});
        QTest::addRow("root key") << u"qvmxcode_"_s << QStringList({u""_s, u"qvmxcode"_s, u""_s, u""_s});
        QTest::addRow("caption") << u"Work[12]"_s << QStringList({u""_s, u""_s, u"[12]"_s, u"Work"_s});
        QTest::addRow("caption with underscores")
            << u"a_b_c[0]"_s << QStringList({u"b_c[0]"_s, u"a"_s, u"[0]"_s, u"a_b_c"_s});
        QTest::addRow("two brackets") << u"[1][2]"_s << QStringList({u""_s, u""_s, u"[1][2]"_s, u""_s});
        QTest::addRow("neither") << u"plain"_s << QStringList({u""_s, u""_s, u""_s, u""_s});
    }
    void Keys_And_Captions_Split()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, parts);
        for (int mode = 1; mode <= 4; ++mode)
            QCOMPARE(GetKeyPart(text, static_cast<Key_Part>(mode)), parts[mode - 1]);
    }

    void Numbers_Are_Padded_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<int>("width");
        QTest::addColumn<QString>("padded");
        QTest::addRow("short") << u"7"_s << 3 << u"007"_s;
        QTest::addRow("blanks") << u" 7 "_s << 3 << u"007"_s;
        QTest::addRow("longer") << u"1000"_s << 3 << u"1000"_s;
        QTest::addRow("zero") << u"0"_s << 3 << u""_s;
        QTest::addRow("two zeros") << u"00"_s << 3 << u"000"_s;
        QTest::addRow("empty") << u" "_s << 3 << u""_s;
    }
    void Numbers_Are_Padded()
    {
        QFETCH(QString, value);
        QFETCH(int, width);
        QFETCH(QString, padded);
        QCOMPARE(PadLeft(value, width, u'0'), padded);
    }
};

QTEST_GUILESS_MAIN(Test_Tree_Loading)
#include "test_tree_loading.moc"

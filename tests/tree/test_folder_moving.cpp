// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "support/test_program.h"
#include "tree/folder_ids.h"
#include "tree/folder_moving.h"
#include "tree/folder_removal.h"
#include "tree/folder_trouble.h"
#include "tree/tree_loading.h"
#include "tree/virtual_folders.h"

#include <QRandomGenerator>
#include <QTest>
#include <optional>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
/// Every folder as "id name" and every document as "title in id", by name.
QStringList Places()
{
    QStringList places;
    for (const QStringList &row : Sql_Rows(u"select Cate_ID,Cate_Name from Cate_Info order by Cate_ID"_s)) {
        if (row[0] != u"000")
            places << row.join(u' ');
    }
    for (const QStringList &row : Sql_Rows(u"select Code_Title,Cate_ID from Code_Info order by Code_Title"_s))
        places << row.join(u" in "_s);
    return places;
}

void Add_Attachment(const QString &document)
{
    Sql_Run(u"insert into tab_file(code_id,file_name,file_type) values ('%1','f',0)"_s.arg(document));
}
} // namespace

class Test_Folder_Moving : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Tree_Model m_tree;

    void Load() { QVERIFY(GetClassInfo_Ex(m_tree, App().Conn_Str, u"Zelqor"_s)); }
    int Node(const QString &id) { return m_tree.Find(id.isEmpty() ? Root_Key : Folder_Key(id)); }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"a"_s, 7);
        Add_Folder(u"001001"_s, u"b"_s);
        Add_Folder(u"001001004"_s, u"c"_s);
        Add_Folder(u"002"_s, u"d"_s);
        Add_Folder(u"002002"_s, u"e"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"one"_s);
        Add_Document(u"{3}"_s, u"001001004"_s, u"three"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Folders_Move_With_Everything_In_Them_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("newId");
        QTest::addColumn<QStringList>("places");
        const QString d = u"002 d"_s;
        const QString e = u"002002 e"_s;
        QTest::addRow("in front of the first child")
            << u"001"_s << u"002"_s << u"002001"_s
            << QStringList({d, u"002001 a"_s, u"002001001 b"_s, u"002001001004 c"_s, e, u"one in 002001"_s,
                            u"three in 002001001004"_s});
        QTest::addRow("to the top level")
            << u"001001"_s << u""_s << u"003"_s
            << QStringList({u"001 a"_s, d, e, u"003 b"_s, u"003004 c"_s, u"one in 001"_s, u"three in 003004"_s});
        QTest::addRow("to the bin") << u"001001"_s << u"000"_s << u"000001"_s
                                    << QStringList({u"000001 b"_s, u"000001004 c"_s, u"001 a"_s, d, e, u"one in 001"_s,
                                                    u"three in 000001004"_s});
        QTest::addRow("to its own parent") << u"001001"_s << u"001"_s << u"001002"_s
                                           << QStringList({u"001 a"_s, u"001002 b"_s, u"001002004 c"_s, d, e,
                                                           u"one in 001"_s, u"three in 001002004"_s});
    }
    void Folders_Move_With_Everything_In_Them()
    {
        QFETCH(QString, id);
        QFETCH(QString, parent);
        Sql_Run(u"insert into tab_vircate(code_id,cate_id) values ('{1}','001001')"_s);
        Sql_Run(u"update Cate_Info set Cate_pass='x' where Cate_ID='001001'"_s);
        QTEST(Mod_Cate_Action(id, parent), "newId");
        QTEST(Places(), "places");
        QCOMPARE(Sql_Cell(u"select cate_id from tab_vircate"_s), u"001001"_s);
        QCOMPARE(Sql_Cell(u"select Cate_Name from Cate_Info where Cate_pass='x'"_s), u"b"_s);
        QCOMPARE(Sql_Cell(u"select Order_Id from Cate_Info where Cate_Name='a'"_s), u"7"_s);
    }

    void Moves_That_Cannot_End_Do_Not_Begin_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("parent");
        QTest::addRow("ids would be too long") << u"002"_s << u"001001"_s + QString(u"004"_s).repeated(80);
        QTest::addRow("a stray row has the id") << u"001"_s << u"002"_s;
        QTest::addRow("a pattern for an id") << u"%%%"_s << u"000"_s;
        QTest::addRow("no folder") << u""_s << u"000"_s;
        QTest::addRow("parent is missing") << u"001"_s << u"009"_s;
    }
    void Moves_That_Cannot_End_Do_Not_Begin()
    {
        QFETCH(QString, id);
        QFETCH(QString, parent);
        for (qsizetype length = 12; length <= parent.size(); length += 3)
            Add_Folder(parent.left(length), u"deep"_s);
        if (parent == u"002")
            Add_Folder(u"002001001004"_s, u"stray"_s);
        const QStringList before = Places();
        QCOMPARE(Mod_Cate_Action(id, parent), QString());
        QCOMPARE(Places(), before);
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_Cate\\Mod_Cate_Action"_s));
        QVERIFY(!Folder_Trouble().isEmpty());
    }

    void Drops_On_Folders_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("answer"); // "": not asked
        QTest::addColumn<QString>("newId");
        QTest::addRow("moved") << u"001"_s << u"002"_s << u"yes"_s << u"002001"_s;
        QTest::addRow("called off") << u"001"_s << u"002"_s << u"no"_s << u""_s;
        QTest::addRow("to the root") << u"001001"_s << u""_s << u"yes"_s << u"003"_s;
        QTest::addRow("on itself") << u"001"_s << u"001"_s << u""_s << u""_s;
        QTest::addRow("below itself") << u"001"_s << u"001001004"_s << u""_s << u""_s;
    }
    void Drops_On_Folders()
    {
        QFETCH(QString, id);
        QFETCH(QString, target);
        QFETCH(QString, answer);
        QFETCH(QString, newId);
        Load();
        if (!answer.isEmpty())
            m_program->prompts.Expect(u"文件夹发生变动,是否保存？\n\n原文件夹："_s, answer);
        const std::optional<Move_Report> report = Drop_Folder(m_tree, Node(id), Node(target));
        QCOMPARE(report ? report->newFolder : QString(), newId);
        QCOMPARE(Folder_Trouble(), QString());
        if (report && id == u"001")
            QCOMPARE(report->text, u"更新完成：原文件夹a ==>  新文件夹：d"_s);
    }

    void Documents_Are_Dropped()
    {
        Load();
        m_program->prompts.Expect(u"标题：three ==>  新文件夹：e"_s, u"yes"_s);
        const std::optional<Move_Report> report =
            Drop_Documents({u"{3}"_s, u"{1}"_s, u"x' or '1'='1"_s}, m_tree, Node(u"002002"_s));
        QVERIFY(report);
        QCOMPARE(report->oldFolder, u"001001004"_s);
        QCOMPARE(Places().mid(5), QStringList({u"one in 002002"_s, u"three in 002002"_s}));
        QVERIFY(!Drop_Documents({u"{gone}"_s}, m_tree, Node(u"001"_s)));
        QVERIFY(!Drop_Documents({u"{1}"_s}, m_tree, Node(u""_s)));
        Config().CH_Tree_Comfirm = u"0"_s;
        QVERIFY(Drop_Documents({u"{1}"_s}, m_tree, Node(u"001"_s)));
    }

    void Deleting_Goes_Through_The_Bin()
    {
        Add_Attachment(u"{1}"_s);
        Add_Attachment(u"{3}"_s);
        Load();
        m_program->prompts.Expect(u"请确认节点：b 是否需删除？\n\n        Tips: 删除后，将转移到 回收站"_s, u"no"_s);
        QVERIFY(!DelClass_Ex(u"001001"_s, Node(u"001001"_s), m_tree));
        m_program->prompts.Expect(u"转移到 回收站"_s, u"yes"_s);
        QVERIFY(DelClass_Ex(u" 001001 "_s, Node(u"001001"_s), m_tree));
        Load();
        QCOMPARE(m_tree.Node(Node(u"000001"_s)).caption, u"b[1]"_s);
        m_program->prompts.Expect(u"数据删除后,不能恢复"_s, u"yes"_s);
        QVERIFY(DelClass_Ex(u"000001"_s, Node(u"000001"_s), m_tree));
        QCOMPARE(Places(), QStringList({u"001 a"_s, u"002 d"_s, u"002002 e"_s, u"one in 001"_s}));
        QCOMPARE(Sql_Cell(u"select code_id from tab_file"_s), u"{1}"_s);
        QCOMPARE(Node(u"000001004"_s), -1);
        QVERIFY(Node(u"002002"_s) > 0);
        QCOMPARE(m_tree.Node(m_tree.Node(Node(u"002002"_s)).parent).key, u"C_002"_s);
        QVERIFY(!DelClass_Ex(u""_s, 0, m_tree));
        QCOMPARE(m_program->Logged(), QStringList());
        QVERIFY(!DelClass_Ex(u"12"_s, 0, m_tree)); // a row that was made by hand
        QVERIFY(!Folder_Trouble().isEmpty());
    }

    void The_Bin_Is_Emptied()
    {
        Add_Folder(u"000003"_s, u"gone"_s);
        Add_Folder(u"000003001"_s, u"gone too"_s);
        Add_Document(u"{8}"_s, u"000"_s, u"thrown"_s);
        Add_Document(u"{9}"_s, u"000003001"_s, u"thrown too"_s);
        Add_Attachment(u"{8}"_s);
        Add_Attachment(u"{9}"_s);
        Load();
        const QStringList before = Places();
        m_program->prompts.Expect(u"您确认要清空 回收站 吗?"_s, u"no"_s);
        QVERIFY(!Clean_RecycleBin_Ex(m_tree));
        QCOMPARE(Places(), before);
        m_program->prompts.Expect(u"清空"_s, u"yes"_s);
        QVERIFY(Clean_RecycleBin_Ex(m_tree));
        QCOMPARE(Places().filter(u"thrown"_s) + Places().filter(u"gone"_s), QStringList());
        QCOMPARE(Places().size(), before.size() - 4);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file"_s), u"0"_s);
        QCOMPARE(Sql_Cell(u"select count(*) from Cate_Info where Cate_ID='000'"_s), u"1"_s);
        QCOMPARE(m_tree.Node(Node(u"000"_s)).caption, u"回收站[0]"_s);
        QCOMPARE(m_tree.Node_Count(), 7);
    }

    void Memberships_Are_Rewritten()
    {
        Save_Memberships(u"{1}"_s, u"001"_s, {u"002"_s, u"001"_s, u"002002"_s});
        Save_Memberships(u"{3}"_s, u"001001004"_s, {u"002"_s});
        const auto ids = [](const QString &document) {
            QStringList found;
            for (const Membership &one : Memberships_Of(document))
                found << one.id + u' ' + one.name;
            found.sort();
            return found;
        };
        QCOMPARE(ids(u"{1}"_s), QStringList({u"002 d"_s, u"002002 e"_s}));
        Sql_Run(u"delete from Cate_Info where Cate_ID='002002'"_s);
        QCOMPARE(ids(u"{1}"_s), QStringList(u"002 d"_s));
        Save_Memberships(u"{1}"_s, u"001"_s, {});
        QCOMPARE(Sql_Rows(u"select code_id,cate_id from tab_vircate"_s), QList<QStringList>({{u"{3}"_s, u"002"_s}}));
    }

    /// A process that is killed while it moves a subtree to and fro leaves it in one place, whole.
    void A_Kill_Leaves_One_Place()
    {
        for (int i = 1; i <= 40; ++i) {
            Add_Folder(u"001001%1"_s.arg(100 + i), u"many"_s);
            Add_Document(u"{m%1}"_s.arg(i), u"001001%1"_s.arg(100 + i), u"many"_s);
        }
        const QString children = u"select count(*) from Cate_Info where Cate_ID like '%1%' and Cate_Name='many'"_s;
        const QString documents = u"select count(*) from Code_Info where Cate_ID like '%1%' and Code_Title='many'"_s;
        QSet<QString> seen;
        for (int round = 0; round < 40; ++round) {
            Database_Engine::Let_Go();
            const pid_t child = fork();
            if (child == 0) {
                for (;;) {
                    const QString from = Sql_Cell(u"select Cate_ID from Cate_Info where Cate_Name='b'"_s);
                    Mod_Cate_Action(from, from.startsWith(u"002"_s) ? u"001"_s : u"002"_s);
                }
            }
            usleep(2000 + QRandomGenerator::global()->bounded(30000));
            kill(child, SIGKILL);
            waitpid(child, nullptr, 0);
            const QString place = Sql_Cell(u"select Cate_ID from Cate_Info where Cate_Name='b'"_s);
            QCOMPARE(Sql_Cell(children.arg(place)), u"40"_s);
            QCOMPARE(Sql_Cell(documents.arg(place)), u"40"_s);
            seen << place;
        }
        QVERIFY2(seen.size() > 1, "no round moved anything");
        QCOMPARE(m_program->Logged(), QStringList());
    }
};

QTEST_GUILESS_MAIN(Test_Folder_Moving)
#include "test_folder_moving.moc"

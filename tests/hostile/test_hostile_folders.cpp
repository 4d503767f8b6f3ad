// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/connection_pool.h"
#include "platform/database/database.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/folders/tree_pane.h"
#include "ui/window/frm_main.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// Rows 1 to n of a generator, in the file's own SQL: no file of that size is kept.
QByteArray Counted(int n)
{
    return "with recursive n(i) as (select 1 union all select i+1 from n where i<" + QByteArray::number(n) + ") ";
}

const QByteArray New_Folders = "insert into Cate_Info(Cate_ID,Cate_Name,Order_Id,Cate_Exp,Cate_pass) ";
const QByteArray New_Documents = "insert into Code_Info(Code_ID,Cate_ID,Code_Title,Code_Create,Code_Update) ";

/// The most memory that the process has had, in megabytes.
int Peak_Memory()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    const QString text = QString::fromLatin1(status.readAll());
    return QRegularExpression(u"VmHWM:\\s*(\\d+)"_s).match(text).captured(1).toInt() / 1024;
}
} // namespace

/// Databases of a size or a shape that nobody would make by hand: the window comes, the tree is whole, a document is
/// listed and found.
class Test_Hostile_Folders : public QObject
{
    Q_OBJECT

private slots:
    void The_Window_Shows_Them_data()
    {
        QTest::addColumn<QByteArrayList>("statements");
        QTest::addColumn<int>("folders");
        QTest::addColumn<QString>("folder"); ///< that is chosen
        const QByteArray document = New_Documents + "values ('{1}','001','wanted','2026-01-01','2026-01-01')";
        const QByteArray work = New_Folders + "values ('001','Work',1,'1','')";
        QTest::addRow("800 lengths of ids, 1,200 documents")
            << QByteArrayList{document,
                              Counted(800) + New_Folders +
                                  "select replace(hex(zeroblob(i)),'00','001'),'f'||i,1,'1','' from n",
                              Counted(1200) + New_Documents +
                                  "select '{d'||i||'}',replace(hex(zeroblob(799)),'00','001')||substr('00'||i,-3),'t',"
                                  "'2026-01-01','2026-01-01' from n"}
            << 801 << u"001"_s;
        QTest::addRow("3,000 levels")
            << QByteArrayList{document, Counted(3000) + New_Folders +
                                            "select replace(hex(zeroblob(i)),'00','001'),'f'||i,1,'1','' from n"}
            << 3001 << u"001"_s.repeated(3000);
        QTest::addRow("298,000 folders")
            << QByteArrayList{document, work,
                              Counted(298) + New_Folders + "select '001'||substr('00'||i,-3),'f'||i,i,'1','' from n",
                              Counted(298) + ",m(j) as (select 1 union all select j+1 from m where j<999) " +
                                  New_Folders +
                                  "select '001'||substr('00'||i,-3)||substr('00'||j,-3),'g',j,'0','' from n,m"}
            << 2 + 298 + 298 * 999 << u"001298999"_s;
        QByteArrayList tables{document, work};
        for (int i = 0; i < 4000; ++i) // making more takes longer than opening them
            tables << "create table t" + QByteArray::number(i) + "(a)";
        QTest::addRow("4,000 tables") << tables << 2 << u"001"_s;
        QTest::addRow("triggers, a view and a table over each other's names")
            << QByteArrayList{document,
                              work,
                              "create view V_Info as select * from Code_Info",
                              "create trigger t1 after update on Code_Info begin delete from Cate_Info where "
                              "Cate_ID='999'; end",
                              "create trigger t2 after insert on tab_log begin select 1; end",
                              "create table \"Cate_Info ; drop\"(a check(a>0))"}
            << 2 << u"001"_s;
    }
    void The_Window_Shows_Them()
    {
        QFETCH(QByteArrayList, statements);
        QFETCH(int, folders);
        QFETCH(QString, folder);
        constexpr int Enough_Memory = 900; // megabytes
        const Test_Program program;
        {
            const auto file = Connection_Pool::Get(Database_Engine::File_Of(App().Conn_Str));
            file->Execute("begin");
            for (const QByteArray &statement : std::as_const(statements))
                file->Execute(statement);
            file->Execute("commit");
        }
        Database_Engine::Let_Go();
        const int before = Peak_Memory();
        Load_Root_Facts();
        Frm_Main window;
        window.show();
        auto &tree = Get<Tree_Pane>(window, "Trv_Code_Class");
        QCOMPARE(tree.Tree().Node_Count(), folders + 1);
        QVERIFY(tree.Select_Folder(folder));
        QVERIFY(tree.visualRect(tree.currentIndex()).intersects(tree.viewport()->rect()));
        QVERIFY(tree.Select_Folder(u"001"_s));
        const QAbstractItemModel &rows = *Get<QTreeView>(window, "Lsv_Code_Info").model();
        QVERIFY(rows.rowCount() > 0);
        QVERIFY2(Peak_Memory() - before < Enough_Memory, qPrintable(QString::number(Peak_Memory() - before)));
    }
};

QTEST_MAIN(Test_Hostile_Folders)
#include "test_hostile_folders.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/database/database.h"
#include "platform/database/recordset.h"

#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class Test_Recordset : public QObject
{
    Q_OBJECT
private slots:
    void Basic()
    {
        const QTemporaryDir folder;
        const QString conn = Database_Engine::File_Connection_String(folder.filePath(u"a.db"_s));
        Database_Engine::Create_File(conn);
        Run_Statement(
            u"CREATE TABLE Cate_Info (Cate_ID Text(250) PRIMARY KEY, Cate_Name Text(50), [Code_Num] Long DEFAULT 0, D DateTime DEFAULT Now() NOT NULL)"_s,
            conn);
        Run_Statement(u" insert into Cate_Info(cate_id,Cate_Name) values('000','回收站')"_s, conn);
        Recordset rows;
        rows.LockType = Lock_Type::Optimistic;
        rows.Open(u"select top 1 * from cate_info where cate_id like '000%' order by len(cate_id)"_s, conn);
        QVERIFY(!rows.Eof());
        QCOMPARE(rows[u"cate_name"_s].Text(), u"回收站"_s);
        QCOMPARE(rows[u"cate_name"_s].Defined_Size(), 50);
        rows.AddNew();
        rows[u"Cate_ID"_s].Set(u"001"_s);
        rows.Update();
        QCOMPARE(rows[u"code_num"_s].Value().toInt(), 0);
        QVERIFY(rows[u"D"_s].Value().toDateTime().isValid());
    }
};

QTEST_GUILESS_MAIN(Test_Recordset)
#include "test_recordset.moc"

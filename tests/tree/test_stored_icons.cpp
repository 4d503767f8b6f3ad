// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "platform/database/recordset.h"
#include "support/test_program.h"
#include "tree/stored_icons.h"

#include <QDirIterator>
#include <QTest>

using namespace Qt::StringLiterals;

class Test_Stored_Icons : public QObject
{
    Q_OBJECT

private slots:
    /// Icons that the database carries are written to data\ico\ and nowhere else, whatever their rows say.
    void Rows_Are_Written_Out_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("written");
        QTest::addRow("plain") << u"a.png"_s << true;
        QTest::addRow("chinese") << u"图 标.ico"_s << true;
        QTest::addRow("above") << u"../../evil.png"_s << false;
        QTest::addRow("above, backslash") << u"..\\..\\evil.png"_s << false;
        QTest::addRow("drive") << u"C:\\evil.png"_s << false;
        QTest::addRow("dots") << u".."_s << false;
        QTest::addRow("no name") << u""_s << false;
    }
    void Rows_Are_Written_Out()
    {
        QFETCH(QString, name);
        QFETCH(bool, written);
        const Test_Program program;
        const auto files = [&] {
            QStringList found;
            QDirIterator all(program.Path({}), QDir::Files, QDirIterator::Subdirectories);
            while (all.hasNext()) {
                if (!all.next().contains(u"Error.log") && !all.filePath().contains(u"Zelqor.db"))
                    found << all.filePath();
            }
            return found.size();
        };
        const auto before = files();
        Recordset row;
        row.LockType = Lock_Type::Optimistic;
        row.Open(u"select top 1 * from tab_file"_s, App().Conn_Str);
        row.AddNew();
        row[u"file_name"_s].Set(name);
        row[u"file_type"_s].Set(3);
        row[u"file_cont"_s].AppendChunk("picture");
        row.Update();
        Sql_Run(u"insert into tab_file(file_name,file_type) values ('attached.png',0)"_s);
        Write_Stored_Icons();
        QCOMPARE(program.Bytes(u"data/ico/"_s + name), written ? "picture" : QByteArray());
        QCOMPARE(files() - before, written ? 1 : 0);
        QCOMPARE(program.Logged().size(), written ? 0 : 1);
    }

    /// A start writes the icons that are used, and of the others so many that it is not held up.
    void Icons_Without_End_Do_Not_Hold_Up_A_Start()
    {
        const Test_Program program;
        constexpr int Many = 5000;
        for (int i = 0; i < Many; ++i)
            Sql_Run(u"insert into tab_file(file_name,file_type,file_cont) values ('%1.png',3,'x')"_s.arg(i));
        Sql_Run(u"insert into tab_file(file_name,file_type,file_cont) values ('Used.png',3,'x')"_s);
        Sql_Run(u"insert into tab_file(file_name,file_type,file_cont) values ('root.png',3,'x')"_s);
        Add_Folder(u"001"_s, u"Folder"_s);
        Sql_Run(u"update Cate_Info set Icon_Name='USED.PNG' where Cate_ID='001'"_s);
        Sql_Run(u"insert into Mess_Conf(Mess_ID,Mess_Name1) values ('COM_ICON','ROOT.PNG')"_s);
        Write_Stored_Icons();
        const QStringList names = Icon_Names();
        QVERIFY(names.contains(u"Used.png"_s) && names.contains(u"root.png"_s) && names.contains(u"0.png"_s));
        QVERIFY2(names.size() <= Many / 2, qPrintable(QString::number(names.size())));
        QCOMPARE(program.Logged(), QStringList());
    }

    void Added_Icons_Have_Names_That_Fit()
    {
        const Test_Program program;
        QCOMPARE(Add_Stored_Icon(u"it's a/very:long name of an icon.PNG"_s, "1"), u"its a_very_long .png"_s);
        QCOMPARE(Add_Stored_Icon(u"its a_very_long name.png"_s, "2"), u"its a_very_long2.png"_s);
        QCOMPARE(Add_Stored_Icon(u".png"_s, "3"), u"icon.png"_s);
        QCOMPARE(Icon_Names(), QStringList({u"icon.png"_s, u"its a_very_long .png"_s, u"its a_very_long2.png"_s}));
        QCOMPARE(program.Bytes(u"data/ico/its a_very_long2.png"_s), "2");
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file where file_type=3"_s), u"3"_s);
    }
};

QTEST_GUILESS_MAIN(Test_Stored_Icons)
#include "test_stored_icons.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "exchange/directory_export.h"
#include "exchange/directory_import.h"
#include "platform/files/paths.h"
#include "support/stopping_work.h"
#include "support/test_program.h"
#include "users/scrambling.h"

#include <QDir>
#include <QDirIterator>
#include <QTest>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// Directories go in and come out again, and every file is accounted for.
class Test_Directories : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    Directory_Import Plan(const QString &folder = u"001"_s)
    {
        Directory_Import plan;
        plan.directory = m_program->Path(u"in/"_s);
        plan.folder = folder;
        plan.found =
            Files::Walk_Directory(plan.directory, u"*.*"_s, true, [](const QString &, qint64) { return true; });
        for (const Files::Found_File &file : plan.found.files)
            plan.paths << Row_Of(file).Path();
        return plan;
    }
    QStringList Lines(const QString &report)
    {
        QString text = QString::fromUtf8(Files::Read_Bytes(report));
        QStringList lines = text.split(u" \r\n\r\n"_s);
        for (QString &line : lines)
            line.replace(m_program->Path(QString()), u"~"_s);
        return lines;
    }
    QMap<QString, QByteArray> Tree(const QString &directory)
    {
        QMap<QString, QByteArray> files;
        QDirIterator all(m_program->Path(directory), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (all.hasNext()) {
            const QString path = all.next();
            files.insert(path.mid(m_program->Path(directory).size()), Files::Read_Bytes(path));
        }
        return files;
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"top"_s);
        for (const char *name : {"in", "in/sub", "in/sub/deep", "out"})
            QVERIFY(QDir().mkpath(m_program->Path(QLatin1String(name))));
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Report_Accounts_For_Every_Entry()
    {
        m_program->Write(u"in/b.TXT"_s, "two");
        m_program->Write(u"in/a.txt"_s, "");
        m_program->Write(u"in/sub/deep/笔记.txt"_s, "x");
        m_program->Write(u"in/sub/sub"_s, "its folder holds its name");
        m_program->Write(u"in/sub/deep/line\nbreak.txt"_s, "x");
        QCOMPARE(symlink(".", m_program->Path(u"in/loop"_s).toUtf8().constData()), 0);
        QCOMPARE(mkfifo(m_program->Path(u"in/pipe"_s).toUtf8().constData(), 0600), 0);
        QCOMPARE(symlink("a.txt", m_program->Path(u"in/bad\xff.txt"_s).toUtf8().constData()), 0);

        Unwatched_Work work;
        QStringList added;
        const Directory_Import plan = Plan();
        const Import_Result result =
            Import_Directory(plan, work, [&](const QString &name, const QString &) { added << name; });
        QCOMPARE(added, QStringList({u"a.txt"_s, u"b.TXT"_s, u"笔记.txt"_s}));
        QCOMPARE(result.failed.size(), 1);
        const QStringList lines = Lines(result.report);
        const QString time = u"2"_s; // a year
        QCOMPARE(lines[0], u" -------Zelqor--------"_s);
        QCOMPARE(lines[1], u" Count:文件数：4文件夹数：2"_s);
        QVERIFY(lines[2].startsWith(u"  Start："_s + time));
        QCOMPARE(lines.mid(3, 5),
                 QStringList({u" log："_s, u" 1 ~/in/a.txt导入节点：成功"_s, u" 2 ~/in/b.TXT导入节点：成功"_s,
                              u" 3 ~/in//sub导入节点： 失败"_s, u" 4 ~/in/sub/deep/笔记.txt导入节点：deep成功"_s}));
        QVERIFY(lines.contains(u" 找到 8 = 导入 3 + 失败 1 + 未导入 4"_s));
        QVERIFY(lines.contains(u" ~/in/loop ： 符号链接，已跳过。"_s));
        QVERIFY(lines.at(lines.size() - 2).startsWith(u"  End："_s + time));
        QCOMPARE(Sql_Rows(u"select Cate_ID,Cate_Name from Cate_Info where Cate_ID like '001_%' order by Cate_ID"_s),
                 (QList<QStringList>{{u"001001"_s, u"sub"_s}, {u"001001001"_s, u"deep"_s}}));
        QCOMPARE(Known_Paths(plan).size(), 3);
    }

    void A_Run_That_Is_Ended_Writes_Its_Report()
    {
        for (const char *name : {"in/1.txt", "in/2.txt", "in/3.txt"})
            m_program->Write(QLatin1String(name), "x");
        Directory_Import plan = Plan();
        plan.title = Title_Rule::Without_Last_Letters;
        Stopping_Work work(2);
        const Import_Result result = Import_Directory(plan, work, {});
        QVERIFY(result.stopped);
        QVERIFY(Lines(result.report).contains(u" 找到 3 = 导入 2 + 失败 0 + 未导入 1"_s));
        QCOMPARE(Sql_Rows(u"select Code_Title from Code_Info order by Code_Title"_s),
                 (QList<QStringList>{{u"1"_s}, {u"2"_s}}));
    }

    void What_Went_In_Comes_Out()
    {
        QByteArray all(300'000, Qt::Uninitialized);
        for (qsizetype i = 0; i < all.size(); ++i)
            all[i] = static_cast<char>(i * i >> 7);
        m_program->Write(u"in/gbk.txt"_s, "\xd6\xd0\xce\xc4");
        m_program->Write(u"in/A.txt"_s, "upper");
        m_program->Write(u"in/a.txt"_s, "lower");
        m_program->Write(u"in/sub/random.txt"_s, all);
        m_program->Write(u"in/sub/deep/n.rtf"_s, "{\\rtf1 n}");
        Unwatched_Work work;
        Directory_Import plan = Plan();
        plan.title = Title_Rule::Without_Last_Letters;
        QCOMPARE(Import_Directory(plan, work, {}).done, 5);

        Export_Questions ask{[](const QString &) { return QString(); },
                             [](const QString &) {
                                 return Replacing::Yes;
                             }};
        const Export_Result result = Export_Directory(u"001"_s, m_program->Path(u"out"_s), ask, work);
        QCOMPARE(result.failed.size(), 0);
        QMap<QString, QByteArray> expected;
        const auto in = Tree(u"in"_s);
        for (auto file = in.begin(); file != in.end(); ++file) {
            const qsizetype dot = file.key().lastIndexOf(u'.');
            expected.insert(u"/top"_s + file.key().left(dot) + file.key().mid(dot).toUpper(), file.value());
        }
        QCOMPARE(Tree(u"out"_s), expected);
        QVERIFY(Lines(result.report).contains(u" 导出文件：gbk.TXT成功"_s));
        QVERIFY(QFileInfo(m_program->Path(u"out/top/gbk.TXT"_s)).permissions() & QFileDevice::ReadOther);
    }

    void No_Document_Leaves_The_Directory_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("folder");
        QTest::addRow("up") << u"../../x"_s << u"top"_s;
        QTest::addRow("absolute") << u"/tmp/x"_s << u"top"_s;
        QTest::addRow("too long") << QString(255, u'x') << u"top"_s;
        QTest::addRow("a folder that goes up") << u"x"_s << u".."_s;
        QTest::addRow("a folder with a way") << u"x"_s << u"a/../../b"_s;
        QTest::addRow("a link to another place") << u"x"_s << u"link"_s;
    }
    void No_Document_Leaves_The_Directory()
    {
        QFETCH(QString, title);
        QFETCH(QString, folder);
        m_program->Write(u"in/1.txt"_s, "x");
        QCOMPARE(symlink("../in", m_program->Path(u"out/link"_s).toUtf8().constData()), 0);
        Unwatched_Work work;
        QCOMPARE(Import_Directory(Plan(), work, {}).done, 1);
        Sql_Run(u"update Code_Info set Code_Title = '%1'"_s.arg(title));
        Sql_Run(u"update Cate_Info set Cate_Name = '%1' where Cate_ID = '001'"_s.arg(folder));
        const Export_Questions ask{[](const QString &) { return QString(); },
                                   [](const QString &) {
                                       return Replacing::Yes;
                                   }};
        const Export_Result result = Export_Directory(u"001"_s, m_program->Path(u"out"_s), ask, work);
        QCOMPARE(result.done, 0);
        QVERIFY(!result.failed.isEmpty());
        QVERIFY(Tree(u"out"_s).isEmpty());
        QCOMPARE(Tree(u"in"_s).size(), 1);
        QVERIFY(!QFileInfo::exists(m_program->Path(u"x.TXT"_s)));
    }

    void What_Is_Said_For_All_Is_Not_Asked_Again_data()
    {
        QTest::addColumn<Replacing>("answer");
        QTest::addColumn<int>("asked");
        QTest::addColumn<QString>("files");
        QTest::newRow("yes") << Replacing::Yes << 2 << u"a.TXT=new b.TXT=new"_s;
        QTest::newRow("yes to all") << Replacing::All << 1 << u"a.TXT=new b.TXT=new"_s;
        QTest::newRow("no to all") << Replacing::None << 1 << u"a.TXT=old a~1.TXT=new b.TXT=old b~1.TXT=new"_s;
        QTest::newRow("cancel") << Replacing::Stop << 1 << u"a.TXT=old b.TXT=old"_s;
    }
    void What_Is_Said_For_All_Is_Not_Asked_Again()
    {
        QFETCH(Replacing, answer);
        QFETCH(int, asked);
        Unwatched_Work work;
        QVERIFY(QDir().mkpath(m_program->Path(u"out/top"_s)));
        for (const char *name : {"a", "b"}) {
            m_program->Write(u"in/%1.txt"_s.arg(QLatin1String(name)), "new");
            m_program->Write(u"out/top/%1.TXT"_s.arg(QLatin1String(name)), "old");
        }
        Directory_Import plan = Plan();
        plan.title = Title_Rule::Without_Last_Letters;
        QCOMPARE(Import_Directory(plan, work, {}).done, 2);
        int questions = 0;
        const Export_Questions ask{{}, [&](const QString &) {
                                       ++questions;
                                       return answer;
                                   }};
        const Export_Result result = Export_Directory(u"001"_s, m_program->Path(u"out"_s), ask, work);
        QCOMPARE(result.stopped, answer == Replacing::Stop);
        QCOMPARE(questions, asked);
        QStringList files;
        for (const auto &[name, bytes] : Tree(u"out/top"_s).asKeyValueRange())
            files << name.mid(1) + u'=' + QString::fromUtf8(bytes);
        QTEST(files.join(u' '), "files");
    }

    void Names_That_Are_Taken_And_Locks_Are_Asked_For()
    {
        Add_Folder(u"001001"_s, u"locked"_s, -1, Scramble_Text(u"pw"_s));
        m_program->Write(u"in/same.txt"_s, "new");
        QVERIFY(QDir().mkpath(m_program->Path(u"out/top"_s)));
        m_program->Write(u"out/top/same.TXT"_s, "old");
        Unwatched_Work work;
        Directory_Import plan = Plan();
        plan.title = Title_Rule::Without_Last_Letters;
        QCOMPARE(Import_Directory(plan, work, {}).done, 1);
        QStringList asked;
        const Export_Questions ask{[&](const QString &folder) {
                                       asked << folder;
                                       return u"wrong"_s;
                                   },
                                   [&](const QString &title) {
                                       asked << title;
                                       return Replacing::No;
                                   }};
        const Export_Result result = Export_Directory(u"001"_s, m_program->Path(u"out"_s), ask, work);
        QVERIFY(result.wrong_password);
        QCOMPARE(asked, QStringList({u"same"_s, u"locked"_s}));
        QCOMPARE(Tree(u"out"_s),
                 (QMap<QString, QByteArray>{{u"/top/same.TXT"_s, "old"}, {u"/top/same~1.TXT"_s, "new"}}));
        QVERIFY(Lines(result.report).at(Lines(result.report).size() - 2).startsWith(u"  End："_s));
    }
};

QTEST_MAIN(Test_Directories)
#include "test_directories.moc"

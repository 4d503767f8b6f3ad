// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/files/atomic_file.h"
#include "platform/files/paths.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <functional>
#include <optional>
#ifdef Q_OS_LINUX
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;
using namespace Files;

namespace
{
struct Outcome {
    qint32 number;
    Failure failure;
    bool operator==(const Outcome &) const = default;
};

std::optional<Outcome> Error_Of(const std::function<void()> &action)
{
    try {
        action();
    } catch (const Run_Time_Error &error) {
        return Outcome{error.number, error.failure};
    }
    return std::nullopt;
}
} // namespace

class Test_Files : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;
    [[nodiscard]] QString At(const QString &name) const { return m_folder.filePath(name); }

private slots:
    void initTestCase()
    {
        QVERIFY(QDir(m_folder.path()).mkpath("Data/Sub Dir"));
        for (const char *name : {"Data/Config.INI", "Data/Sub Dir/a.txt", "Data/Sub Dir/A.TXT", "Data/résumé.rtf"})
            QVERIFY(QFile(At(QString::fromUtf8(name))).open(QIODevice::WriteOnly));
    }

    void Native_Path_Finds_Names_In_Any_Case_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("native");
        QTest::newRow("as spelled") << "Data/Config.INI"
                                    << "Data/Config.INI";
        QTest::newRow("backslashes") << "Data\\Sub Dir\\a.txt"
                                     << "Data/Sub Dir/a.txt";
        QTest::newRow("every name differs") << "DATA\\CONFIG.ini"
                                            << "Data/Config.INI";
        QTest::newRow("exact one wins") << "data\\sub dir\\A.TXT"
                                        << "Data/Sub Dir/A.TXT";
        QTest::newRow("beyond ASCII") << "data\\RÉSUMÉ.RTF"
                                      << "Data/résumé.rtf";
        QTest::newRow("unknown end") << "data\\New\\File.txt"
                                     << "Data/New/File.txt";
        QTest::newRow("unknown middle stops matching") << "x\\data"
                                                       << "x/data";
        QTest::newRow("doubled separators") << "\\data\\\\/config.ini"
                                            << "Data/Config.INI";
        QTest::newRow("final separator") << "data\\"
                                         << "Data/";
        QTest::newRow("parent") << "data\\..\\DATA\\config.ini"
                                << "Data/../Data/Config.INI";
        QTest::newRow("blanks at the end") << "data\\config.ini  "
                                           << "Data/Config.INI";
        QTest::newRow("a file is no directory") << "data\\config.ini\\x"
                                                << "Data/Config.INI/x";
    }
    void Native_Path_Finds_Names_In_Any_Case()
    {
        QFETCH(QString, written);
        QFETCH(QString, native);
        QCOMPARE(Native_Path(m_folder.path() + u'\\' + written), At(native));
    }

    void Paths_Are_Told_Apart_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("absolute");
        QTest::addColumn<QString>("asDirectory");
        QTest::newRow("empty") << "" << false << "";
        QTest::newRow("drive") << "C:\\x" << true << "C:\\x\\";
        QTest::newRow("drive without root") << "C:x" << false << "C:x\\";
        QTest::newRow("one name") << "backup" << false << "backup\\";
        QTest::newRow("relative by use") << "\\data\\a.db" << false << "\\data\\a.db\\";
        QTest::newRow("root") << "/" << true << "/";
        QTest::newRow("native") << "/home/x" << true << "/home/x/";
        QTest::newRow("mixed") << "/home/x\\data" << true << "/home/x\\data\\";
    }
    void Paths_Are_Told_Apart()
    {
        QFETCH(QString, path);
        QTEST(Is_Absolute(path), "absolute");
        QTEST(With_Final_Separator(path), "asDirectory");
    }

    void Plain_Names_Cannot_Leave_A_Folder_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("plain");
        for (const char *name : {"a.txt", "报告 1.docx", "..a", "a..b", "a.", ".profile", " x"})
            QTest::newRow(name) << QString::fromUtf8(name) << true;
        for (const char *name : {"", ".", "..", ".. ", "  ", "a/b", "a\\b", "../a", "C:a", "a\nb", "a\x7f"})
            QTest::addRow("refused %s", QByteArray(name).toPercentEncoding(" /\\:").constData())
                << QString::fromUtf8(name) << false;
        QTest::newRow("NUL") << QString("a").append(QChar(0)) << false;
    }
    void Plain_Names_Cannot_Leave_A_Folder()
    {
        QFETCH(QString, name);
        QTEST(Is_Plain_Name(name), "plain");
    }

    void Titles_Become_Plain_Names_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("name");
        QTest::addRow("signs") << u" a/b: c\\d*?\"<>|\x7f "_s << u"a_b_ c_d_______"_s;
        QTest::addRow("lines") << u"one\r\n two\t三"_s << u"one two 三"_s;
        QTest::addRow("blank") << u" \n"_s << u"new"_s;
        QTest::addRow("long, with a blank at the cut") << QString(79, u'x') + u" y"_s << QString(79, u'x');
        QTest::addRow("half a character at the cut") << QString(79, u'x') + u"😀"_s << QString(79, u'x');
    }
    void Titles_Become_Plain_Names()
    {
        QFETCH(QString, title);
        const QString name = Name_For(title, u"new"_s);
        QTEST(name, "name");
        QVERIFY(Is_Plain_Name(name));
    }

    void Failures_Have_Their_Numbers()
    {
        const QString file = At("Data/Config.INI");
        const QString folder = At("Data");
        const Outcome missing{Error_Number::File_Not_Found, Failure::File_Not_Found};
        const Outcome access{Error_Number::Path_Access, Failure::Path_Access};
        QVERIFY(Error_Of([&] { (void)Read_Bytes(At("none")); }) == missing);
        QVERIFY(Error_Of([&] { (void)Read_Bytes(folder); }) == access);
        QVERIFY(Error_Of([&] { Write_Bytes(folder, "x"); }) == access);
        QVERIFY(Error_Of([&] { Write_Bytes("/dev/null", "x"); }) == access);
        QVERIFY(Error_Of([&] { Write_Bytes("", "x"); }) == access);
        QVERIFY(Error_Of([&] { Write_Bytes(At("none/x"), "x"); }) == access);
        QVERIFY(Error_Of([&] { Copy_File(At("none"), At("y")); }) == missing);
        QVERIFY(!QFile::exists(At("y")));
        QVERIFY(Error_Of([&] { Delete_If_Present(folder); }) == access);
        QVERIFY(Error_Of([&] { Delete_If_Present(At("none")); }) == std::nullopt);
        QVERIFY(Error_Of([&] { Make_Directory(file + "/x"); }) == access);
        QVERIFY(Error_Of([&] { Make_Directory(file); }) == access);
    }

    void Writing_Where_It_Is_Forbidden_Fails_With_70()
    {
#ifdef Q_OS_LINUX
        if (geteuid() == 0)
            QSKIP("nothing is forbidden to root");
#endif
        const QString file = At("read_only.txt");
        Write_Bytes(file, "old");
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        const Outcome denied{Error_Number::Permission_Denied, Failure::Read_Only};
        QVERIFY(Error_Of([&] { Write_Bytes(file, "new"); }) == denied);
        QCOMPARE(Read_Bytes(file), QByteArray("old"));
    }

    void A_Copy_Is_Equal_And_Takes_The_Old_Files_Place()
    {
        const QByteArray bytes = QByteArray(200'001, 'z').replace(77, 3, QByteArray("\0\xff\r", 3));
        Write_Bytes(At("from"), bytes);
        Write_Bytes(At("to"), "old");
        Copy_File(At("FROM"), At("to"));
        QCOMPARE(Read_Bytes(At("to")), bytes);
        Copy_File(At("to"), At("to"));
        QCOMPARE(Read_Bytes(At("to")), bytes);
        Delete_If_Present(At("to"));
        QVERIFY(!QFile::exists(At("to")));
    }

    void A_Writer_That_Stops_Leaves_The_Old_File()
    {
        Write_Bytes(At("kept"), "old");
        const QStringList before = QDir(m_folder.path()).entryList();
        {
            Atomic_File file(At("kept"));
            file.Write(QByteArray(1 << 20, 'n'));
        }
        QCOMPARE(Read_Bytes(At("kept")), QByteArray("old"));
        QCOMPARE(QDir(m_folder.path()).entryList(), before);
    }

    void A_Scratch_File_Is_Written_Over()
    {
        for (const QByteArray &bytes :
             {QByteArray(100'000, 'x'), QByteArray("shorter"), QByteArray(), QByteArray("y")}) {
            Write_Bytes(At("scratch"), bytes, Durability::Scratch);
            QCOMPARE(Read_Bytes(At("scratch")), bytes);
        }
        Atomic_File(At("scratch"), Durability::Scratch).Write("half");
        QVERIFY(!QFile::exists(At("scratch")));
    }

    void A_Full_Disk_Fails_With_61_And_Leaves_The_Old_File()
    {
#ifdef Q_OS_LINUX
        const QString disk = At("disk");
        Make_Directory(disk);
        if (unshare(CLONE_NEWNS) != 0 || mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            mount("tmpfs", qPrintable(disk), "tmpfs", 0, "size=128k") != 0)
            QSKIP("no right to mount a small disk");
        const QString file = disk + "/a";
        Write_Bytes(file, "old");
        const Outcome full{Error_Number::Disk_Full, Failure::Disk_Full};
        for (const int size : {130'000, 1 << 20}) // cut short, and with no room at all
            QVERIFY(Error_Of([&] { Write_Bytes(file, QByteArray(size, 'n')); }) == full);
        QVERIFY(Error_Of([&] { Write_Bytes(disk + "/b", QByteArray(1 << 20, 'n'), Durability::Scratch); }) == full);
        QVERIFY(!QFile::exists(disk + "/b"));
        QCOMPARE(Read_Bytes(file), QByteArray("old"));
        QVERIFY(mount(nullptr, qPrintable(disk), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0);
        const Outcome denied{Error_Number::Permission_Denied, Failure::Read_Only};
        QVERIFY(Error_Of([&] { Write_Bytes(file, "new"); }) == denied);
        umount(qPrintable(disk));
#else
        QSKIP("needs a mount of its own");
#endif
    }

    void Text_Is_Utf8_Or_Gb18030_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << QByteArray() << "";
        QTest::newRow("ASCII") << QByteArray("a\r\n") << "a\r\n";
        QTest::newRow("UTF-8") << QByteArray("\xE5\xAE\x8B\xE4\xBD\x93") << "宋体";
        QTest::newRow("UTF-8 mark") << QByteArray("\xEF\xBB\xBF[x]") << "[x]";
        QTest::newRow("two bytes each") << QByteArray("\xCB\xCE\xCC\xE5=1") << "宋体=1";
        QTest::newRow("four bytes") << QByteArray("\x94\x39\xDA\x33") << "💩";
        QTest::newRow("UTF-8 cut off") << QByteArray("\xE5\xAE") << "瀹";
    }
    void Text_Is_Utf8_Or_Gb18030()
    {
        QFETCH(QByteArray, bytes);
        QTEST(Decode_Text(bytes), "text");
    }
};

QTEST_GUILESS_MAIN(Test_Files)
#include "test_files.moc"

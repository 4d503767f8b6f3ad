// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/files/paths.h"
#include "platform/profile/profile.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

class Test_Profile : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;
    QString m_file = m_folder.filePath("Config.ini");

private slots:
    void init() { Files::Delete_If_Present(m_file); }

    void A_Value_Is_Read_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("value");
        QTest::newRow("plain") << QByteArray("[Col]\r\nKey=v\r\n") << "v";
        QTest::newRow("any case") << QByteArray("[COL]\r\nkEY=v") << "v";
        QTest::newRow("blanks around everything") << QByteArray(" [ Col ] x\n\t Key \t= \t v w \t\n") << "v w";
        QTest::newRow("one blank") << QByteArray("[Col]\nKey= \n") << "";
        QTest::newRow("quotes keep blanks") << QByteArray("[Col]\nKey=\" v \"\n") << " v ";
        QTest::newRow("only one pair") << QByteArray("[Col]\nKey='\"v\"'\n") << "\"v\"";
        QTest::newRow("one quote") << QByteArray("[Col]\nKey=\"\n") << "\"";
        QTest::newRow("unequal quotes") << QByteArray("[Col]\nKey=\"v'\n") << "\"v'";
        QTest::newRow("equals sign in the value") << QByteArray("[Col]\nKey=a=b;c\n") << "a=b;c";
        QTest::newRow("first key") << QByteArray("[Col]\nKey=1\nKey=2\n") << "1";
        QTest::newRow("first section") << QByteArray("[Col]\nOther=1\n[col]\nKey=2\n") << "";
        QTest::newRow("comment") << QByteArray("[Col]\n;Key=1\nKey=2\n") << "2";
        QTest::newRow("no key line") << QByteArray("[Col]\nKey\nKey=2\n") << "2";
        QTest::newRow("before any section") << QByteArray("Key=1\n[Col]\n") << "";
        QTest::newRow("other section") << QByteArray("[Col]\n[Page]\nKey=1\n") << "";
        QTest::newRow("unclosed head") << QByteArray("[Col\nKey=1\n") << "";
        QTest::newRow("GB18030") << QByteArray("[Col]\r\nKey=\xCB\xCE\xCC\xE5\r\n") << "宋体";
        QTest::newRow("a stray byte elsewhere") << QByteArray("[Col]\r\nOther=\xFF\r\nKey=宋体\r\n") << "宋体";
        QTest::newRow("GB18030 that could be UTF-8")
            << QByteArray("[Col]\r\nA=\xCB\xCE\r\nB=\xCB\xCE\r\nKey=\xC4\xA3\r\n") << "模";
        QTest::newRow("mark") << QByteArray("\xEF\xBB\xBF[Col]\r\nKey=1\r\n") << "1";
        QTest::newRow("wide blank is a character") << QByteArray("[Col]\nKey=\xE3\x80\x80\n") << QString(QChar(0x3000));
    }
    void A_Value_Is_Read()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, value);
        Files::Write_Bytes(m_file, file);
        QCOMPARE(Profile::Read(m_file, "Col", "Key"), value);
        QCOMPARE(Profile::Snapshot(m_file).Value("col", "KEY"), value);
    }

    void A_Key_Is_Set_And_Nothing_Else_Changes_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("empty file") << QByteArray() << "v" << QByteArray("[Col]\r\nKey=v\r\n");
        QTest::newRow("replaced") << QByteArray("[Col]\r\nKEY = 1 \r\nB=2\r\n") << "v"
                                  << QByteArray("[Col]\r\nKEY =v\r\nB=2\r\n");
        QTest::newRow("line ends stay") << QByteArray("[Col]\nKey=1\n\n;c\n") << "v"
                                        << QByteArray("[Col]\nKey=v\n\n;c\n");
        QTest::newRow("first of two") << QByteArray("[Col]\nKey=1\nKey=2\n") << "v"
                                      << QByteArray("[Col]\nKey=v\nKey=2\n");
        QTest::newRow("last line") << QByteArray("[Col]\r\nKey=") << "v" << QByteArray("[Col]\r\nKey=v");
        QTest::newRow("new key") << QByteArray("[Col]\r\nA=1\r\n\r\n[Page]\r\nKey=x\r\n") << "v"
                                 << QByteArray("[Col]\r\nA=1\r\nKey=v\r\n\r\n[Page]\r\nKey=x\r\n");
        QTest::newRow("new key, open line") << QByteArray("[Col]") << "v" << QByteArray("[Col]\r\nKey=v\r\n");
        QTest::newRow("new section, open line")
            << QByteArray("junk\n[A]\nb=1") << "v" << QByteArray("junk\n[A]\nb=1\r\n[Col]\r\nKey=v\r\n");
        QTest::newRow("mark stays") << QByteArray("\xEF\xBB\xBF[Col]\r\n") << "v"
                                    << QByteArray("\xEF\xBB\xBF[Col]\r\nKey=v\r\n");
        QTest::newRow("GB18030 becomes UTF-8")
            << QByteArray("[Col]\r\nA=\xCB\xCE\r\n") << "体" << QByteArray("[Col]\r\nA=宋\r\nKey=体\r\n");
        QTest::newRow("a stray byte stays in its line") << QByteArray("[Col]\r\nA=a\xFF\r\nB=宋\r\n") << "体"
                                                        << QByteArray("[Col]\r\nA=a\xFF\r\nB=宋\r\nKey=体\r\n");
        QTest::newRow("NUL elsewhere") << QByteArray("[Col]\r\nA=\0\r\n", 12) << "v"
                                       << QByteArray("[Col]\r\nA=\0\r\nKey=v\r\n", 19);
        QTest::newRow("cannot start a section")
            << QByteArray("[Col]\r\n") << "v\r\n[Page]\nKey=1" << QByteArray("[Col]\r\nKey=v  [Page] Key=1\r\n");
    }
    void A_Key_Is_Set_And_Nothing_Else_Changes()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, value);
        Files::Write_Bytes(m_file, before);
        Profile::Write(m_file, "Col", "Key", value);
        QTEST(Files::Read_Bytes(m_file), "after");
    }

    void A_Missing_File_Is_Empty_And_Made_By_The_First_Write()
    {
        QCOMPARE(Profile::Read(m_file, "Col", "Key"), QString());
        QVERIFY_EXCEPTION_THROWN(Profile::Snapshot{m_file}, Run_Time_Error);
        Profile::Write(m_file, "Col", "Key", "");
        QCOMPARE(Files::Read_Bytes(m_file), QByteArray("[Col]\r\nKey=\r\n"));
        QVERIFY(Profile::Snapshot(m_file).Contains("Col", "key"));
    }

    void A_File_That_Cannot_Be_Read_Is_Not_Written_Over()
    {
        QCOMPARE(Profile::Read(m_folder.path(), "Col", "Key"), QString());
        QVERIFY_EXCEPTION_THROWN(Profile::Write(m_folder.path(), "Col", "Key", "v"), Run_Time_Error);
    }

    void A_Snapshot_Lists_Names_In_Order()
    {
        Files::Write_Bytes(m_file, "x=0\n[Zeta]\nb=1\nA=2\nB=3\n[alpha]\nc=1\n[ZETA]\nd=4\n");
        const Profile::Snapshot all(m_file);
        QCOMPARE(all.Sections(), QStringList({"Zeta", "alpha"}));
        QCOMPARE(all.Keys("zeta"), QStringList({"b", "A"}));
        QCOMPARE(all.Keys("none"), QStringList());
    }

    /// Any bytes can be read, and a key set among them is found again.
    void Hostile_Bytes_Do_No_Harm()
    {
        QRandomGenerator random(20240229);
        const QByteArray letters("[]=;\"' \t\r\n\0KeyCol\xCB\xEF\xFF", 21);
        for (int round = 0; round < 300; ++round) {
            QByteArray bytes;
            for (int i = random.bounded(300); i > 0; --i)
                bytes += letters.at(random.bounded(int(letters.size())));
            Files::Write_Bytes(m_file, bytes);
            Profile::Snapshot{m_file};
            const QString value = QString::number(round);
            Profile::Write(m_file, "Wanted", "Key", value);
            QCOMPARE(Profile::Read(m_file, "wanted", "key"), value);
            QCOMPARE(Profile::Snapshot(m_file).Value("Wanted", "Key"), value);
        }
        Files::Write_Bytes(m_file, "[Col]\nKey=" + QByteArray(5'000'000, 'x'));
        QCOMPARE(Profile::Read(m_file, "Col", "Key").size(), 5'000'000);
    }
};

QTEST_GUILESS_MAIN(Test_Profile)
#include "test_profile.moc"

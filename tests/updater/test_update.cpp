// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "support/test_program.h"
#include "updater/update.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Update : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    void Run(const QByteArray &list)
    {
        m_program->Write(u"UPDATE.RIS"_s, list);
        Update::Apply(Update::Read_List(m_program->Path(u"UPDATE.RIS"_s), m_program->Path(u""_s)));
    }

private slots:
    void init()
    {
        m_program.emplace(Test_Program::Start::Bare);
        m_program->Write(u"first.txt"_s, "old one");
        m_program->Write(u"update/first.txt"_s, "new one");
        m_program->Write(u"update/deep/second.txt"_s, "new two");
    }
    void cleanup() { m_program.reset(); }

    void Files_Take_Their_Places()
    {
        const QByteArray digest = QCryptographicHash::hash("new one", QCryptographicHash::Sha256).toHex().toUpper();
        Run("[Setup]\nSource=update\n[File 01]\nSource=first.txt\nSha256=" + digest +
            "\n[File 02]\nSource=deep\\second.txt\nTarget=other\\2.txt\n[File 04]\nSource=missing\n");
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("new one"));
        QCOMPARE(m_program->Bytes(u"other/2.txt"_s), QByteArray("new two"));
    }

    void A_Bad_List_Changes_Nothing_data()
    {
        QTest::addColumn<QByteArray>("second"); // the section behind a good one
        QTest::newRow("missing source") << QByteArray("Source=none.txt");
        QTest::newRow("wrong digest") << QByteArray("Source=first.txt\nTarget=x\nSha256=00");
        QTest::newRow("source above the folder") << QByteArray("Source=..\\first.txt\nTarget=x");
        QTest::newRow("target above the folder") << QByteArray("Source=first.txt\nTarget=../x");
        QTest::newRow("absolute target") << QByteArray("Source=first.txt\nTarget=/tmp/x");
        QTest::newRow("drive") << QByteArray("Source=first.txt\nTarget=C:\\x");
        QTest::newRow("through a link") << QByteArray("Source=first.txt\nTarget=link\\x");
        QTest::newRow("through a link of another spelling") << QByteArray("Source=first.txt\nTarget=LINK\\x");
        QTest::newRow("two files for one place") << QByteArray("Source=deep\\second.txt\nTarget=FIRST.TXT");
        QTest::newRow("a folder in its place") << QByteArray("Source=first.txt\nTarget=update");
    }

    void A_Bad_List_Changes_Nothing()
    {
        QFETCH(QByteArray, second);
        const QTemporaryDir outside;
        QVERIFY(QFile::link(outside.path(), m_program->Path(u"link"_s)));
        QVERIFY_EXCEPTION_THROWN(Run("[Setup]\nSource=update\n[File 01]\nSource=first.txt\n[File 02]\n" + second),
                                 Run_Time_Error);
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("old one"));
        QVERIFY(!QFile::exists(m_program->Path(u"x"_s)));
        QVERIFY(!QFile::exists(outside.filePath(u"x"_s)));
    }

    void A_File_That_Cannot_Take_Its_Place_Brings_The_Others_Back()
    {
        // The third file's folder stands where the second file belongs, which shows only when the second is placed.
        const QByteArray list = "[Setup]\nSource=update\n[File 01]\nSource=first.txt\n"
                                "[File 02]\nSource=first.txt\nTarget=fresh\n"
                                "[File 03]\nSource=first.txt\nTarget=fresh\\x\n";
        QVERIFY_EXCEPTION_THROWN(Run(list), Run_Time_Error);
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("old one"));
        QVERIFY(!QFileInfo(m_program->Path(u"fresh"_s)).isFile());
        QVERIFY(!QFile::exists(m_program->Path(u"first.txt.old"_s)));
    }
};

QTEST_GUILESS_MAIN(Test_Update)
#include "test_update.moc"

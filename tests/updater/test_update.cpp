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

    /// A section "File NN", with the digest that the source has.
    static QByteArray File(int number, const QByteArray &source, const QByteArray &target = {})
    {
        const QByteArray bytes = source.startsWith("deep") ? "new two" : "new one";
        const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
        return "[File 0" + QByteArray::number(number) + "]\nSource=" + source +
               (target.isEmpty() ? QByteArray() : "\nTarget=" + target) + "\nSha256=" + digest.toUpper() + '\n';
    }
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
        Run("[Setup]\nSource=update\n" + File(1, "first.txt") + File(2, "deep/second.txt", "other\\2.txt") +
            "[File 04]\nSource=missing\n");
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("new one"));
        QCOMPARE(m_program->Bytes(u"other/2.txt"_s), QByteArray("new two"));
    }

    void A_Bad_List_Changes_Nothing_data()
    {
        QTest::addColumn<QByteArray>("second"); // behind a good one
        QTest::newRow("missing source") << File(2, "none.txt");
        QTest::newRow("wrong digest") << QByteArray("[File 02]\nSource=first.txt\nTarget=x\nSha256=00");
        QTest::newRow("no digest") << QByteArray("[File 02]\nSource=first.txt\nTarget=x");
        QTest::newRow("source above the folder") << File(2, "..\\first.txt", "x");
        for (const char *target : {"../x", "/tmp/x", "C:\\x", "link\\x", "LINK\\x", "FIRST.TXT", "update", "Config.ini",
                                   "DATA\\ico\\x", "notes.db", "backup/x"})
            QTest::addRow("target %s", QByteArray(target).replace('\\', '/').constData())
                << File(2, "deep/second.txt", target);
    }

    void A_Bad_List_Changes_Nothing()
    {
        QFETCH(QByteArray, second);
        const QTemporaryDir outside;
        QVERIFY(QFile::link(outside.path(), m_program->Path(u"link"_s)));
        m_program->Write(u"notes.db"_s, "SQLite format 3");
        QVERIFY_EXCEPTION_THROWN(Run("[Setup]\nSource=update\n" + File(1, "first.txt") + second), Run_Time_Error);
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("old one"));
        QVERIFY(!QFile::exists(m_program->Path(u"x"_s)) && !QFile::exists(m_program->Path(u"data/ico/x"_s)));
        QCOMPARE(m_program->Bytes(u"notes.db"_s), QByteArray("SQLite format 3"));
        QVERIFY(!QFile::exists(outside.filePath(u"x"_s)));
    }

    void A_File_That_Cannot_Take_Its_Place_Brings_The_Others_Back()
    {
        // The third file's folder stands where the second file belongs, which shows only when the second is placed.
        const QByteArray list = "[Setup]\nSource=update\n" + File(1, "first.txt") + File(2, "first.txt", "fresh") +
                                File(3, "first.txt", "fresh\\x");
        QVERIFY_EXCEPTION_THROWN(Run(list), Run_Time_Error);
        QCOMPARE(m_program->Bytes(u"first.txt"_s), QByteArray("old one"));
        QVERIFY(!QFileInfo(m_program->Path(u"fresh"_s)).isFile());
        QVERIFY(!QFile::exists(m_program->Path(u"first.txt.old"_s)));
    }
};

QTEST_GUILESS_MAIN(Test_Update)
#include "test_update.moc"

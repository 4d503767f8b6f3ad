// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/error_log.h"
#include "core/runtime_files.h"
#include "platform/errors/run_time_error.h"
#include "platform/files/door.h"
#include "support/test_program.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>
#include <QProcess>
#include <QTest>
#include <optional>
#include <unistd.h>

using namespace Qt::StringLiterals;

class Test_Runtime_Files : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    [[nodiscard]] QStringList Files_There() const
    {
        QStringList names;
        QDirIterator files(m_program->Path(u"."_s), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            names << QDir(m_program->Path(u"."_s)).relativeFilePath(files.next());
        names.sort();
        return names;
    }

private slots:
    void init() { m_program.emplace(Test_Program::Start::Bare); }
    void cleanup() { m_program.reset(); }

    void All_That_Is_Staged_Goes()
    {
        m_program->Write(u"data/temp/zip.cc"_s, "x");
        m_program->Write(u"data/temp/export_1/engine/secret.rtf"_s, "x");
        m_program->Write(u"data/kept"_s, "x");
        Clear_Temp_Directory();
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);
        QCOMPARE(Files::Entries(m_program->Path(u"data"_s)).size(), 2);
    }

    void An_Empty_Directory_Gets_All_Files()
    {
        Load_Runtime_File();
        QStringList expected{u"Lang/CHINESE.INI"_s,  u"tools/zelqorzip.dll"_s,    u"tools/SkinH_VB6.dll"_s,
                             u"skins/1.skin"_s,      u"skins/2.skin"_s,           u"skins/3.skin"_s,
                             u"skins/4.skin"_s,      u"skins/5.skin"_s,           u"Update.exe"_s,
                             u"UPDATE.RIS"_s,        u"data/ico/Home.ico"_s,      u"data/ico/book.ico"_s,
                             u"data/ico/note.ico"_s, u"data/ico/RECYCLEBIN.ico"_s};
        expected.sort();
        QCOMPARE(Files_There(), expected);
        for (const Runtime_File &row : Runtime_File_Table()) {
            const QByteArray bytes = m_program->Bytes(QString::fromLatin1(row.target).replace(u'\\', u'/'));
            QVERIFY2(!bytes.isEmpty(), row.target);
            QVERIFY2(bytes == Runtime_File_Bytes(QString::fromLatin1(row.resource)), row.target);
        }
    }

    void Old_Files_Give_Way_By_Their_Rule_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("length"); // of the file that is there; below 0: so much more than the carried one
        QTest::addColumn<bool>("replaced");
        QTest::newRow("pack of one byte more") << u"Lang/CHINESE.INI"_s << -1 << true;
        QTest::newRow("empty pack") << u"Lang/CHINESE.INI"_s << 0 << true;
        QTest::newRow("pack under another name") << u"Lang/German.ini"_s << 3 << false;
        QTest::newRow("pack in other case") << u"Lang/chinese.ini"_s << 7 << true;
        QTest::newRow("coder of another length") << u"tools/zelqorzip.dll"_s << 151552 << true;
        QTest::newRow("old skin") << u"skins/1.skin"_s << 18244 << true;
        QTest::newRow("own skin") << u"skins/1.skin"_s << 18245 << false;
        QTest::newRow("second skin of the old length") << u"skins/2.skin"_s << 18244 << false;
        QTest::newRow("own icon") << u"data/ico/HOME.ICO"_s << 12 << false;
        QTest::newRow("own list") << u"UPDATE.RIS"_s << 1 << false;
    }

    void Old_Files_Give_Way_By_Their_Rule()
    {
        QFETCH(QString, file);
        QFETCH(int, length);
        QFETCH(bool, replaced);
        const QByteArray old =
            length < 0 ? Runtime_File_Bytes(u"CHINESE_INI"_s) + QByteArray(-length, 'x') : QByteArray(length, 'x');
        m_program->Write(file, old);
        Load_Runtime_File();
        QStringList now = Files_There().filter(file, Qt::CaseInsensitive);
        QCOMPARE(now.size(), 1);
        QCOMPARE(m_program->Bytes(now.first()) != old, replaced);
    }

    void Leftovers_Are_Deleted()
    {
        m_program->Write(u"tools/ZelqorSkin.dll"_s, "old");
        m_program->Write(u"skinh.she"_s, "old");
        m_program->Write(u"tools/other.dll"_s, "kept");
        Load_Runtime_File();
        QVERIFY(Files_There().filter(u"zelqorskin"_s, Qt::CaseInsensitive).isEmpty());
        QVERIFY(!QFile::exists(m_program->Path(u"skinh.she"_s)));
        QCOMPARE(m_program->Bytes(u"tools/other.dll"_s), QByteArray("kept"));
    }

    void A_Row_That_Fails_Raises_Its_Error_data()
    {
        QTest::addColumn<QString>("blocker");
        QTest::newRow("a file in a folder's place") << u"Lang"_s;
        QTest::newRow("a folder in a file's place") << u"tools/zelqorzip.dll/inside"_s;
    }

    void A_Row_That_Fails_Raises_Its_Error()
    {
        QFETCH(QString, blocker);
        m_program->Write(blocker, "in the way");
        QVERIFY_EXCEPTION_THROWN(Load_Runtime_File(), Run_Time_Error);
        QVERIFY(!QFile::exists(m_program->Path(u"Update.exe"_s)));
    }

    void A_Read_Only_Directory_Raises_An_Error()
    {
        if (geteuid() == 0)
            QSKIP("the superuser may write everywhere");
        const QString folder = m_program->Path(u"."_s);
        QVERIFY(QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY_EXCEPTION_THROWN(Load_Runtime_File(), Run_Time_Error);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void A_Pending_Error_Is_Logged_Under_The_First_Mark()
    {
        Set_Pending(Run_Time_Error(75, u"before"_s));
        Load_Runtime_File();
        QCOMPARE(m_program->Logged(), QStringList{u"Load_Runtime_File 1"_s});
    }

    void The_Coder_Library_Works_By_Itself()
    {
        Load_Runtime_File();
        QLibrary library(m_program->Path(u"tools/zelqorzip.dll"_s));
        using Coder = qint32 (*)(const char *, const char *, const char *);
        const auto coder = reinterpret_cast<Coder>(library.resolve("zelqorfun"));
        QVERIFY2(coder, qPrintable(library.errorString()));
        const QByteArray plain = QByteArray("words and words ").repeated(500);
        m_program->Write(u"plain"_s, plain);
        const auto path = [&](const QString &name) {
            return m_program->Path(name).toUtf8();
        };
        QCOMPARE(coder("e", path(u"plain"_s), path(u"coded"_s)), 0);
        QVERIFY(m_program->Bytes(u"coded"_s).size() < plain.size() / 10);
        QCOMPARE(coder("d", path(u"coded"_s), path(u"again"_s)), 0);
        QCOMPARE(m_program->Bytes(u"again"_s), plain);
    }

    void The_Updater_Runs_From_Its_Place()
    {
        Load_Runtime_File();
        m_program->Write(u"update/new.txt"_s, "new");
        m_program->Write(u"UPDATE.RIS"_s,
                         "[Setup]\r\nSource=update\r\n[File 01]\r\nSource=new.txt\r\nTarget=docs\\new.txt\r\nSha256=" +
                             QCryptographicHash::hash("new", QCryptographicHash::Sha256).toHex() + "\r\n");
        QCOMPARE(QProcess::execute(m_program->Path(u"Update.exe"_s)), 0);
        QCOMPARE(m_program->Bytes(u"docs/new.txt"_s), QByteArray("new"));
    }
};

QTEST_GUILESS_MAIN(Test_Runtime_Files)
#include "test_runtime_files.moc"

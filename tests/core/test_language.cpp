// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "support/test_program.h"

#include <QDir>
#include <QStringEncoder>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Language : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(Test_Program::Start::Bare); }
    void cleanup() { m_program.reset(); }

    void Packs_Of_Every_Kind_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("bytes");
        QTest::addColumn<QString>("text"); // of a key that every row names
        QTest::addColumn<QString>("gone"); // of a key that only a whole pack has
        QTest::addColumn<QStringList>("log");

        using Bytes = std::optional<QByteArray>;
        const QString line = u"[Frm_Main]\r\n_Cleaned=已清理“全部”\r\n"_s;
        const QString ours = u"清理完毕"_s;
        const QString edition = u"迷你版"_s;
        const auto coded = [&](const char *name) {
            return Bytes(QByteArray(QStringEncoder(name, QStringEncoder::Flag::WriteBom)(line)));
        };
        QTest::newRow("GBK") << coded("GB18030") << u"已清理“全部”"_s << QString() << QStringList();
        QTest::newRow("UTF-8") << Bytes(line.toUtf8()) << u"已清理“全部”"_s << QString() << QStringList();
        QTest::newRow("UTF-8 with a mark") << coded("UTF-8") << u"已清理“全部”"_s << QString() << QStringList();
        QTest::newRow("UTF-16 with a mark") << coded("UTF-16LE") << u"已清理“全部”"_s << QString() << QStringList();
        QTest::newRow("length 0") << Bytes(QByteArray()) << ours << edition << QStringList();
        QTest::newRow("missing") << Bytes() << ours << edition << QStringList(u"Main()"_s);
        QTest::newRow("a folder in its place") << Bytes("/") << ours << edition << QStringList(u"Main()"_s);
        QTest::newRow("no sections, noise")
            << Bytes(QByteArray("\0\xff\xfe[[[==\n]]]\0", 14) + QByteArray(70000, '\x81')) << QString() << QString()
            << QStringList();
        QTest::newRow("edited by hand") << Bytes("junk\n [ frm_main ] \n; _Cleaned=no\n _CLEANED = \" a b \" \n=x\n[")
                                        << u" a b "_s << QString() << QStringList();
    }

    void Packs_Of_Every_Kind()
    {
        QFETCH(std::optional<QByteArray>, bytes);
        QFETCH(QString, text);
        QFETCH(QString, gone);
        QFETCH(QStringList, log);
        QDir().mkpath(m_program->Path(u"Lang"_s));
        if (bytes == QByteArray("/"))
            QDir().mkpath(m_program->Path(u"Lang/Mine.ini"_s));
        else if (bytes)
            m_program->Write(u"Lang/Mine.ini"_s, *bytes);
        Config().LANGUAGE = u"Mine"_s;
        Load_Language(u"Main()"_s);
        QCOMPARE(Pack_Text("Frm_Main", "_Cleaned"), text);
        QCOMPARE(Pack_Text("Frm_Main", "_Edition"), gone);
        QCOMPARE(m_program->Logged(), log);
    }
};

QTEST_GUILESS_MAIN(Test_Language)
#include "test_language.moc"

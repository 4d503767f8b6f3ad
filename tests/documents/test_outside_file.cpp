// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_store.h"
#include "documents/outside_file.h"
#include "support/test_form.h"
#include "support/test_program.h"

#include <QDir>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Outside_File : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    [[nodiscard]] QDir Drafts() const { return QDir(m_program->Path(u"data/Zelqor.db-drafts"_s)); }
    [[nodiscard]] QStringList Copies() const { return Drafts().entryList({u"*.copy"_s}, QDir::Dirs); }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
        m_program->Write(u"a.ini"_s, "[a]");
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Kill_Loses_Nothing_That_Another_Program_Saved_data()
    {
        QTest::addColumn<QByteArray>("saved");
        QTest::addColumn<QString>("meanwhile"); ///< a statement
        QTest::addColumn<bool>("isOpen");       ///< in the other program
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<int>("copies");
        const QString change = u"update Code_Info set Code_Update='2001-02-03 04:05:06',Code_Content='other'"_s;
        const QString nothing;
        QTest::addRow("nothing") << QByteArray() << nothing << false << QStringList{u"[a]"_s} << 0;
        QTest::addRow("a save") << QByteArray("[later]") << nothing << false << QStringList{u"[later]"_s} << 0;
        QTest::addRow("a save, and it is still open")
            << QByteArray("[later]") << nothing << true << QStringList{u"[later]"_s} << 1;
        QTest::addRow("a save, but the document is another one now")
            << QByteArray("[later]") << change << false << QStringList{u"[later]"_s, u"other"_s} << 0;
        QTest::addRow("a save, but the document is gone")
            << QByteArray("[later]") << u"delete from Code_Info"_s << false << QStringList{u"[later]"_s} << 0;
        QTest::addRow("a save, but the folder is gone with the document")
            << QByteArray("[later]") << u"delete from Cate_Info where Cate_ID='001';delete from Code_Info"_s << false
            << QStringList{u"[later]"_s} << 0;
        QTest::addRow("only the document is another one")
            << QByteArray() << change << false << QStringList{u"other"_s} << 0;
    }
    void A_Kill_Loses_Nothing_That_Another_Program_Saved()
    {
        QFETCH(QByteArray, saved);
        QFETCH(QString, meanwhile);
        QFETCH(bool, isOpen);
        QFETCH(QStringList, stored);
        QFETCH(int, copies);
        const QString id =
            AddCodeContent_File_Ex(m_program->Path(u"a.ini"_s), u"001"_s, u"0"_s, u"Facts: \"1\""_s, u"ini"_s, false);
        const Outside_File killed(id);
        QVERIFY(Outside_File::Take_Back_Left().isEmpty() && Copies().size() == 1);
        const QString left = u"999999-dead_1.copy"_s;
        QVERIFY(Drafts().rename(Copies().value(0), left));
        if (!saved.isEmpty())
            m_program->Write(u"data/Zelqor.db-drafts/"_s + left + u"/Facts_ _1_.ini"_s, saved);
        if (isOpen)
            m_program->Write(u"data/Zelqor.db-drafts/"_s + left + u"/.~lock.Facts_ _1_.ini#"_s, "x");
        for (const QString &statement : meanwhile.split(u';', Qt::SkipEmptyParts))
            Sql_Run(statement);
        const QString folder = meanwhile.contains(u"Cate_Info"_s) ? u"000"_s : u"001"_s;

        const QList<Stored_Copy> back = Outside_File::Take_Back_Left();
        QCOMPARE(back.size(), saved.isEmpty() ? 0 : 1);
        QStringList texts;
        for (const QStringList &row : Sql_Rows(u"select Code_Content,Code_Title,Cate_ID from Code_Info order by 1"_s)) {
            texts << row.value(0);
            QCOMPARE(row.mid(1), QStringList({u"Facts: \"1\""_s, folder}));
        }
        QCOMPARE(texts, stored);
        QCOMPARE(Copies().size(), copies);
        QVERIFY(Outside_File::Take_Back_Left().isEmpty());
    }

    void A_Copy_That_Was_Not_Given_Away_Goes()
    {
        QVERIFY(Drafts().mkpath(u"999999-dead_1.copy"_s));
        QVERIFY(Outside_File::Take_Back_Left().isEmpty() && Copies().isEmpty());
    }

    void A_Damaged_Record_Stays()
    {
        m_program->Write(u"data/Zelqor.db-drafts/999999-dead_1.copy/record.cbor"_s, "\xff\x00junk");
        QVERIFY(Outside_File::Take_Back_Left().isEmpty() && Copies().size() == 1);
    }
};

QTEST_MAIN(Test_Outside_File)
#include "test_outside_file.moc"

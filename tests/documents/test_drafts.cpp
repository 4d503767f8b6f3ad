// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_store.h"
#include "documents/drafts.h"
#include "platform/errors/run_time_error.h"
#include "support/test_form.h"
#include "support/test_program.h"

#include <QDir>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Drafts : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    [[nodiscard]] QStringList Files() const
    {
        return QDir(m_program->Path(u"data/Zelqor.db-drafts"_s)).entryList({u"*.draft"_s}, QDir::Files);
    }
    /// Makes the drafts of this process look like those of one that died.
    void Die() const
    {
        const QDir folder(m_program->Path(u"data/Zelqor.db-drafts"_s));
        for (const QString &name : Files())
            QVERIFY(QFile::rename(folder.filePath(name), folder.filePath(u"999999-dead_"_s + name.section(u'_', 1))));
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Draft_Brings_Everything_Back_data()
    {
        QTest::addColumn<bool>("stored");
        QTest::addColumn<bool>("isGone"); ///< the document was deleted meanwhile
        QTest::addColumn<QString>("password");
        QTest::addRow("new") << false << false << u""_s;
        QTest::addRow("new, with a password") << false << false << u"芝麻 sesame"_s;
        QTest::addRow("stored") << true << false << u""_s;
        QTest::addRow("stored, with a password") << true << false << u"p"_s;
        QTest::addRow("deleted meanwhile") << true << true << u""_s;
    }
    void A_Draft_Brings_Everything_Back()
    {
        QFETCH(bool, stored);
        QFETCH(bool, isGone);
        QFETCH(QString, password);
        Test_Form form(u"typed 甲乙"_s);
        form.memo->setPlainText(u"memo"_s);
        form.sum->setPlainText(u"sum"_s);
        form.password = password;
        form.keys = u"keys"_s;
        form.star = u"★★☆☆☆"_s;
        if (stored)
            QVERIFY(AddCodeContent_Ex_Standard(form, u"0"_s));
        const QString id = form.code_id;
        form.content->setPlainText(u"typed later 丙"_s);
        Draft draft;
        draft.Write(form, stored, password);
        QVERIFY(Left_Drafts().isEmpty());
        Die();
        if (isGone)
            Sql_Run(u"delete from Code_Info"_s);

        const QList<Left_Draft> left = Left_Drafts();
        QCOMPARE(left.size(), 1);
        QCOMPARE(left[0].sealed, !password.isEmpty());
        QCOMPARE(left[0].title, password.isEmpty() ? form.title : QString());
        const QByteArray bytes = m_program->Bytes(u"data/Zelqor.db-drafts/"_s + Files().value(0));
        for (const char *clear : {"typed", "A title", "keys"})
            QCOMPARE(bytes.contains(clear), password.isEmpty());

        Test_Form read(u"old"_s);
        bool isStored = false;
        if (!password.isEmpty())
            QVERIFY(Restore_Draft(left[0], u"wrong"_s, read, isStored) == Draft_Answer::Wrong_Password);
        QVERIFY(Restore_Draft(left[0], password, read, isStored) == Draft_Answer::Restored);
        QCOMPARE(isStored, stored && !isGone);
        QCOMPARE(read.code_id, isGone ? QString() : id);
        QCOMPARE(read.content->toPlainText(), u"typed later 丙"_s);
        QCOMPARE(read.memo->toPlainText() + read.sum->toPlainText(), u"memosum"_s);
        QCOMPARE(QStringList({read.title, read.keys, read.star, read.folder, read.password, read.type}),
                 QStringList({form.title, form.keys, form.star, form.folder, form.password, form.type}));
        Drop_Draft(left[0]);
        QCOMPARE(Files(), QStringList());
        QVERIFY(Left_Drafts().isEmpty());
    }

    void A_Draft_Is_One_File_And_Goes()
    {
        Test_Form form(u"text"_s);
        form.password = u"typed in one of two boxes"_s;
        Draft draft, other;
        draft.Write(form, false, {});
        QVERIFY(!m_program->Bytes(u"data/Zelqor.db-drafts/"_s + Files().value(0)).contains("boxes"));
        draft.Write(form, false, u"p"_s);
        other.Write(form, false, {});
        QCOMPARE(Files().size(), 2);
        draft.Remove();
        draft.Remove();
        other.Remove();
        QCOMPARE(Files(), QStringList());
        draft.Write(form, false, {});
        QCOMPARE(Files().size(), 1);
    }

    void Damaged_Drafts_Do_No_Harm_data()
    {
        QTest::addColumn<int>("kept");
        QTest::addColumn<bool>("sealed");
        for (const bool sealed : {false, true}) {
            for (const int kept : {0, 5, 30, 120}) {
                QTest::addRow("%d bytes, %s", kept, sealed ? "sealed" : "clear") << kept << sealed;
            }
        }
    }
    void Damaged_Drafts_Do_No_Harm()
    {
        QFETCH(int, kept);
        QFETCH(bool, sealed);
        Draft draft;
        draft.Write(Test_Form(u"text"_s), false, sealed ? u"p"_s : QString());
        const QString name = u"data/Zelqor.db-drafts/"_s + Files().value(0);
        m_program->Write(name, m_program->Bytes(name).left(kept));
        Die();
        Test_Form form(u"as it was"_s);
        bool stored = false;
        for (const Left_Draft &left : Left_Drafts())
            QVERIFY(Restore_Draft(left, u"p"_s, form, stored) != Draft_Answer::Restored);
        QCOMPARE(form.content->toPlainText(), u"as it was"_s);
    }

    void A_Draft_That_Cannot_Be_Written_Says_So()
    {
        m_program->Write(u"data/Zelqor.db-drafts"_s, "a file in the way");
        Draft draft;
        QVERIFY_THROWS_EXCEPTION(Run_Time_Error, draft.Write(Test_Form(u"text"_s), false, {}));
    }
};

QTEST_MAIN(Test_Drafts)
#include "test_drafts.moc"

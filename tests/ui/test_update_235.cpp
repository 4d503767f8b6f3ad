// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "platform/database/database.h"
#include "storage/database_lifecycle.h"
#include "storage/old_databases.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "ui/program/frm_update_235.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Update_235 : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init()
    {
        m_program.emplace();
        const QString current = App().Conn_Str;
        App().Conn_Str = File_Conn_Str(m_program->Path(u"old.db"_s));
        Database_Engine::Create_File(App().Conn_Str);
        for (const QString &statement : Old_Databases::First_Release)
            Sql_Run(statement);
        App().Conn_Str = current;
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// The window works on the database that it was given, not on the current one.
    void The_Upgrade_Ends_The_Window()
    {
        const QString old = File_Conn_Str(m_program->Path(u"old.db"_s));
        Frm_Update_235 form(nullptr, old);
        QCOMPARE(Get<QLabel>(form, "Lab_Total").text(), u" [总记录 = 2]"_s);
        Get<QPushButton>(form, "Cmd_UpDate").click();
        QCOMPARE(form.result(), int(QDialog::Accepted));
        QVERIFY(App().Update_235_Done);
        App().Conn_Str = old;
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info where Code_Content_IO is not null"_s), u"2"_s);
    }

    void Leaving_Changes_Nothing()
    {
        App().Update_235_Done = true;
        Database_Engine::Let_Go();
        const QByteArray before = m_program->Bytes(u"old.db"_s);
        Frm_Update_235 form(nullptr, File_Conn_Str(m_program->Path(u"old.db"_s)));
        Get<QPushButton>(form, "Cmd_Exit").click();
        QCOMPARE(form.result(), int(QDialog::Rejected));
        QVERIFY(!App().Update_235_Done);
        QVERIFY(m_program->Bytes(u"old.db"_s) == before);
    }

    void A_Failure_Is_Told_And_Can_Be_Tried_Again()
    {
        m_program->Write(u"data/bak"_s, "a file in the folder's place");
        Frm_Update_235 form(nullptr, File_Conn_Str(m_program->Path(u"old.db"_s)));
        m_program->prompts.Expect(u"备份未能写入"_s, u"ok"_s);
        Get<QPushButton>(form, "Cmd_UpDate").click();
        QVERIFY(!App().Update_235_Done);
        QVERIFY(Get<QPushButton>(form, "Cmd_UpDate").isEnabled());
        QFile::remove(m_program->Path(u"data/bak"_s));
        Get<QPushButton>(form, "Cmd_UpDate").click();
        QVERIFY(App().Update_235_Done);
    }
};

QTEST_MAIN(Test_Update_235)
#include "test_update_235.moc"

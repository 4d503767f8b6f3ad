// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/other_user.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/document_reading.h"
#include "documents/document_store.h"
#include "platform/database/database.h"
#include "storage/database_lifecycle.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "users/user_start.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;

/// Places that somebody else has prepared or holds: what can be read is read, and why nothing more goes is told.
class Test_Foreign_Places : public QObject
{
    Q_OBJECT

private slots:
    void A_Read_Only_Database_Can_Be_Read()
    {
        Test_Program program;
        Add_Folder(u"001"_s, u"Work"_s);
        Load_Root_Facts();
        QVERIFY(Decide_Login() == Login_Need::None);
        Test_Form form(u"text"_s);
        QVERIFY(AddCodeContent_Ex_Standard(form, u"0"_s));
        const QString id = form.code_id;
        Database_Engine::Let_Go();
        const QString file = program.Path(u"data/Zelqor.db"_s);
        QVERIFY(QFile::setPermissions(file, QFile::ReadOwner));
        const QByteArray before = program.Bytes(u"data/Zelqor.db"_s);

        QVERIFY(Opening_Test(App().Conn_Str));
        Repair_Users();
        Load_Root_Facts();
        QVERIFY(Decide_Login() == Login_Need::None);
        Test_Form read;
        QVERIFY(GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), u"text"_s);
        read.content->setPlainText(u"changed"_s);
        program.prompts.Expect(Pack_Text("Error_Texts", "_Read_Only"), u"ok"_s);
        QVERIFY(!AddCodeContent_Ex_Standard(read, id));
        program.prompts.Expect(Pack_Text("Error_Texts", "_Read_Only"), u"ok"_s);
        program.Write(u"a.ini"_s, "[a]");
        QVERIFY(AddCodeContent_File_Ex(program.Path(u"a.ini"_s), u"001"_s, u"0"_s, u"t"_s, u"ini"_s, false).isEmpty());
        QCOMPARE(program.prompts.Problems(), QStringList());
        QCOMPARE(program.Bytes(u"data/Zelqor.db"_s), before);
    }

    void Another_User_Is_Told_Of_In_The_Language_Of_The_Settings_data()
    {
        QTest::addColumn<QByteArray>("settings");
        QTest::addColumn<QString>("said");
        QTest::newRow("English") << QByteArray("[Page]\nLANGUAGE=English\n") << u"Another user"_s;
        QTest::newRow("Chinese") << QByteArray("[Page]\nLANGUAGE=CHINESE\n") << u"另一位用户"_s;
        QTest::newRow("a pack that is missing") << QByteArray("[Page]\nLANGUAGE=Klingon\n") << u"另一位用户"_s;
    }
    void Another_User_Is_Told_Of_In_The_Language_Of_The_Settings()
    {
        QFETCH(QByteArray, settings);
        QFETCH(QString, said);
        Test_Program program(Test_Program::Start::Bare);
        program.Write(u"Config.ini"_s, settings);
        for (const QString &pack : {u"CHINESE.INI"_s, u"English.ini"_s}) {
            QDir().mkpath(program.Path(u"Lang"_s));
            QVERIFY(QFile::copy(Pack_Folder() + u'/' + pack, program.Path(u"Lang/"_s + pack)));
        }
        program.prompts.Expect(said, u"ok"_s);
        Tell_Of_Other_User();
        QCOMPARE(program.prompts.Problems(), QStringList());
    }

    void A_Picture_Folder_Of_Another_System_Is_Not_Made()
    {
        Test_Program program(Test_Program::Start::Bare);
        QVERIFY(QDir::setCurrent(program.Path(u""_s)));
        program.Write(u"Config.ini"_s, "[Col]\nPic_Dir=C:\\Pictures\n");
        GetConfigInfo(Database_Steps_For_Start());
        QVERIFY(App().Conn_OK && !QFileInfo::exists(program.Path(u"C:"_s)));
        QCOMPARE(Config().Pic_Dir.chopped(1), program.Path(u"Pic"_s));
        QDir::setCurrent(u"/"_s);
    }
};

QTEST_MAIN(Test_Foreign_Places)
#include "test_foreign_places.moc"

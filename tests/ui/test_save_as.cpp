// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "documents/document_store.h"
#include "editor/pictures.h"
#include "platform/richtext/rich_text.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/save_as_menu.h"

#include <QAction>
#include <QDir>
#include <QImage>
#include <QMenu>
#include <QProcess>
#include <QTest>
#include <QTextEdit>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Save_As : public QObject
{
    Q_OBJECT
    struct Status_Shell : No_Shell {
        QString status;
        void Set_Status(const QString &text) override { status = text; }
    };
    struct Desk {
        Test_Program program;
        Status_Shell shell;
        QWidget window;
        QMenu menu;
        Document_Tabs tabs{shell, &window};
        std::optional<Save_As_Menu> save_as;
        QByteArray picture;

        Desk()
        {
            Add_Folder(u"001"_s, u"Work"_s);
            tabs.Add_List(new QWidget, u"List"_s);
            save_as.emplace(menu, tabs, shell, window);
            QImage image(4, 4, QImage::Format_RGB32);
            image.fill(Qt::red);
            picture = Pictures::As_File(image);
        }
        void Open_Document()
        {
            Test_Form form(u"Hello"_s);
            form.title = u"甲/a"_s;
            if (!AddCodeContent_Ex_Standard(form, u"0"_s))
                qFatal("not stored");
            tabs.Open(form.code_id);
            tabs.Current_Document()->Set_Edit_Mode(true);
            QTextCursor cursor = tabs.Current_Document()->findChild<QTextEdit *>(u"Txt_Content"_s)->textCursor();
            cursor.movePosition(QTextCursor::End);
            Pictures::Insert(cursor, picture); // unsaved, and goes all the same
        }
        [[nodiscard]] QAction *Action(const QString &name) const
        {
            const QList<QAction *> all = menu.actions();
            const auto found =
                std::find_if(all.begin(), all.end(), [&](QAction *one) { return one->objectName() == name; });
            return found == all.end() ? nullptr : *found;
        }
    };
    std::optional<Desk> m_desk;

private slots:
    void init() { m_desk.emplace(); }
    void cleanup()
    {
        QCOMPARE(m_desk->program.prompts.Problems(), QStringList());
        m_desk.reset();
    }

    void A_Copy_Is_Of_The_Chosen_Kind_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QString>("answer"); // the name, and the kind chosen in the box
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("begins");
        QTest::addRow("rich text") << u"SaveAs"_s << u"a.rtf|0"_s << u"a.rtf"_s << QByteArray("{\\rtf");
        QTest::addRow("plain text") << u"SaveAs"_s << u"v1.2|1"_s << u"v1.2.txt"_s << QByteArray("Hello");
        QTest::addRow("another kind, the name left alone")
            << u"SaveAs"_s << u"a.rtf|2"_s << u"a.htm"_s << QByteArray("<!DOCTYPE");
        QTest::addRow("the name tells") << u"SaveAs"_s << u"a.HTML|0"_s << u"a.HTML"_s << QByteArray("<!DOCTYPE");
        QTest::addRow("Txt") << u"Mnu_Export_Txt"_s << u"a"_s << u"a.txt"_s << QByteArray("Hello");
        QTest::addRow("Rtf") << u"Mnu_Export_Rtf"_s << u"a"_s << u"a.rtf"_s << QByteArray("{\\rtf");
        QTest::addRow("Htm") << u"Mnu_Export_Htm"_s << u"a.html"_s << u"a.html"_s << QByteArray("<!DOCTYPE");
        QTest::addRow("Mht") << u"Mnu_Export_Mht"_s << u"a"_s << u"a.mht"_s << QByteArray("Date: Thu, 05 Mar 2026");
        QTest::addRow("Doc") << u"Mnu_Export_Doc"_s << u"a"_s << u"a.doc"_s << QByteArray("\xD0\xCF\x11\xE0");
        QTest::addRow("Chm") << u"Mnu_Export_Chm"_s << u"a"_s << u"a.chm"_s << QByteArray("ITSF");
        QTest::addRow("Docx") << u"Mnu_Export_Docx"_s << u"a"_s << u"a.docx"_s << QByteArray("PK");
        QTest::addRow("Odt") << u"Mnu_Export_Odt"_s << u"a"_s << u"a.odt"_s << QByteArray("PK");
        QTest::addRow("Pdf") << u"Mnu_Export_Pdf"_s << u"a"_s << u"a.pdf"_s << QByteArray("%PDF");
        QTest::addRow("Md") << u"Mnu_Export_Md"_s << u"a"_s << u"a.md"_s << QByteArray("Hello![][picture1]");
    }
    void A_Copy_Is_Of_The_Chosen_Kind()
    {
        QFETCH(QString, entry);
        QFETCH(QString, answer);
        QFETCH(QString, file);
        QFETCH(QByteArray, begins);
        m_desk->Open_Document();
        QDir().mkpath(m_desk->program.Path(u"out"_s));
        m_desk->program.Write(u"out/"_s + file, "an older file");
        m_desk->program.prompts.Expect(u"另存为"_s, m_desk->program.Path(u"out/"_s + answer));
        m_desk->Action(entry)->trigger();
        const QByteArray written = m_desk->program.Bytes(u"out/"_s + file);
        QVERIFY2(written.startsWith(begins), written.left(40).constData());
        const bool isPage = file.contains(u"htm"_s, Qt::CaseInsensitive);
        QCOMPARE(written.contains("src=\"data:image/png;base64," + m_desk->picture.toBase64() + '"'), isPage);
        QCOMPARE(m_desk->shell.status, m_desk->program.Path(u"out/"_s + file));
        QCOMPARE(GetIni(u"Page"_s, u"OpenPath"_s), m_desk->program.Path(u"out"_s));
        QVERIFY(m_desk->tabs.Current_Document()->Is_Changed());
    }

    void A_Document_Of_Another_Program_Goes_As_Its_File()
    {
        m_desk->program.Write(u"a.ini"_s, "[a]\r\nb=\xd6\xd0");
        m_desk->tabs.Open(
            AddCodeContent_File_Ex(m_desk->program.Path(u"a.ini"_s), u"001"_s, u"0"_s, u"Facts"_s, u"ini"_s, false));
        for (const char *answer : {"b|0", "c|1"}) {
            m_desk->program.prompts.Expect(u"另存为"_s, m_desk->program.Path(QLatin1String(answer)));
            m_desk->Action(u"SaveAs"_s)->trigger();
        }
        QCOMPARE(m_desk->program.Bytes(u"b.ini"_s), "[a]\r\nb=\xd6\xd0");
        QVERIFY(m_desk->program.Bytes(u"c.txt"_s).startsWith("[a]"));
    }

    void Paper_Is_Read_By_Another_Program()
    {
        m_desk->Open_Document();
        m_desk->program.prompts.Expect(u"另存为"_s, m_desk->program.Path(u"纸 #1.pdf"_s));
        m_desk->Action(u"Mnu_Export_Pdf"_s)->trigger();
        QProcess reader;
        reader.start(u"pdftotext"_s, {m_desk->program.Path(u"纸 #1.pdf"_s), u"-"_s});
        QVERIFY(reader.waitForFinished());
        QVERIFY(reader.readAllStandardOutput().contains("Hello"));
    }

    void What_Goes_Is_What_The_Pane_Holds()
    {
        m_desk->Open_Document();
        auto &pane = *m_desk->tabs.Current_Document()->findChild<QTextEdit *>(u"Txt_Content"_s);
        pane.document()->setHtml(u"<ul><li>a</li></ul><table border=2><tr><td bgcolor=red>b</td></tr></table>"
                                 "<p align=right style='margin-left:30px'>c</p>"_s);
        m_desk->program.prompts.Expect(u"另存为"_s, m_desk->program.Path(u"a"_s));
        m_desk->Action(u"Mnu_Export_Rtf"_s)->trigger();
        QCOMPARE(m_desk->program.Bytes(u"a.rtf"_s), Rich_Text::Write_Rtf(*pane.document()));
    }

    void Nothing_Is_Saved_Without_A_Document_Or_A_Name()
    {
        QVERIFY(!m_desk->menu.isEnabled());
        QVERIFY(!m_desk->Action(u"SaveAs"_s)->isEnabled());
        m_desk->Open_Document();
        QVERIFY(m_desk->menu.isEnabled() && m_desk->Action(u"Mnu_Export_Chm"_s)->isEnabled());
        m_desk->program.prompts.Expect(u"另存为"_s, QString());
        m_desk->Action(u"SaveAs"_s)->trigger();
        m_desk->program.prompts.Expect(u"另存为"_s, m_desk->program.Path(u"nowhere/a"_s));
        m_desk->program.prompts.Expect(u"nowhere"_s, u"ok"_s);
        m_desk->Action(u"Mnu_Export_Mht"_s)->trigger();
        QCOMPARE(m_desk->program.Logged(), QStringList{u"Frm_Main\\Db_to_file"_s});
    }
};

QTEST_MAIN(Test_Save_As)
#include "test_save_as.moc"

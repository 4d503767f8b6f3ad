// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "documents/data_update.h"
#include "documents/document_reading.h"
#include "documents/document_store.h"
#include "platform/database/recordset.h"
#include "platform/lzma/zelqorfun.h"
#include "support/test_form.h"
#include "support/test_program.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Data_Update : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

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

    void A_Form_Is_Tested_In_Order_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("key"); ///< "" where the form may be saved
        QTest::addRow("as it is") << u""_s << u""_s << u""_s;
        QTest::addRow("no type, before all else") << u"type"_s << u""_s << u"_NoSave"_s;
        QTest::addRow("no folder") << u"folder"_s << u""_s << u"_SelectDir"_s;
        QTest::addRow("folder that was deleted meanwhile") << u"folder"_s << u"007"_s << u"_SelectDir"_s;
        QTest::addRow("no creation date") << u"create"_s << u""_s << u"_CreateDate"_s;
        QTest::addRow("no such day") << u"create"_s << u"2026-02-30"_s << u"_CreateDate"_s;
        QTest::addRow("slashes") << u"create"_s << u"2026/02/03"_s << u""_s;
        QTest::addRow("words for a date") << u"update"_s << u"today"_s << u"_UpdateDate"_s;
        QTest::addRow("title of 200") << u"title"_s << QString(200, u'题') << u""_s;
        QTest::addRow("title of 201") << u"title"_s << QString(201, u'题') << u"_Title"_s;
        QTest::addRow("password beyond ASCII") << u"both"_s << u"密码"_s << u"_SpecChar"_s;
        QTest::addRow("password of a control character") << u"both"_s << u"a\tb"_s << u"_SpecChar"_s;
        QTest::addRow("password of blanks") << u"both"_s << u"  "_s << u"_SpecChar"_s;
        QTest::addRow("passwords differ") << u"password"_s << u"one"_s << u"_PassWord"_s;
    }
    void A_Form_Is_Tested_In_Order()
    {
        QFETCH(QString, field);
        QFETCH(QString, value);
        QFETCH(QString, key);
        Test_Form form(u"text"_s);
        form.password = u"One"_s;
        const std::pair<QString, QString *> fields[] = {
            {u"type"_s, &form.type},          {u"folder"_s, &form.folder}, {u"create"_s, &form.create_date},
            {u"update"_s, &form.update_date}, {u"title"_s, &form.title},   {u"password"_s, &form.password}};
        for (const auto &[name, place] : fields) {
            if (name == field)
                *place = value;
        }
        if (field == u"type")
            form.folder.clear();
        const bool both = field == u"both";
        if (both)
            form.password = value;
        QCOMPARE(QString::fromLatin1(Refusal_Key(Check_Before_Save(form, both ? value : u"One"_s))), key);
    }

    void An_Empty_Title_Is_Taken_From_The_Content_data()
    {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("title");
        QTest::addRow("long") << u"0123456789012345678901234"_s << u"01234567890123456789..... "_s;
        QTest::addRow("blank lines first") << u"\n \n甲乙\n丙"_s << u"甲乙 丙..... "_s;
        QTest::addRow("nothing") << u""_s << u"..... "_s;
    }
    void An_Empty_Title_Is_Taken_From_The_Content()
    {
        QFETCH(QString, content);
        QFETCH(QString, title);
        Test_Form form(content);
        form.title.clear();
        QVERIFY(Check_Before_Save(form, {}) == Save_Refusal::None);
        QCOMPARE(form.title, title);
    }

    void Saving_Is_Logged_With_The_Document()
    {
        Test_Form form(u"text"_s);
        QString status;
        QVERIFY(Store_Form(form, false, status) == Save_Outcome::Stored);
        QVERIFY(status.endsWith(u"A title"));
        QVERIFY(Store_Form(form, true, status) == Save_Outcome::Stored);
        QCOMPARE(Sql_Rows(u"select type_id from tab_log order by log_id"_s), (QList<QStringList>{{u"1"_s}, {u"2"_s}}));
        form.title = QString(256, u't');
        m_program->prompts.Expect(u"保存出错"_s, u"ok"_s);
        QVERIFY(Store_Form(form, true, status) == Save_Outcome::Failed);
        QCOMPARE(Sql_Cell(u"select count(*) from tab_log"_s), u"2"_s);
    }

    void What_Another_Program_Stored_Is_Not_Written_Over_data()
    {
        QTest::addColumn<QString>("change");
        QTest::addColumn<bool>("noticed");
        QTest::addRow("nothing") << u""_s << false;
        QTest::addRow("a reading") << u"Code_ReadNum=7"_s << false;
        QTest::addRow("another folder") << u"Cate_ID='002'"_s << false;
        QTest::addRow("the text") << u"Code_Content='theirs'"_s << true;
        QTest::addRow("the memo's stream alone") << u"Code_Memo_IO='theirs'"_s << true;
        QTest::addRow("a save in the same second") << u"Code_Title='theirs'"_s << true;
    }
    void What_Another_Program_Stored_Is_Not_Written_Over()
    {
        QFETCH(QString, change);
        QFETCH(bool, noticed);
        Test_Form form(u"text"_s);
        QString status;
        QVERIFY(Store_Form(form, false, status) == Save_Outcome::Stored);
        QVERIFY(GetCodeContent_Ex(form.code_id, form));
        if (!change.isEmpty())
            Sql_Run(u"update Code_Info set "_s + change);
        const QList<QStringList> before = Sql_Rows(u"select * from Code_Info"_s);
        form.content->setPlainText(u"mine"_s);
        const Save_Outcome outcome = Store_Form(form, true, status);
        QCOMPARE(outcome == Save_Outcome::Changed_Elsewhere, noticed);
        QCOMPARE(Sql_Rows(u"select * from Code_Info"_s) == before, noticed);
        QVERIFY(Store_Form(form, true, status, {.replace = true}) == Save_Outcome::Stored);
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"mine"_s);
        QVERIFY(Store_Form(form, true, status) == Save_Outcome::Stored);
    }

    /// The facts of a document whose content is not rich text change, and nothing of its content does.
    void Facts_Alone_Are_Saved()
    {
        m_program->Write(u"a.ini"_s, "[a]");
        const QString id =
            AddCodeContent_File_Ex(m_program->Path(u"a.ini"_s), u"001"_s, u"0"_s, u"Facts"_s, u"ini"_s, false);
        const QString content = u"select Code_Content,Code_Content_IO,Code_Type from Code_Info"_s;
        const QList<QStringList> before = Sql_Rows(content);
        Test_Form form;
        QVERIFY(GetCodeContent_Ex(id, form));
        form.keeps_content = true;
        form.title = u"Other facts"_s;
        form.star = u"★☆☆☆☆"_s;
        QString status;
        QVERIFY(Store_Form(form, true, status) == Save_Outcome::Stored);
        QCOMPARE(Sql_Rows(content), before);
        QCOMPARE(Sql_Cell(u"select Code_Title from Code_Info"_s), u"Other facts"_s);
        QCOMPARE(Sql_Cell(u"select Code_Color from Code_Info"_s), u"★☆☆☆☆"_s);
    }

    void Files_Become_Documents_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("text"); ///< "%" stands for the path
        QTest::addColumn<QString>("file");
        QTest::addColumn<bool>("link"); ///< the stream holds the path, not the bytes
        const QString page = u"<font color=0>%1</font>"_s;
        const auto office = [](const QString &name) {
            QFile source(QStringLiteral(ZELQOR_TEST_DATA "/office/") + name);
            return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
        };
        const QByteArray docx = office(u"words.docx"_s);
        const QByteArray pdf = office(u"words.pdf"_s);
        const QString words = u"中文段落：知识管理，文档与检索。"_s;
        QTest::addRow("text") << QByteArray("one\r\ntwo") << u"txt"_s << u"TXT"_s << u"one\ntwo"_s << u""_s << false;
        QTest::addRow("text in GBK") << QByteArray("\xD6\xD0\xCE\xC4") << u"TXT"_s << u"TXT"_s << u"中文"_s << u""_s
                                     << false;
        QTest::addRow("settings file") << QByteArray("[a]") << u"ini"_s << u"INI"_s << u"[a]"_s << u""_s << false;
        QTest::addRow("rich text") << QByteArray("{\\rtf1 rich}") << u"rtf"_s << u"RTF"_s << u"rich"_s << u""_s
                                   << false;
        QTest::addRow("alias of a text processor")
            << QByteArray("x") << u"wps"_s << u"DOC"_s << u""_s << u""_s << false;
        QTest::addRow("alias of a table") << QByteArray("x") << u"et"_s << u"XLS"_s << u""_s << u""_s << false;
        QTest::addRow("alias of slides") << QByteArray("x") << u"dps"_s << u"PPT"_s << u""_s << u""_s << false;
        QTest::addRow("film") << QByteArray("x") << u"swf"_s << u"SWF"_s << u"%"_s << u"%"_s << true;
        QTest::addRow("picture") << QByteArray("x") << u"jpg"_s << u"HTM"_s
                                 << page.arg(u"<img border=0 ALIGN=TOP src=%>"_s) << u""_s << true;
        QTest::addRow("office file") << docx << u"docx"_s << u"DOCX"_s << words << u""_s << false;
        QTest::addRow("office file, broken") << docx.left(2000) << u"docx"_s << u"DOCX"_s << u""_s << u""_s << false;
        QTest::addRow("portable document") << pdf << u"pdf"_s << u"PDF"_s << words << u"%"_s << true;
        QTest::addRow("portable document, broken")
            << QByteArray("%PDF") << u"pdf"_s << u"PDF"_s << u""_s << u"%"_s << true;
        QTest::addRow("empty file") << QByteArray() << u"txt"_s << u"TXT"_s << u""_s << u""_s << false;
        QTest::addRow("anything else") << QByteArray("x") << u"mp3"_s << u"HTM"_s
                                       << page.arg(u"<a target=_self href=%>%</a>"_s) << u""_s << true;
    }
    void Files_Become_Documents()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, extension);
        QFETCH(QString, type);
        QFETCH(QString, text);
        QFETCH(QString, file);
        QFETCH(bool, link);
        const QString name = u"in/a file."_s + extension;
        const QString path = m_program->Path(name);
        m_program->Write(name, bytes);
        const QString id = AddCodeContent_File_Ex(path, u"001"_s, u"0"_s, {}, extension, false);
        QVERIFY(!id.isEmpty());
        Recordset row;
        row.Open(u"select * from Code_Info where Code_ID='%1'"_s.arg(id), App().Conn_Str);
        QCOMPARE(row[u"Code_Type"_s].Text(), type);
        QCOMPARE(row[u"Code_Title"_s].Text(), path);
        QCOMPARE(row[u"Code_File"_s].Text(), file.replace(u'%', path));
        const QString stored = row[u"Code_Content"_s].Text();
        if (type == u"HTM") {
            QVERIFY2(stored.startsWith(u"<BASE HREF=") && stored.endsWith(u"</html>"), qPrintable(stored));
            // Blanks and whatever else would end an attribute without quotation marks are written as in an address.
            const QString written = QString(path).replace(u' ', u"%20"_s);
            QVERIFY2(stored.contains(text.replace(u'%', written)), qPrintable(stored));
        } else if (text.startsWith(u"中文段落")) {
            QVERIFY2(stored.contains(text), qPrintable(stored));
        } else {
            QCOMPARE(stored, text.replace(u'%', path));
        }
        bool complete = false;
        const QByteArray plain = Lzma_Decode(row[u"Code_Content_IO"_s].Bytes(), complete);
        QVERIFY(complete);
        QCOMPARE(plain, link ? path.toUtf8() + "\r\n" : bytes);
    }

    void A_Name_Cannot_Break_Out_Of_Its_Page()
    {
        m_program->Write(u"in/x"_s, {});
        const QString path = m_program->Path(u"in/a\"><script>'&=%.jpg"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        m_program->Write(u"data/temp/zip.db"_s, "of a capture that was killed");
        QVERIFY(!AddCodeContent_File_Ex(path, u"001"_s, u"0"_s, u"it's"_s, u"jpg"_s, false).isEmpty());
        QVERIFY(!QFile::exists(m_program->Path(u"data/temp/zip.db"_s)));
        const QString stored = Sql_Cell(u"select Code_Content from Code_Info"_s);
        QVERIFY2(stored.contains(u"/in/a%22%3E%3Cscript%3E'&%3D%.jpg></font>"), qPrintable(stored));
    }

    void A_File_That_Is_Too_Large_Is_Refused()
    {
        const QString path = m_program->Path(u"huge.txt"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(Q_INT64_C(500) << 20)); // takes no room on the disk
        m_program->prompts.Expect(u"256MB"_s, u"ok"_s);
        QCOMPARE(AddCodeContent_File_Ex(path, u"001"_s, u"0"_s, {}, u"txt"_s, false), QString());
        QVERIFY(!AddCodeContent_File_Ex(path, u"001"_s, u"0"_s, {}, u"mp4"_s, false).isEmpty());
    }

    void Rich_Text_Is_Captured_Without_A_Form()
    {
        QTextDocument source;
        source.setPlainText(u"甲乙丙 captured text that is longer than thirty characters"_s);
        const QString id = AddCodeContent_Ex(source, u"001"_s, u"0"_s, {}, {});
        const auto row = [] {
            return Sql_Rows(u"select Code_Title,Code_Content,Code_Done,Code_Color,Code_Type,Code_UpdateNum,"
                            "Code_ReadDate_Sta,Code_Updater from Code_Info"_s);
        };
        QCOMPARE(row().value(0), QStringList({source.toPlainText().left(30), source.toPlainText(), u"★★★★★"_s, u""_s,
                                              u"RTF"_s, u"0"_s, u"X"_s, u""_s}));
        QVERIFY(Sql_Cell(u"select Code_Date from Code_Info"_s).isEmpty());
        source.setPlainText(u"again"_s);
        QCOMPARE(AddCodeContent_Ex(source, u"001"_s, id, u"Named"_s, u"RTF"_s), id);
        QCOMPARE(row().size(), 1);
        QCOMPARE(row().value(0),
                 QStringList({u"Named"_s, u"again"_s, u"★★★★★"_s, u""_s, u"RTF"_s, u"1"_s, u""_s, u"Zelqor"_s}));
        Test_Form read;
        QVERIFY(GetCodeContent_Ex(id, read));
        QCOMPARE(read.content->toPlainText(), u"again"_s);
        QCOMPARE(QDir(m_program->Path(u"data/temp"_s)).entryList({u"zip*"_s}, QDir::Files), QStringList());
    }

    void A_Capture_That_Fails_Is_Silent()
    {
        m_program->Write(u"data/temp/zip.db/in the way"_s, "x");
        QCOMPARE(AddCodeContent_Ex(QTextDocument(), u"001"_s, u"0"_s, u"t"_s, {}), QString());
        QCOMPARE(m_program->Logged(), QStringList(u"Mod_DataBase\\AddCodeContent_Ex"_s));
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"0"_s);
    }

    void A_Missing_File_Is_Told()
    {
        m_program->prompts.Expect(u" 53"_s, u"ok"_s);
        QCOMPARE(AddCodeContent_File_Ex(m_program->Path(u"none.txt"_s), u"001"_s, u"0"_s, {}, u"txt"_s, false),
                 QString());
        QCOMPARE(m_program->Logged(), QStringList(u"AddCodeContent_File_Ex"_s));
        QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"0"_s);
    }
};

QTEST_MAIN(Test_Data_Update)
#include "test_data_update.moc"

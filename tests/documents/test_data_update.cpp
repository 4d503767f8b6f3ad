// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "documents/data_update.h"
#include "documents/document_store.h"
#include "platform/database/recordset.h"
#include "platform/lzma/zelqorfun.h"
#include "support/test_form.h"
#include "support/test_program.h"

#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Data_Update : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
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
        QTest::addRow("no creation date") << u"create"_s << u""_s << u"_CreateDate"_s;
        QTest::addRow("no such day") << u"create"_s << u"2026-02-30"_s << u"_CreateDate"_s;
        QTest::addRow("slashes") << u"create"_s << u"2026/02/03"_s << u""_s;
        QTest::addRow("words for a date") << u"update"_s << u"today"_s << u"_UpdateDate"_s;
        QTest::addRow("title of 200") << u"title"_s << QString(200, u'题') << u""_s;
        QTest::addRow("title of 201") << u"title"_s << QString(201, u'题') << u"_Title"_s;
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
        QCOMPARE(QString::fromLatin1(Refusal_Key(Check_Before_Save(form, u"One"_s))), key);
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
        QVERIFY(Store_Form(form, false, status));
        QVERIFY(status.endsWith(u"A title"));
        QVERIFY(Store_Form(form, true, status));
        QCOMPARE(Sql_Rows(u"select type_id from tab_log order by log_id"_s), (QList<QStringList>{{u"1"_s}, {u"2"_s}}));
        form.title = QString(256, u't');
        m_program->prompts.Expect(u"保存出错"_s, u"ok"_s);
        QVERIFY(!Store_Form(form, true, status));
        QCOMPARE(Sql_Cell(u"select count(*) from tab_log"_s), u"2"_s);
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
            QVERIFY2(stored.contains(text.replace(u'%', path)), qPrintable(stored));
        } else {
            QCOMPARE(stored, text.replace(u'%', path));
        }
        bool complete = false;
        const QByteArray plain = Lzma_Decode(row[u"Code_Content_IO"_s].Bytes(), complete);
        QVERIFY(complete);
        QCOMPARE(plain, link ? path.toUtf8() + "\r\n" : bytes);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "documents/attachments.h"
#include "documents/document_store.h"
#include "exchange/document_export.h"
#include "exchange/help_file.h"
#include "exchange/markdown.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/mime/page_file.h"
#include "platform/office/office_engine.h"
#include "platform/richtext/list_labels.h"
#include "support/stopping_work.h"
#include "support/test_program.h"
#include "support/zip_file.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <QTextCursor>
#include <QTextDocument>
#include <arpa/inet.h>
#include <csignal>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{
const QStringList Words{u"季度计划"_s, u"粗体"_s, u"Cell <b> & |"_s, u"second item"_s, u"the link"_s};
const QString Odd_Title = u"季度 \"Plan\" & <1> 'a;b' #5 100%"_s;

QByteArray Png()
{
    QImage image(5, 4, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A document with something of everything.
void Fill(QTextDocument &document)
{
    document.setHtml(u"<h1>季度计划</h1><p>A <b>粗体</b> word, <i>and</i> <a href=\"http://x.y/(a b)\">the link</a></p>"
                     "<ul><li>first item</li><li>second item</li></ul>"
                     "<table border=1><tr><th>Head</th><th>B</th></tr><tr><td>Cell &lt;b&gt; &amp; |</td>"
                     "<td>x<br>y</td></tr></table><p>end</p>"_s);
    document.addResource(QTextDocument::ImageResource, QUrl(u"picture:ab"_s), Png());
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertImage(u"picture:ab"_s);
}

QByteArray Output(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(program, arguments);
    process.waitForFinished(120'000);
    return process.readAllStandardOutput();
}

/// The pages of a file and the bytes of its pictures, by another reader of MIME.
constexpr const char *Read_Mime = R"(
import email, email.policy, sys
message = email.message_from_binary_file(open(sys.argv[1], 'rb'), policy=email.policy.default)
assert message.get_content_type() == 'multipart/related', message.get_content_type()
out = sys.stdout.buffer
out.write(message['Subject'].encode() + b'\n')
for part in message.iter_parts():
    data = part.get_content()
    out.write(data.encode() if isinstance(data, str) else b'<' + part['Content-ID'][1:-1].encode() + b'>' + data)
)";

/// A document of a word processor that shows a picture from elsewhere.
QByteArray Linked_Picture(const QByteArray &address)
{
    const QByteArray relations = "http://schemas.openxmlformats.org/package/2006/relationships";
    const QByteArray office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    const QByteArray drawing = "http://schemas.openxmlformats.org/drawingml/2006";
    const QByteArray kinds = "application/vnd.openxmlformats-";
    const auto relation = [&](const QByteArray &type, const QByteArray &target) {
        return "<Relationships xmlns=\"" + relations + "\"><Relationship Id=\"r1\" Type=\"" + office + '/' + type +
               "\" Target=\"" + target + "/></Relationships>";
    };
    return Zip_File::Zip(
        {{"[Content_Types].xml",
          "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default Extension=\"rels\" "
          "ContentType=\"" +
              kinds + "package.relationships+xml\"/><Override PartName=\"/d.xml\" ContentType=\"" + kinds +
              "officedocument.wordprocessingml.document.main+xml\"/></Types>"},
         {"_rels/.rels", relation("officeDocument", "d.xml\"")},
         {"_rels/d.xml.rels", relation("image", address + "\" TargetMode=\"External\"")},
         {"d.xml",
          "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body><w:p><w:r>"
          "<w:drawing><wp:inline xmlns:wp=\"" +
              drawing +
              "/wordprocessingDrawing\"><wp:extent cx=\"9000\" cy=\"9000\"/><wp:docPr id=\"1\" name=\"p\"/>"
              "<a:graphic xmlns:a=\"" +
              drawing + "/main\"><a:graphicData uri=\"" + drawing + "/picture\"><p:pic xmlns:p=\"" + drawing +
              "/picture\"><p:nvPicPr><p:cNvPr id=\"1\" name=\"p\"/><p:cNvPicPr/></p:nvPicPr><p:blipFill><a:blip "
              "xmlns:r=\"" +
              office +
              "\" r:link=\"r1\"/></p:blipFill><p:spPr><a:prstGeom prst=\"rect\"/></p:spPr></p:pic></a:graphicData>"
              "</a:graphic></wp:inline></w:drawing></w:r></w:p></w:body></w:document>"}});
}
} // namespace

class Test_Document_Export : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::optional<Outgoing_Document> m_document;
    QTextDocument m_shown;
    QByteArray m_path = qgetenv("PATH");
    Unwatched_Work m_work;

    Export_Outcome Export(const QString &name, Work &work)
    {
        const auto print = [](const QTextDocument &text, const QString &target, const QString &) {
            Files::Write_Bytes(target, "printed: " + text.toPlainText().toUtf8());
        };
        return Export_Document(*m_document, {m_program->Path(name), print}, work);
    }
    /// Only these programs can be found, as scripts of the shell.
    void Have_Only(const QMap<QString, QByteArray> &programs)
    {
        QVERIFY(QDir().mkpath(m_program->Path(u"bin"_s)));
        for (const auto &[name, script] : programs.asKeyValueRange()) {
            m_program->Write(u"bin/"_s + name, "#!/bin/sh\nPATH=/usr/bin:/bin\n" + script);
            Files::Make_Runnable(m_program->Path(u"bin/"_s + name));
        }
        qputenv("PATH", m_program->Path(u"bin"_s).toUtf8());
    }
    QString Failure_Of(const QString &name)
    {
        try {
            Export(name, m_work);
        } catch (const Run_Time_Error &error) {
            return error.description;
        }
        return {};
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"top"_s);
        Fill(m_shown);
        m_document.emplace(m_shown);
        m_document->title = Odd_Title;
        QVERIFY(QDir().mkpath(m_program->Path(u"out"_s)));
    }
    void cleanup()
    {
        qputenv("PATH", m_path);
        Office::Set_Time(300'000);
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_document.reset();
        m_program.reset();
    }

    /// One start of LibreOffice reads what it wrote itself and the RTF; everything else is read by others.
    void Every_Format_Is_Read_By_Another_Program()
    {
        const QString name = u"out/笔记 #1 100%"_s;
        for (const char *suffix : {"txt", "rtf", "htm", "mht", "doc", "docx", "odt", "md", "chm"}) {
            m_document.emplace(m_shown);
            m_document->title = Odd_Title;
            const Export_Outcome outcome = Export(name + u'.' + QLatin1String(suffix), m_work);
            QVERIFY2(!outcome.stopped && outcome.remark.isEmpty(), suffix);
        }
        QStringList read;
        for (const char *suffix : {"rtf", "doc", "docx", "odt"}) {
            const QString copy = m_program->Path(u"out/%1.%1"_s.arg(QLatin1String(suffix)));
            QVERIFY(QFile::copy(m_program->Path(name + u'.' + QLatin1String(suffix)), copy));
            read << copy;
        }
        Output(u"soffice"_s, QStringList{u"-env:UserInstallation=file://"_s + m_program->Path(u"reader"_s),
                                         u"--headless"_s, u"--convert-to"_s, u"html:HTML (StarWriter):EmbedImages"_s,
                                         u"--outdir"_s, m_program->Path(u"read"_s)} +
                                 read);
        QMap<QString, QString> texts;
        QTextDocument page;
        for (const char *suffix : {"rtf", "doc", "docx", "odt"}) {
            const QByteArray html = m_program->Bytes(u"read/%1.html"_s.arg(QLatin1String(suffix)));
            QVERIFY2(html.contains("data:image/png"), suffix);
            QVERIFY2(html.contains("<table"), suffix);
            page.setHtml(QString::fromUtf8(html));
            texts[QLatin1String(suffix)] = page.toPlainText();
        }
        texts[u"txt"_s] = QString::fromUtf8(m_program->Bytes(name + u".txt"_s));
        const QByteArray html = m_program->Bytes(name + u".htm"_s);
        QVERIFY(html.contains("src=\"data:image/png;base64," + Png().toBase64() + '"'));
        page.setHtml(QString::fromUtf8(html));
        QCOMPARE(page.metaInformation(QTextDocument::DocumentTitle), Odd_Title);
        texts[u"htm"_s] = page.toPlainText();

        const QByteArray mail =
            Output(u"python3"_s, {u"-c"_s, QLatin1String(Read_Mime), m_program->Path(name + u".mht"_s)});
        QCOMPARE(QString::fromUtf8(mail.left(mail.indexOf('\n'))), Odd_Title);
        QVERIFY(mail.contains("src=\"cid:picture1.png@zelqor\"") && mail.contains("<picture1.png@zelqor>" + Png()));
        page.setHtml(QString::fromUtf8(mail));
        texts[u"mht"_s] = page.toPlainText();

        const QString book = m_program->Path(u"book"_s);
        Output(u"extract_chmLib"_s, {m_program->Path(name + u".chm"_s), book});
        page.setHtml(QString::fromUtf8(m_program->Bytes(u"book/topic.htm"_s)));
        texts[u"chm"_s] = page.toPlainText();
        QVERIFY(m_program->Bytes(u"book/topic.htm"_s).contains("src=\"picture1.png\""));
        QCOMPARE(m_program->Bytes(u"book/picture1.png"_s), Png());

        page.setMarkdown(QString::fromUtf8(m_program->Bytes(name + u".md"_s)));
        texts[u"md"_s] = page.toPlainText();
        QVERIFY(m_program->Bytes(name + u".md"_s).endsWith("data:image/png;base64," + Png().toBase64() + '\n'));
        for (const auto &[suffix, text] : texts.asKeyValueRange()) {
            for (const QString &word : Words)
                QVERIFY2(text.contains(word), qPrintable(suffix + u": "_s + text));
        }
    }

    void A_Document_Of_An_Office_Program_Goes_As_A_Whole()
    {
        const QString id = AddCodeContent_File_Ex(QStringLiteral(ZELQOR_TEST_DATA "/office/words.docx"), u"001"_s,
                                                  u"0"_s, u"Words"_s, u"docx"_s, false);
        m_shown.setPlainText(u"only words"_s);
        const auto renew = [&] {
            m_document.emplace(m_shown);
            m_document->code_id = id;
            m_document->type = u"DOCX"_s;
        };
        renew();
        QCOMPARE(Export(u"out/a.docx"_s, m_work).remark, QString());
        QCOMPARE(m_program->Bytes(u"out/a.docx"_s),
                 Files::Read_Bytes(QStringLiteral(ZELQOR_TEST_DATA "/office/words.docx")));
        QCOMPARE(Export(u"out/a.htm"_s, m_work).remark, QString());
        QVERIFY(!m_program->Bytes(u"out/a.htm"_s).contains("only words"));
        QVERIFY(m_program->Bytes(u"out/a.htm"_s).contains("<table"));
        QCOMPARE(Export(u"out/a.pdf"_s, m_work).remark, QString());
        QVERIFY(m_program->Bytes(u"out/a.pdf"_s).startsWith("%PDF"));
        Have_Only({});
        renew();
        QCOMPARE(Export(u"out/b.md"_s, m_work).remark, Pack_Text("Export_Document", "_Words_Only"));
        QCOMPARE(m_program->Bytes(u"out/b.md"_s), "only words\n");
    }

    void Nothing_That_A_Document_Links_To_Is_Fetched()
    {
        const int ear = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in place{};
        place.sin_family = AF_INET;
        place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof(place);
        QVERIFY(bind(ear, reinterpret_cast<sockaddr *>(&place), length) == 0 && listen(ear, 5) == 0);
        QVERIFY(getsockname(ear, reinterpret_cast<sockaddr *>(&place), &length) == 0);
        const QByteArray address = "http://127.0.0.1:" + QByteArray::number(ntohs(place.sin_port)) + "/x.png";
        m_program->Write(u"a.docx"_s, Linked_Picture(address));
        m_document->code_id =
            AddCodeContent_File_Ex(m_program->Path(u"a.docx"_s), u"001"_s, u"0"_s, u"a"_s, u"docx"_s, false);
        m_document->type = u"DOCX"_s;
        Export(u"out/a.pdf"_s, m_work);
        QVERIFY(m_program->Bytes(u"out/a.pdf"_s).startsWith("%PDF"));
        pollfd knock{ear, POLLIN, 0};
        QCOMPARE(poll(&knock, 1, 0), 0);
        close(ear);
    }

    /// The engine reports to nobody: what becomes of the target is all that counts.
    void An_Engine_In_Trouble_Leaves_The_Old_File_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<QByteArray>("engine"); // "" for none
        QTest::addColumn<QByteArray>("said");
        const QByteArray hangs = "sleep 60 & echo $! >\"$0.id\"\nmv \"$0.id\" \"$(dirname \"$0\")/child\"\nwait\n";
        QTest::newRow("missing") << u"docx"_s << QByteArray() << QByteArray("_No_Engine");
        QTest::newRow("hangs") << u"doc"_s << hangs << QByteArray("_Engine_Late");
        QTest::newRow("is called off") << u"odt"_s << hangs << QByteArray();
        QTest::newRow("fails") << u"doc"_s << QByteArray("exit 3\n") << QByteArray("_Engine_Failed");
        QTest::newRow("dies") << u"odt"_s << QByteArray("kill -9 $$\n") << QByteArray("_Engine_Failed");
        QTest::newRow("writes nothing") << u"docx"_s << QByteArray("exit 0\n") << QByteArray("_Engine_Failed");
        QTest::newRow("no compiler") << u"chm"_s << QByteArray() << QByteArray("_No_Compiler");
    }
    void An_Engine_In_Trouble_Leaves_The_Old_File()
    {
        QFETCH(QString, target);
        QFETCH(QByteArray, engine);
        QFETCH(QByteArray, said);
        m_program->Write(u"out/a."_s + target, "old");
        Have_Only(engine.isEmpty() ? QMap<QString, QByteArray>() : QMap<QString, QByteArray>{{u"soffice"_s, engine}});
        Office::Set_Time(said == "_Engine_Late" ? 2'000 : 60'000);
        QElapsedTimer clock;
        clock.start();
        struct Impatient : Work {
            QString child;
            bool Next(qint64, qint64, const QString &) override { return !QFile::exists(child); }
        } impatient;
        impatient.child = m_program->Path(u"bin/child"_s);
        if (said.isEmpty())
            QVERIFY(Export(u"out/a."_s + target, impatient).stopped);
        else
            QCOMPARE(Failure_Of(u"out/a."_s + target), Pack_Text("Export_Document", said.constData()));
        QVERIFY(clock.elapsed() < 30'000);
        QCOMPARE(m_program->Bytes(u"out/a."_s + target), "old");
        if (engine.contains("child")) { // what it had started is gone too
            const auto child = m_program->Bytes(u"bin/child"_s).trimmed().toInt();
            QTRY_VERIFY(child > 1 && kill(child, 0) != 0);
        }
    }

    void Without_An_Engine_There_Is_Rich_Text_Instead()
    {
        Have_Only({});
        QCOMPARE(Export(u"out/a.doc"_s, m_work).remark, Pack_Text("Export_Document", "_Rtf_Instead"));
        QVERIFY(m_program->Bytes(u"out/a.doc"_s).startsWith("{\\rtf1"));
        QCOMPARE(Export(u"out/a.odt"_s, m_work).remark, QString());
        QVERIFY(m_program->Bytes(u"out/a.odt"_s).contains("application/vnd.oasis.opendocument.text"));
    }

    void A_Target_That_Cannot_Be_Written_Is_Told()
    {
        m_program->Write(u"out/a.htm/in the way"_s, {});
        for (const char *name : {"out/a.htm", "nowhere/a.mht", "nowhere/a.txt"})
            QVERIFY2(!Failure_Of(QLatin1String(name)).isEmpty(), name);
    }

    void Labels_That_A_Browser_Cannot_Make_Are_Text()
    {
        QTextDocument shown;
        QTextCursor cursor(&shown);
        QTextListFormat format;
        Rich_Text::Set_Rule(format, {.kind = 37, .start = 1, .level = 0, .text = u"(\u0000)"_s});
        cursor.insertList(format);
        cursor.insertText(u"甲\n乙"_s);
        m_document.emplace(shown);
        Export(u"out/a.htm"_s, m_work);
        QTextDocument page;
        page.setHtml(QString::fromUtf8(m_program->Bytes(u"out/a.htm"_s)));
        QCOMPARE(page.toPlainText().trimmed(), u"(一) 甲\n(二) 乙"_s);
    }

    void Stored_Files_Are_Listed()
    {
        m_document->code_id = u"{1}"_s;
        m_program->Write(u"表 <1>.bin"_s, QByteArray(2048, 'x'));
        QVERIFY(S_SaveFile(u"{1}"_s, m_program->Path(u"表 <1>.bin"_s), {}, Addin_Mode::Internal, m_work).id > 0);
        QVERIFY(S_SaveFile(u"{1}"_s, m_program->Path(u"表 <1>.bin"_s), u"linked"_s, Addin_Mode::Link, m_work).id > 0);
        Export(u"out/a.htm"_s, m_work);
        QTextDocument page;
        page.setHtml(QString::fromUtf8(m_program->Bytes(u"out/a.htm"_s)));
        const QString text = page.toPlainText();
        QVERIFY2(text.contains(u"序号\n文件名\n大小\n添加时间\n1\n表 <1>.bin\n2.00K\n2026-"_s), qPrintable(text));
        QVERIFY(!text.contains(u"linked"_s));
    }

    void A_Help_Project_Has_Its_Lines()
    {
        Have_Only({{u"chmcmd"_s, "cp *.hh? *.mht \"$(dirname \"$0\")\"\necho book >\"${1%.hhp}.chm\"\n"}});
        Export(u"out/笔=记;\"[1].chm"_s, m_work);
        QCOMPARE(m_program->Bytes(u"out/笔=记;\"[1].chm"_s), "book\n");
        const QString name = u"bin/笔_记___1_"_s;
        const QStringList project = QString::fromUtf8(m_program->Bytes(name + u".hhp"_s)).split(u"\r\n"_s);
        QCOMPARE(project.mid(0, 8) + project.mid(9),
                 QStringList({u" [Options]"_s, u" Compatibility = 1.1 Or later "_s,
                              u" Compiled file = 笔_记___1_.chm "_s, u" Contents file = 笔_记___1_.hhc "_s,
                              u" Default topic = topic.htm"_s, u" Default Window = win "_s, u" Language=0x0804 "_s,
                              u" [WINDOWS]"_s, u" [Files] "_s, u"topic.htm"_s, QString()}));
        QVERIFY(project[8].startsWith(u" win = \"笔_记___1_"_s) && project[8].endsWith(u"; \""_s));
        const QStringList contents = QString::fromUtf8(m_program->Bytes(name + u".hhc"_s)).split(u"\r\n"_s);
        QCOMPARE(contents.size(), 16);
        QCOMPARE(contents[9], u" <LI> <OBJECT type=\"text/sitemap\">"_s);
        QCOMPARE(contents[11], u" <param name=\"Local\" value=\"topic.htm\">"_s);
        const QStringList keywords = QString::fromUtf8(m_program->Bytes(name + u".hhk"_s)).split(u"\r\n"_s);
        QCOMPARE(keywords[0], contents[0]);
        QCOMPARE(keywords.mid(6), QStringList({u" </OBJECT>"_s, u" </UL></BODY></HTML>"_s, QString()}));
        QCOMPARE(Mime::Read_Page(m_program->Bytes(name + u".mht"_s)).pictures.value(0).bytes, Png());
    }

    void Markdown_Says_What_The_Document_Shows_data()
    {
        QTest::addColumn<QString>("html");
        QTest::addColumn<QString>("markdown");
        QTest::newRow("a heading") << u"<h2>A *b* #</h2>"_s << u"## A \\*b\\* \\#\n"_s;
        QTest::newRow("signs that mean nothing")
            << u"<p># a</p><p>1. b</p><p>- c<br>+ d</p><p>&lt;i&gt; [x](y) snake_case _e_ &amp;amp;</p>"_s
            << u"\\# a\n\n1\\. b\n\n\\- c\\\n\\+ d\n\n\\<i> \\[x\\](y) snake_case \\_e\\_ \\&amp;\n"_s;
        QTest::newRow("looks")
            << u"<p>中<b>粗体，</b>文<i>it </i><b>b</b> <b><i>both</i></b> <s>s</s>x<sup>2</sup></p>"_s
            << u"中<b>粗体，</b>文*it* **b** <b>*both*</b> ~~s~~x<sup>2</sup>\n"_s;
        QTest::newRow("a link with signs")
            << u"<p><a href='http://x/(a b)'>l</a></p>"_s << u"[l](<http://x/(a b)>)\n"_s;
        QTest::newRow("lists") << u"<ul><li>a<ol><li>b</li><li>c</li></ol></li><li>d</li></ul><p>e</p>"_s
                               << u"- a\n    1. b\n    2. c\n- d\n\ne\n"_s;
        QTest::newRow("a table")
            << u"<table><tr><th>A|B</th><th>C</th></tr><tr><td>x<br>y</td><td><p>1</p><p>2</p></td></tr>"
               "<tr><td colspan=2>z</td></tr></table>"_s
            << u"| **A\\|B** | **C** |\n| :---: | :---: |\n| x<br>y | 1<br>2 |\n| z |  |\n"_s;
        QTest::newRow("code") << u"<pre>a *b*\n  c</pre><p>d <tt>e`f</tt></p>"_s
                              << u"```\na *b*\n  c\n```\n\nd `` e`f ``\n"_s;
    }
    void Markdown_Says_What_The_Document_Shows()
    {
        QFETCH(QString, html);
        QTextDocument document;
        document.setHtml(html);
        QTEST(Markdown_Of(document), "markdown");
    }

    /// Bytes that nobody here wrote: nothing of them names a file elsewhere.
    void A_Foreign_Page_File_Is_Taken_With_Care_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("no mail") << QByteArray("\x00\xff\r\n\r\n<html>", 10);
        QTest::newRow("no end") << QByteArray("Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\n");
        QTest::newRow("deep")
            << QByteArray("Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\n").repeated(5000);
        QTest::newRow("a place elsewhere")
            << QByteArray("Content-Type: multipart/related; boundary=b\r\n\r\n--b\r\nContent-Type: image/png\r\n"
                          "Content-ID: <../../x@zelqor>\r\n\r\nabc\r\n--b--\r\n");
    }
    void A_Foreign_Page_File_Is_Taken_With_Care()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(Mime::Read_Page(bytes).pictures.size(), 0);
    }
};

QTEST_MAIN(Test_Document_Export)
#include "test_document_export.moc"

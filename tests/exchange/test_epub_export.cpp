// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_export.h"
#include "platform/files/door.h"
#include "support/stopping_work.h"
#include "support/stored_document.h"
#include "support/test_program.h"

#include <QBuffer>
#include <QImage>
#include <QProcess>
#include <QTest>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
QString Id(int number)
{
    return u"{00000000-0000-0000-0000-%1}"_s.arg(number, 12, 10, QChar(u'0'));
}
QByteArray Picture(const char *format)
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, format);
    return bytes;
}
QByteArray Link(const QString &address, const char *words)
{
    const QString target = QString(address).replace(u'{', u"\\{"_s).replace(u'}', u"\\}"_s);
    return R"({\field{\*\fldinst HYPERLINK ")" + target.toUtf8() + R"("}{\fldrslt )" + words + "}}";
}
/// What a program says, and how it ended.
std::pair<int, QString> Run(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    process.waitForFinished(120'000);
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}
const QString Odd_Title = u"<&>\"'//]]>  \u202E\uFFFF\u0001 😀 %20"_s;
} // namespace

class Test_Epub_Export : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Unwatched_Work m_work;

    void Store(int number, const QString &folder, const QString &title, const QString &type, const QByteArray &bytes,
               const QString &password = {})
    {
        Store_Document(*m_program, Id(number), folder, title, type, bytes, u"text"_s, password);
    }
    /// The same title twice, every odd sign, links of all kinds, pictures from everywhere, an empty document, a locked
    /// one that is linked to.
    void Store_Nasty()
    {
        Store(
            1, u"001002"_s, u"同名"_s, u"RTF"_s,
            R"({\rtf1\ansi{\colortbl;\red255\green0\blue0;}\pard\s1\outlinelevel0 Heading\par\pard {\*\bkmkstart here}{\*\bkmkend here}
{\b bold \i both}{\cf1\fs40 red}\par )" +
                Link(Id(2), "to the page") + Link(Id(9), "to one outside") + Link(Id(5), "to the locked one") +
                Link(u"#here"_s, "here") + Link(u"#nowhere"_s, "nowhere") +
                Link(u"https://example.org/a b?c=d&e=<f>#\u4e2d"_s, "web") + Link(u"javascript:alert(1)"_s, "script") +
                Link(u"http://"_s, "no host") + R"(\par
{\pict\pngblip\picwgoal600\pichgoal450 )" +
                Picture("PNG").toHex() + R"(}{\pict\jpegblip\piccropl100\picwgoal600\pichgoal450 )" +
                Picture("JPG").toHex() + R"(}{\pict\pngblip 89504e47}\par
{\trowd\clbrdrt\brdrs\clmgf\cellx2000\clmrg\cellx4000\pard\intbl joined\cell\cell\row\trowd\cellx2000\cellx4000\pard\intbl a\cell b\cell\row}\pard end\par})");
        Store(
            2, u"001"_s, u"同名"_s, u"HTM"_s,
            "<html><head><script>x()</script></head><body onload='x()'><h1>Head</h1><ol start=3><li>three<ul><li>inner"
            "</ul><li>four</ol><p>before<img src='https://example.org/x.png' alt='remote &lt;one&gt;'><img "
            "src=\"file:///etc/hostname\"><img src='data:image/gif;base64," +
                Picture("BMP").toBase64() +
                "'><a href='sub/page.html'>beside</a><a href='gone.html'>gone</a><a name='1 x'></a><a href='#1 "
                "x'>up</a>"
                "<table border=1><tr><th colspan=2>h<tr><td>a<td>b<table><tr><td>in</table></table>"
                "<p dir=rtl>\xD7\xA9</p><hr></body>");
        Store(3, u"002"_s, Odd_Title, u"TXT"_s, "plain \x01\x0b <tag> & \xF0\x9F\x98\x80\nsecond\tline");
        Store(4, u"001"_s, u"empty"_s, u"RTF"_s, "{\\rtf1\\ansi\\pard \\par}\r\n\r\n\r\n");
        Store(5, u"001"_s, u"locked"_s, u"RTF"_s, R"({\rtf1 secret})", u"pw"_s);
        Store(6, u"001002"_s, u"page.html"_s, u"TXT"_s, "beside");
        Store(9, u"001"_s, u"outside"_s, u"TXT"_s, "outside");
    }
    Epub_Order Order() const
    {
        return {m_program->Path(u"out/book.epub"_s),
                u"书 & <book>"_s,
                {{Id(3), Odd_Title, u"TXT"_s},
                 {Id(1), u"同名"_s, u"RTF"_s},
                 {Id(2), u"同名"_s, u"HTM"_s},
                 {Id(4), u"empty"_s, u"RTF"_s},
                 {Id(5), u"locked"_s, u"RTF"_s},
                 {Id(6), u"page.html"_s, u"TXT"_s}}};
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"002"_s, u"first & <b>"_s, 1);
        Add_Folder(u"001"_s, u"second"_s, 2);
        Add_Folder(u"001002"_s, u"inner"_s);
        m_program->Write(u"out/book.epub"_s, "the older book");
        Store_Nasty();
    }

    void A_Nasty_Selection_Becomes_A_Valid_Book()
    {
        const Book_Result result = Export_Epub(Order(), m_work);
        QCOMPARE(result.done, 4);
        QCOMPARE(result.failed.size(), 2);
        QCOMPARE(result.failed[0].name, u"empty"_s);
        QCOMPARE(result.failed[1].name, u"locked"_s);
        QStringList lost = result.lost_links;
        lost.sort();
        QCOMPARE(lost, (QStringList{u"同名 → gone"_s, u"同名 → locked"_s, u"同名 → no host"_s, u"同名 → outside"_s,
                                    u"同名 → script"_s}));
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);

        const QString folder = m_program->Path(u"out"_s);
        QCOMPARE(Run(u"cmake"_s, {u"-E"_s, u"tar"_s, u"xf"_s, u"book.epub"_s}, folder).first, 0);
        const auto part = [&](const QString &name) {
            return QString::fromUtf8(m_program->Bytes(u"out/EPUB/"_s + name));
        };
        const QString rich = part(u"document-2.xhtml"_s), page = part(u"document-3.xhtml"_s);
        for (const QString &piece :
             {u"<h2>Heading</h2>"_s, u"<a href=\"document-3.xhtml\">to the page</a>"_s, u"to one outside"_s,
              u"<a>to the locked one</a>"_s, u"<a href=\"#place-1\">here</a>"_s, u"colspan=\"2\""_s,
              u"<img src=\"picture-1.png\""_s, u"color:#ff0000"_s})
            QVERIFY2(rich.contains(piece), qPrintable(piece + rich));
        for (const QString &piece :
             {u"<h2>Head</h2>"_s, u"<ol type=\"1\""_s, u"three<ul><li>inner</li></ul></li><li>four"_s,
              u"remote &lt;one&gt;"_s, u"<a href=\"document-6.xhtml\">beside</a>"_s})
            QVERIFY2(page.contains(piece), qPrintable(piece + page));
        const QString contents = part(u"contents.xhtml"_s);
        const QStringList order{u"first &amp; &lt;b&gt;"_s,
                                u"document-1"_s,
                                u"second"_s,
                                u"document-3"_s,
                                u"inner"_s,
                                u"document-2"_s,
                                u"document-6"_s};
        qsizetype at = 0;
        for (const QString &piece : order)
            QVERIFY2((at = contents.indexOf(piece, at)) > 0, qPrintable(piece + contents));

        if (!Files::Is_File(u"/usr/share/java/epubcheck.jar"_s))
            QSKIP("epubcheck is not installed");
        const auto [code, said] =
            Run(u"java"_s, {u"-jar"_s, u"/usr/share/java/epubcheck.jar"_s, u"book.epub"_s}, folder);
        QVERIFY2(code == 0 && !said.contains(u"WARNING"_s), qPrintable(said));
    }

    void An_Older_Book_Stays()
    {
        for (qint64 before = 0; before <= 6; before += 3) { // the last one while the book is packed
            Stopping_Work work(before);
            QVERIFY(Export_Epub(Order(), work).stopped);
        }
        Epub_Order order = Order();
        order.rows = {order.rows[3], order.rows[4]};
        QCOMPARE(Export_Epub(order, m_work).done, 0);
        order = Order();
        order.target = m_program->Path(u"missing/folder/book.epub"_s);
        bool isRefused = false;
        try {
            (void)Export_Epub(order, m_work);
        } catch (const Run_Time_Error &) {
            isRefused = true;
        }
        QVERIFY(isRefused);
        QCOMPARE(m_program->Bytes(u"out/book.epub"_s), QByteArray("the older book"));
        QCOMPARE(Files::Entries(m_program->Path(u"out"_s)).size(), 1);
        QCOMPARE(Files::Entries(m_program->Path(u"data/temp"_s)).size(), 0);
    }
};

QTEST_MAIN(Test_Epub_Export)
#include "test_epub_export.moc"

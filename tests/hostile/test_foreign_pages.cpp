// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"
#include "editor/printing.h"
#include "editor/text_editor.h"
#include "editor/web_page.h"
#include "hostile/watch.h"
#include "platform/html/bounded_page.h"
#include "support/test_program.h"

#include <QImage>
#include <QMimeData>
#include <QTest>
#include <QTextTable>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
QString Repeated(const char16_t *text, int times)
{
    return QStringView(text).toString().repeated(times);
}
} // namespace

class Test_Foreign_Pages : public QObject
{
    Q_OBJECT

private slots:
    /// Whatever a page names and whichever way it comes, nothing of it is opened. A pipe or a device would keep the
    /// program for ever.
    void Nothing_That_A_Page_Names_Is_Opened_data()
    {
        QTest::addColumn<QString>("page");
        QTest::newRow("style sheet") << u"<link rel=stylesheet href='%1'><p>text</p>"_s;
        QTest::newRow("import") << u"<style>@import '%1'; @import url(%1);</style><p>text</p>"_s;
        QTest::newRow("picture") << u"<p>text</p><img src='%1'>"_s;
        QTest::newRow("picture by address") << u"<p>text</p><img src=file://%1>"_s;
        QTest::newRow("ground") << u"<body background='%1'><table background='%1'><tr><td>text</table>"_s;
        QTest::newRow("ground in a style") << u"<p style=\"background-image:url('%1')\">text</p>"_s;
        QTest::newRow("spelled in escapes") << u"<style>p { background: \\75rl(%1) }</style><p>text</p>"_s;
        QTest::newRow("spelled in references") << u"<p style='background-image:&#117;rl(%1)'>text</p>"_s;
        QTest::newRow("label of a list") << u"<ul style='list-style-image:url(%1)'><li>text</ul>"_s;
        QTest::newRow("tip") << u"<a href='#x' title='&lt;img src=%1&gt;'>text</a>"_s;
    }
    void Nothing_That_A_Page_Names_Is_Opened()
    {
        QFETCH(QString, page);
        const Test_Program program;
        QImage image(4, 4, QImage::Format_RGB32);
        QVERIFY(QDir().mkdir(program.Path(u"out"_s)));
        QVERIFY(image.save(program.Path(u"out/own.png"_s)));
        program.Write(u"out/page.css"_s, "p { color: red }");
        QCOMPARE(mkfifo(qPrintable(program.Path(u"out/pipe"_s)), 0600), 0);
        const Watch watch(program.Path(u"out"_s));
        for (const QString &named : {program.Path(u"out/own.png"_s), program.Path(u"out/page.css"_s),
                                     program.Path(u"out/pipe"_s), u"/dev/zero"_s}) {
            const QString whole = page.arg(named);
            for (const char *type : {"text/html", "application/x-qrichtext"}) {
                Text_Editor editor;
                QMimeData data;
                data.setData(QLatin1String(type), whole.toUtf8());
                editor.Insert_Data(data);
                Shown(editor);
            }
            for (const QUrl &base : {QUrl(), QUrl::fromLocalFile(program.Path(u"data/"_s))}) {
                Text_Editor editor;
                Web_Page::Show(whole, *editor.document(), base);
                Shown(editor);
                QVERIFY(editor.toPlainText().contains(u"text"_s));
            }
        }
        QVERIFY(!watch.Has_Seen_One());
    }

    /// What the user opens shows the pictures that lie with it, and no others.
    void A_Page_Shows_The_Pictures_That_Lie_With_It_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("shown");
        const QString frame(QChar(0xFFFC));
        QTest::newRow("beside it") << u"own.png"_s << frame;
        QTest::newRow("above it") << u"../../outside.png"_s << u"words"_s;
        QTest::newRow("through a link") << u"link.png"_s << u"words"_s;
        QTest::newRow("vector") << u"own.svg"_s << u"words"_s;
        QTest::newRow("on a network") << u"//host/share/x.png"_s << u"words"_s;
        QTest::newRow("in the page") << u"data:image/png;base64,"_s << frame;
        QTest::newRow("vector in the page")
            << u"data:image/svg+xml,<svg xmlns='http://www.w3.org/2000/svg'/>"_s << u"words"_s;
    }
    void A_Page_Shows_The_Pictures_That_Lie_With_It()
    {
        QFETCH(QString, source);
        QFETCH(QString, shown);
        const Test_Program program;
        QImage image(4, 4, QImage::Format_RGB32);
        const QString folder = program.Path(u"pages/one/"_s);
        QVERIFY(QDir().mkpath(folder) && image.save(folder + u"own.png"_s) &&
                image.save(program.Path(u"outside.png"_s)));
        QVERIFY(QFile::link(program.Path(u"outside.png"_s), folder + u"link.png"_s));
        program.Write(u"pages/one/own.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'/>");
        if (source.endsWith(u"base64,"_s))
            source += QString::fromLatin1(program.Bytes(u"outside.png"_s).toBase64());
        Text_Editor editor;
        Web_Page::Show(u"<img alt=words src=\"%1\">"_s.arg(source), *editor.document(), QUrl::fromLocalFile(folder));
        QCOMPARE(editor.document()->toRawText(), shown);
    }

    /// Small pages that a pane would lay out for hours, or in all memory. Their text stays.
    void A_Page_Is_Within_Bounds_data()
    {
        QTest::addColumn<QString>("page");
        const QString cell = u"<tr><td>a"_s;
        QTest::newRow("padding") << u"<table cellpadding=2000000000 cellspacing=2000000000 border=99999><tr><td>a"_s;
        QTest::newRow("padding in digits of another kind") << u"<table cellpadding='2&#48;00000000'><tr><td>a"_s;
        QTest::newRow("tables within tables") << Repeated(u"<table><tr><td>", 500) + u'a';
        QTest::newRow("columns") << u"<table><tr><td colspan=2000000000>a"_s;
        QTest::newRow("rows") << u"<table><tr><td rowspan=2000000000>a"_s;
        QTest::newRow("a wide row and many rows") << u"<table><tr>"_s + Repeated(u"<td>", 3000) + cell.repeated(3000);
        QTest::newRow("stairs of cells") << u"<table>"_s + Repeated(u"<tr><td rowspan=999>a", 3000);
        QTest::newRow("tables side by side") << Repeated(u"<table><tr><td colspan=256 rowspan=300></table>", 2000);
        QTest::newRow("tags that never end") << Repeated(u"<b><div><span>", 30'000);
        QTest::newRow("list items") << Repeated(u"<li>", 30'000);
        QTest::newRow("lists within lists") << Repeated(u"<ul><li>", 10'000);
        QTest::newRow("font size") << u"<p style='font-size:999999999px'>a <font size=2000000000>b"_s;
        QTest::newRow("margins") << u"<p style='margin:2000000000px;text-indent:2000000000px'>a"_s;
        QTest::newRow("picture") << u"<img src=x width=2000000000 height=2000000000>"_s;
        QTest::newRow("sheets") << Repeated(u"<style>p{}</style>", 50'000);
        QTest::newRow("rules and tags") << u"<style>"_s + Repeated(u"b{}", 9'000) + u"</style>"_s +
                                               Repeated(u"<b>a</b>", 50'000);
        QTest::newRow("rules") << u"<style>"_s + Repeated(u"p b i{color:red}", 100'000) + u"</style>"_s +
                                      Repeated(u"<p>a", 2000);
        QTest::newRow("comment, tag and value without end") << u"<p>a</p>"_s + Repeated(u"<a href='", 50'000);
    }
    void A_Page_Is_Within_Bounds()
    {
        QFETCH(QString, page);
        const Test_Program program;
        for (const bool pasted : {true, false}) {
            Text_Editor editor;
            editor.resize(600, 400);
            QMimeData data;
            data.setHtml(u"<p>first</p>"_s + page + u"last"_s);
            pasted ? editor.Insert_Data(data) : Web_Page::Show(data.html(), *editor.document());
            QVERIFY(editor.document()->size().width() < 100'000);
            QVERIFY(editor.toPlainText().startsWith(u"first"_s));
            if (!page.endsWith(u'\''))
                QVERIFY(editor.toPlainText().trimmed().endsWith(u"last"_s));
        }
    }

    void What_A_Pane_Can_Show_Stays_data()
    {
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("bounded");
        QTest::newRow("looks") << u"<P align=center><B>a</B> <i>b</i><br>c &amp; d"_s
                               << u"<p align=\"center\"><b>a</b> <i>b</i><br>c &amp; d"_s;
        QTest::newRow("style") << u"<span style='color:#12345678;margin:-50000px'>a</span>"_s
                               << u"<span style=\"color:#12345678;margin:-4000px\">a</span>"_s;
        QTest::newRow("link") << u"<a href='a?b=1&amp;c=\"2\"' onclick=x()>a</a>"_s
                              << u"<a href=\"a?b=1&amp;c=&quot;2&quot;\">a</a>"_s;
        QTest::newRow("table") << u"<table width=100%><tr><td colspan=2>a</td></tr></table>"_s
                               << u"<table width=\"100%\"><tr><td colspan=\"2\">a</td></tr></table>"_s;
        QTest::newRow("no tags") << u"a < b <> c <3 <!-- x --> d<?x?>"_s << u"a &lt; b &lt;> c &lt;3  d"_s;
        QTest::newRow("of an office program") << u"a<![if !x]><o:p>b</o:p><p:x>c<xml><w:a>d</w:a></xml>"_s << u"abc"_s;
        QTest::newRow("what runs") << u"a<script>b<b></script>c<form><svg><image href=x></svg>d"_s << u"acd"_s;
    }
    void What_A_Pane_Can_Show_Stays()
    {
        QFETCH(QString, page);
        QFETCH(QString, bounded);
        QCOMPARE(Html::Bounded(page), bounded);
    }

private:
    /// Lays the text out, paints it, copies it and breaks it into pages.
    static void Shown(Text_Editor &editor)
    {
        editor.show();
        editor.grab();
        editor.selectAll();
        editor.copy();
        Printing::Page_Starts(*editor.document());
        QHelpEvent tip(QEvent::ToolTip, {}, editor.viewport()->mapToGlobal(QPoint(12, 12)));
        QCoreApplication::sendEvent(&editor, &tip);
    }
};

QTEST_MAIN(Test_Foreign_Pages)
#include "test_foreign_pages.moc"

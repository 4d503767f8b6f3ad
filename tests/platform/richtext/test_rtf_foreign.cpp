// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"
#include "platform/richtext/rich_text.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>

/// LibreOffice and this program read each other's RTF and see the same text, labels of lists included; what went
/// through both still has its looks.
class Test_Rtf_Foreign : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void reads_its_rtf_data() { Documents(); }
    void reads_its_rtf();
    void it_reads_ours_data() { Documents(); }
    void it_reads_ours();
    void it_keeps_ours_data() { Documents(); }
    void it_keeps_ours();
    void it_keeps_what_follows_a_look_data();
    void it_keeps_what_follows_a_look();

private:
    static void Documents();
    void Convert(const QString &target, const QStringList &files, const QString &directory = {},
                 const QString &source = {});
    void Has_Its_Looks(const QString &rtf);
    QString Path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

namespace
{
struct Language {
    const char *name;
    QString text;
};
const Language languages[] = {{"English", u"Plain \u201Cwords\u201D \u2013 caf\u00E9"_qs},
                              {"Chinese", u"中文文字，“引号”。𠀀"_qs},
                              {"Japanese", u"日本語のカタカナ"_qs},
                              {"Russian", u"Русский текст №"_qs},
                              {"Arabic", u"نص عربي"_qs}};

QByteArray Png()
{
    QImage image(20, 10, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

/// A flat OpenDocument text with headings, attributes, two kinds of lists, a merged table, a link, a note, a picture.
QByteArray Open_Document(const QString &text)
{
    const QString body = uR"xml(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" office:version="1.2"
 xmlns:text="urn:oasis:names:tc:opendocument:xmlns:text:1.0" xmlns:style="urn:oasis:names:tc:opendocument:xmlns:style:1.0"
 xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" xmlns:xlink="http://www.w3.org/1999/xlink"
 xmlns:draw="urn:oasis:names:tc:opendocument:xmlns:drawing:1.0"
 xmlns:fo="urn:oasis:names:tc:opendocument:xmlns:xsl-fo-compatible:1.0"
 xmlns:svg="urn:oasis:names:tc:opendocument:xmlns:svg-compatible:1.0"
 office:mimetype="application/vnd.oasis.opendocument.text"><office:automatic-styles>
<style:style style:name="B" style:family="text"><style:text-properties fo:font-weight="bold"
 style:font-weight-asian="bold" style:font-weight-complex="bold" fo:color="#ff0000"/></style:style>
<text:list-style style:name="U"><text:list-level-style-bullet text:level="1" text:bullet-char="•"/>
<text:list-level-style-bullet text:level="2" text:bullet-char="◦"/></text:list-style>
<text:list-style style:name="N"><text:list-level-style-number text:level="1" style:num-format="a" style:num-prefix="("
 style:num-suffix=")"/></text:list-style></office:automatic-styles><office:body><office:text>
<text:h text:outline-level="1">1 %1</text:h><text:p>2 <text:span text:style-name="B">%1</text:span> {a\b}<text:tab/>;</text:p>
<text:list text:style-name="U"><text:list-item><text:p>3 %1</text:p><text:list><text:list-item><text:p>4 %1</text:p>
</text:list-item></text:list></text:list-item></text:list>
<text:list text:style-name="N"><text:list-item><text:p>5 %1</text:p></text:list-item><text:list-item><text:p>6 %1</text:p>
</text:list-item></text:list><table:table><table:table-column table:number-columns-repeated="2"/><table:table-row>
<table:table-cell table:number-columns-spanned="2"><text:p>7 %1</text:p></table:table-cell><table:covered-table-cell/>
</table:table-row><table:table-row><table:table-cell><text:p>8 %1</text:p></table:table-cell><table:table-cell>
<text:p>9</text:p></table:table-cell></table:table-row></table:table>
<text:p><text:a xlink:href="http://a.b/c">10 %1</text:a> after<text:line-break/>the break</text:p>
<text:p><draw:frame text:anchor-type="as-char" svg:width="1in" svg:height="0.5in"><draw:image><office:binary-data>%2
</office:binary-data></draw:image></draw:frame>last %1</text:p></office:text></office:body></office:document>)xml"_qs;
    return body.arg(text, QLatin1String(Png().toBase64())).toUtf8();
}

/// The same as a web page.
QByteArray Web_Page(const QString &text)
{
    const QString page = uR"html(<!DOCTYPE html><html><head><meta charset="utf-8"><title>0</title></head><body>
<h1>1 %1</h1><p>2 <b><font color="#ff0000">%1</font></b> {a\b} ;</p><ul><li>3 %1<ul><li>4 %1</li></ul></li></ul>
<ol type="a"><li>5 %1</li><li>6 %1</li></ol><table border="1"><tr><td colspan="2">7 %1</td></tr>
<tr><td>8 %1</td><td>9</td></tr></table><p><a href="http://a.b/c">10 %1</a> after<br>the break</p>
<p><img width="96" height="48" src="data:image/png;base64,%2">last %1</p></body></html>)html"_qs;
    return page.arg(text, QLatin1String(Png().toBase64())).toUtf8();
}

const char *const looks[] = {"b",    "i",        "strike",        "caps",      "scaps",   "super",
                             "sub",  "ul",       "uldb",          "ulw",       "ulhwave", "cf1",
                             "fs40", "f1",       "highlight1",    "expndtw40", "sub\\b",  "super\\i",
                             "v",    "super\\v", "charscalex150", "plain"};

/// A look before everything that has words of its own, in the middle of a paragraph and at its end.
QByteArray Looking(const QByteArray &look)
{
    const QByteArray things[] = {
        "{\\field{\\*\\fldinst HYPERLINK \"http://a.b/c\" \\\\o \"tip\"}{\\fldrslt link}}",
        "{\\field{\\*\\fldinst HYPERLINK \"http://a.b/c\"}{\\fldrslt a{\\" + look + " b}c}}",
        "{\\pict\\pngblip\\picwgoal300\\pichgoal150 " + Png().toHex() + "}",
        "{\\*\\bkmkstart here}{\\*\\bkmkend here}",
        "{\\footnote foot{\\" + look + " b}c}",
        "{\\footnote\\ftnalt endnote}",
        "{\\*\\atnid AB}{\\*\\atnauthor Anna}{\\*\\annotation{\\*\\atndate -2020400826}comment}",
        "\\line\\tab \\u20013?",
        "\\par\\pard\\ls1 item\\par\\pard ",
        "\\par\\trowd\\cellx3000\\cellx6000\\intbl cell\\cell{\\" + look + " x}\\cell\\row\\pard ",
    };
    QByteArray body;
    for (const QByteArray &thing : things)
        body += "a{\\" + look + " x}" + thing + " end\\par{\\" + look + " x}y" + thing + "{\\" + look + " end\\par}";
    return "{\\rtf1\\ansi{\\fonttbl{\\f0 Liberation Serif;}{\\f1 Liberation Sans;}}{\\colortbl;\\red255;}"
           "{\\*\\listtable{\\list{\\listlevel\\levelnfc0{\\leveltext\\'02\\'00.;}{\\levelnumbers\\'01;}}"
           "\\listid1}}{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}" +
           body + "}";
}

void Write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size(), qPrintable(path));
}

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The text with the labels of lists, without blanks and pictures.
QString Essence(const QTextDocument &document)
{
    QString text;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        text += Rich_Text::Item_Label(block) + block.text();
    return text;
}

/// Its text export shows the bullets of all levels, the second one's as a ring.
QString Squeezed(QString text)
{
    text.replace(u'◦', u'•');
    static const QRegularExpression blanks(u"[\\s\u2028\uFFFC\uFEFF]+"_qs);
    return text.remove(blanks);
}

/// Both texts from where they part, "" and "" for the same text but for blanks.
std::pair<QString, QString> Difference(const QString &one, const QString &other)
{
    const QString left = Squeezed(one), right = Squeezed(other);
    const auto parted = std::mismatch(left.begin(), left.end(), right.begin(), right.end());
    return {left.sliced(parted.first - left.begin()), right.sliced(parted.second - right.begin())};
}
} // namespace

void Test_Rtf_Foreign::Documents()
{
    QTest::addColumn<QString>("name");
    for (const Language &language : languages) {
        for (const char *kind : {"text", "page"})
            QTest::addRow("%s %s", language.name, kind)
                << u"%1_%2"_qs.arg(QLatin1String(language.name), QLatin1String(kind));
    }
}

/// @param directory where the results go, "" for where the files are  @param source the filter that reads them, if not
/// the usual one
void Test_Rtf_Foreign::Convert(const QString &target, const QStringList &files, const QString &directory,
                               const QString &source)
{
    QStringList arguments{u"-env:UserInstallation=file://"_qs + Path(u"profile"_qs), u"--headless"_qs};
    if (!source.isEmpty())
        arguments << u"--infilter="_qs + source;
    arguments << u"--convert-to"_qs << target << u"--outdir"_qs << Path(directory);
    QProcess office;
    office.setWorkingDirectory(m_directory.path());
    office.start(u"soffice"_qs, arguments + files);
    QVERIFY2(office.waitForFinished(120'000) && office.exitCode() == 0, office.readAllStandardError().constData());
}

/// Each call of LibreOffice takes seconds, so all documents go through it together.
void Test_Rtf_Foreign::initTestCase()
{
    QStringList names, texts, pages;
    for (const Language &language : languages) {
        const QString name = QString::fromLatin1(language.name);
        texts << name + u"_text.fodt"_qs;
        Write(Path(texts.last()), Open_Document(language.text));
        pages << name + u"_page.html"_qs;
        Write(Path(pages.last()), Web_Page(language.text));
        names << name + u"_text"_qs << name + u"_page"_qs;
    }
    const QString rtf = u"rtf:Rich Text Format"_qs;
    Convert(rtf, texts);
    Convert(rtf, pages, {}, u"HTML (StarWriter)"_qs);
    QStringList theirs, ours;
    for (const QString &name : std::as_const(names)) {
        QTextDocument document;
        QVERIFY2(Rich_Text::Read_Rtf(Bytes(Path(name + u".rtf"_qs)), document), qPrintable(name));
        theirs << name + u".rtf"_qs;
        ours << name + u"_ours.rtf"_qs;
        Write(Path(ours.last()), Rich_Text::Write_Rtf(document));
    }
    Convert(u"txt:Text (encoded):UTF8"_qs, theirs + ours);
    for (std::size_t i = 0; i < std::size(looks); ++i) {
        QTextDocument document;
        QVERIFY(Rich_Text::Read_Rtf(Looking(looks[i]), document));
        ours << u"look_%1.rtf"_qs.arg(i);
        Write(Path(ours.last()), Rich_Text::Write_Rtf(document));
    }
    Convert(rtf, ours, u"kept"_qs);
}

void Test_Rtf_Foreign::Has_Its_Looks(const QString &rtf)
{
    QTextDocument document;
    QVERIFY(Rich_Text::Read_Rtf(Bytes(Path(rtf)), document));
    QCOMPARE(document.firstBlock().blockFormat().headingLevel(), 1);
    QTextCursor bold = document.find(u"2 "_qs);
    bold.setPosition(bold.selectionEnd() + 1);
    QVERIFY(bold.charFormat().fontWeight() == QFont::Bold);
    if (!rtf.contains(u"Arabic"_qs)) // LibreOffice leaves out the colour of right-to-left text
        QCOMPARE(bold.charFormat().foreground().color(), QColor(Qt::red));
    QTextCursor cell = document.find(u"7 "_qs);
    QVERIFY(cell.currentTable());
    QCOMPARE(cell.currentTable()->cellAt(cell).columnSpan(), 2);
    QCOMPARE(document.find(u"10 "_qs).charFormat().anchorHref(), u"http://a.b/c"_qs);
    QTextCursor picture = document.find(u"\uFFFC"_qs);
    const QTextImageFormat format = picture.charFormat().toImageFormat();
    QCOMPARE(QSizeF(qRound(format.width()), qRound(format.height())), QSizeF(96, 48));
    QCOMPARE(
        QImage::fromData(document.resource(QTextDocument::ImageResource, QUrl(format.name())).toByteArray()).size(),
        QSize(20, 10));
}

void Test_Rtf_Foreign::reads_its_rtf()
{
    QFETCH(QString, name);
    QTextDocument document;
    QVERIFY(Rich_Text::Read_Rtf(Bytes(Path(name + u".rtf"_qs)), document));
    const auto [ours, theirs] = Difference(Essence(document), QString::fromUtf8(Bytes(Path(name + u".txt"_qs))));
    QCOMPARE(ours, theirs);
    Has_Its_Looks(name + u".rtf"_qs);
}

void Test_Rtf_Foreign::it_reads_ours()
{
    QFETCH(QString, name);
    QTextDocument document;
    QVERIFY(Rich_Text::Read_Rtf(Bytes(Path(name + u"_ours.rtf"_qs)), document));
    const auto [theirs, ours] = Difference(QString::fromUtf8(Bytes(Path(name + u"_ours.txt"_qs))), Essence(document));
    QCOMPARE(theirs, ours);
}

void Test_Rtf_Foreign::it_keeps_ours()
{
    QFETCH(QString, name);
    QTextDocument before, after;
    QVERIFY(Rich_Text::Read_Rtf(Bytes(Path(name + u"_ours.rtf"_qs)), before));
    QVERIFY(Rich_Text::Read_Rtf(Bytes(Path(u"kept/"_qs + name + u"_ours.rtf"_qs)), after));
    const auto [lost, instead] = Difference(Essence(before), Essence(after));
    QCOMPARE(lost, instead);
    const auto font = [](const QTextDocument &document) {
        QTextCursor text = document.find(u"8 "_qs);
        text.setPosition(text.selectionEnd() + 1);
        return text.charFormat().font();
    };
    QCOMPARE(font(after).families(), font(before).families());
    QCOMPARE(font(after).pointSizeF(), font(before).pointSizeF());
    Has_Its_Looks(u"kept/"_qs + name + u"_ours.rtf"_qs);
}

void Test_Rtf_Foreign::it_keeps_what_follows_a_look_data()
{
    QTest::addColumn<QString>("file");
    for (std::size_t i = 0; i < std::size(looks); ++i)
        QTest::newRow(looks[i]) << u"look_%1.rtf"_qs.arg(i);
}

/// Text with its links, pictures and notes, the kinds of these and who wrote them.
void Test_Rtf_Foreign::it_keeps_what_follows_a_look()
{
    QFETCH(QString, file);
    const auto all = [](const QString &path) {
        QTextDocument document;
        Rich_Text::Read_Rtf(Bytes(path), document);
        QString text;
        int note = 0;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            for (auto at = block.begin(); !at.atEnd(); ++at) {
                const QTextCharFormat format = at.fragment().charFormat();
                const int number = format.intProperty(Rich_Text::Note_Number);
                if (std::exchange(note, number) != number)
                    text += format.property(Rich_Text::Note_Kind).toString() +
                            format.property(Rich_Text::Note_Origin).toStringList().join(u',');
                text += at.fragment().text() + format.stringProperty(Rich_Text::Hidden_Text) + format.anchorHref() +
                        format.toImageFormat().name().left(7);
            }
            text += Rich_Text::Item_Label(block) + u'|';
        }
        return text.replace(u'\n', u'|').remove(QChar::ObjectReplacementCharacter);
    };
    QCOMPARE(all(Path(u"kept/"_qs + file)), all(Path(file)));
}

QTEST_MAIN(Test_Rtf_Foreign)
#include "test_rtf_foreign.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/number_format.h"
#include "platform/extract/text_extractor.h"
#include "platform/extract/tool_text.h"
#include "support/zip_file.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace Zip_File;
using ExtractText::TextExtractor;

namespace
{
const QString Data = QStringLiteral(ZELQOR_TEST_DATA "/office/");

QByteArray Bytes_Of(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Without white space, which is laid out differently by every program.
QString Bare(QString text)
{
    text.removeIf([](QChar c) { return c.isSpace() || c == QChar(0xFEFF); });
    return text;
}

QByteArray Utf16(QStringView text)
{
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

/// A part's relationships, each a type and a target; the ids are the types.
QByteArray Relationships(const Parts &targets)
{
    QByteArray xml;
    for (const auto &[type, target] : targets)
        xml += "<Relationship Id=\"" + type + "\" Type=\"http://x/" + type + "\" Target=\"" + target + "\"/>";
    return "<Relationships>" + xml + "</Relationships>";
}

QByteArray Odd_Names_Book()
{
    return Zip(
        {{"_rels/.rels", Relationships({{"thumbnail", "t.png"}, {"officeDocument", "/b/book1.xml"}})},
         {"xl/workbook.xml", "<workbook/>"},
         {"b/book1.xml", "<workbook xmlns:r=\"relation\"><sheets><sheet r:id=\"worksheet\"/></sheets></workbook>"},
         {"b/_rels/book1.xml.rels",
          Relationships({{"worksheet", "w/1.xml"}, {"sharedStrings", "../s.xml"}, {"styles", "f.xml"}})},
         {"s.xml", "<sst><si><t>word</t></si></sst>"},
         {"b/f.xml", "<styleSheet><cellXfs><xf numFmtId=\"10\"/></cellXfs></styleSheet>"},
         {"b/w/1.xml", "<worksheet><row><c t=\"s\"><v>0</v></c><c><v>0.5</v></c></row></worksheet>"}});
}

QByteArray Word_File(const QByteArray &body, const QByteArray &before = {}, quint16 flags = 0)
{
    return Zip({{"word/document.xml",
                 "<?xml version=\"1.0\"?>" + before +
                     "<w:document xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"><w:body>" +
                     body + "</w:body></w:document>"}},
               flags);
}

QByteArray Entities()
{
    QByteArray type = "<!DOCTYPE d [<!ENTITY a0 \"ha\">";
    for (int i = 1; i < 30; ++i)
        type += QStringLiteral("<!ENTITY a%1 \"&a%2;&a%2;\">").arg(i).arg(i - 1).toLatin1();
    return type + "]>";
}

/// The head of a compound file with sectors of 512 bytes, told of by numbers at their places ([MS-CFB] 2.2), and then
/// sectors of numbers.
QByteArray Compound(const QList<std::pair<int, quint32>> &head, const QList<quint32> &numbers)
{
    QByteArray bytes(512, '\xff');
    bytes.replace(0, 8, QByteArray::fromHex("d0cf11e0a1b11ae1"));
    bytes.replace(30, 2, Little(quint16(9)));
    for (const auto &[place, number] : head)
        bytes.replace(place, 4, Little(number));
    for (const quint32 number : numbers)
        bytes += Little(number);
    return bytes;
}

/// A chain of sectors that leads behind the file's end and stays there.
QByteArray Looping_Slides()
{
    QList<quint32> next(128, 100);
    return Compound({{48, 0}, {68, 0xFFFFFFFE}, {76, 0}}, next);
}

/// Slides of one text; the file is encrypted when it has a stream of that name, however short that is.
QByteArray Small_Slides(const QString &another)
{
    const auto entry = [](const QString &name, quint32 first, quint32 length) {
        return Utf16(name).leftJustified(64, '\0') + Little(quint16(2 * name.size() + 2)) + QByteArray(50, '\0') +
               Little(first) + Little(length) + QByteArray(4, '\0');
    };
    QList<quint32> next(128, 0xFFFFFFFE);
    for (quint32 sector = 2; sector < 9; ++sector)
        next[sector] = sector + 1;
    const QByteArray directory =
        entry(another, 0xFFFFFFFE, 8) + entry(u"PowerPoint Document"_s, 2, 4096) + QByteArray(256, '\0');
    const QByteArray records = QByteArray::fromHex("0000a80f04000000") + "text";
    return Compound({{48, 1}, {68, 0xFFFFFFFE}, {76, 0}}, next) + directory + records.leftJustified(4096, '\0');
}

/// The page tree's node is its own child.
QByteArray Looping_Pdf()
{
    return "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n2 0 obj<</Type/Pages/Kids[2 0 R 2 0 R]/Count "
           "2>>endobj\n"
           "xref\n0 3\n0000000000 65535 f \n0000000009 00000 n \n0000000052 00000 n \n"
           "trailer<</Size 3/Root 1 0 R/Prev 108>>\nstartxref\n108\n%%EOF\n";
}
} // namespace

class Test_Text_Extractor : public QObject
{
    Q_OBJECT
    QTemporaryDir m_folder;

    QString Written(const QString &name, const QByteArray &bytes)
    {
        const QString path = m_folder.filePath(name);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

private slots:
    void The_Text_Is_That_Of_The_Writing_Program_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        const QString slides = u"Rivers of the north 第一张幻灯片：长江 and its second line 结束 The end & more"_s;
        const auto exported = [](const char *name) {
            return QString::fromUtf8(Bytes_Of(Data + QLatin1String(name)));
        };
        QTest::newRow("docx") << u"words.docx"_s << exported("words.txt");
        QTest::newRow("doc") << u"words.doc"_s << exported("words.txt");
        QTest::newRow("pdf") << u"words.pdf"_s << exported("words.txt");
        QTest::newRow("xlsx") << u"sheets.xlsx"_s << exported("sheets.txt");
        QTest::newRow("xls") << u"plain_sheets.xls"_s << exported("plain_sheets.txt");
        QTest::newRow("pptx") << u"slides.pptx"_s << slides;
        QTest::newRow("ppt") << u"slides.ppt"_s << slides;
    }
    void The_Text_Is_That_Of_The_Writing_Program()
    {
        QFETCH(QString, file);
        QFETCH(QString, text);
        QString path = Data + file;
        if (!QFile::exists(path)) {
            QProcess xz;
            xz.start(u"xz"_s, {u"-dc"_s, path + u".xz"_s});
            QVERIFY(xz.waitForFinished());
            path = Written(file, xz.readAllStandardOutput());
        }
        QVERIFY(!Bare(text).isEmpty());
        QCOMPARE(Bare(TextExtractor().ExtractText(path)), Bare(text));
        // What the file holds decides, not its name.
        const QString renamed = Written(u"renamed.doc"_s, Bytes_Of(path));
        QCOMPARE(Bare(TextExtractor().ExtractText(renamed)), Bare(text));
    }

    void Odd_And_Hostile_Files_Give_What_They_Can_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        const QByteArray pdf = Bytes_Of(Data + u"words.pdf"_s);
        const QByteArray docx = Bytes_Of(Data + u"words.docx"_s);
        const QByteArray doc = Bytes_Of(Data + u"words.doc"_s);
        const QByteArray kept = "<w:p><w:r><w:t>kept</w:t></w:r></w:p>";
        QByteArray attributes; // as many as the reader would take hours to compare
        for (int i = 0; i < 1'000'000; ++i)
            attributes += " a" + QByteArray::number(i) + "=''";
        QTest::newRow("nothing") << QByteArray() << u""_s;
        QTest::newRow("another kind") << QByteArray("just some text") << u""_s;
        QTest::newRow("head of a PDF only") << QByteArray("%PDF-1.7\n") << u""_s;
        QTest::newRow("PDF that loops") << Looping_Pdf() << u""_s;
        QTest::newRow("half of a ZIP") << docx.left(docx.size() / 2) << u""_s;
        QTest::newRow("a compound file's mark only") << doc.left(8) + QByteArray(600, '\xff') << u""_s;
        QTest::newRow("slides that loop") << Looping_Slides() + Utf16(u"PowerPoint Document") << u""_s;
        QTest::newRow("small slides") << Small_Slides(u"Pictures"_s) << u"text"_s;
        QTest::newRow("encrypted slides") << Small_Slides(u"EncryptedSummary"_s) << u""_s;
        QTest::newRow("table of sectors beyond the end")
            << Compound({{48, 0}, {68, 9}}, {}) + Utf16(u"PowerPoint Document") << u""_s;
        QTest::newRow("encrypted package")
            << doc.left(512) + QByteArray("E\0n\0c\0r\0y\0p\0t\0e\0d\0P\0a\0c\0k\0a\0g\0e\0", 32) << u""_s;
        QTest::newRow("part that asks for a password")
            << Word_File("<w:p><w:r><w:t>secret</w:t></w:r></w:p>", {}, 1) << u""_s;
        QTest::newRow("entities") << Word_File("<w:p><w:r><w:t>&a29;</w:t></w:r></w:p>", Entities()) << u""_s;
        QTest::newRow("elements within elements")
            << Word_File(kept + QByteArray("<a>").repeated(2000) + kept) << u"kept"_s;
        QTest::newRow("attributes without end") << Word_File(kept + "<a" + attributes + "/>" + kept) << u"kept"_s;
        QTest::newRow("namespaces without end")
            << Word_File(kept +
                         QByteArray(attributes.left(10'000)).replace(" a", " xmlns:a").prepend("<a").append("/>") +
                         kept)
            << u"kept"_s;
        QTest::newRow("tags without a word")
            << Word_File(kept + QByteArray("<a/>").repeated(2'500'000) + kept) << u"kept"_s;
        QTest::newRow("broken off") << Word_File(kept + "<w:p><broken") << u"kept"_s;
        QTest::newRow("unknown package") << Zip({{"other.xml", "<a>text</a>"}}) << u""_s;
        QTest::newRow("parts of other names") << Odd_Names_Book() << u"word\t50.00%"_s;
        QTest::newRow("document of another name")
            << Zip({{"_rels/.rels", Relationships({{"officeDocument", "main.xml"}})},
                    {"_rels/main.xml.rels", Relationships({{"endnotes", "./notes.xml"}})},
                    {"main.xml", "<document><p><r><t>body</t></r></p></document>"},
                    {"notes.xml", "<endnotes><p><r><t>note</t></r></p></endnotes>"}})
            << u"body\nnote"_s;
        QTest::newRow("drawing told twice")
            << Word_File(
                   "<mc:AlternateContent xmlns:mc=\"m\"><mc:Choice><w:p><w:r><w:t>one</w:t></w:r></w:p></mc:Choice>"
                   "<mc:Fallback><w:p><w:r><w:t>one</w:t></w:r></w:p></mc:Fallback></mc:AlternateContent>"
                   "<w:p><w:pPr><w:tabs><w:tab/></w:tabs></w:pPr><w:r><w:t>two</w:t><w:tab/><w:t>x</w:t></w:r>"
                   "<w:del><w:r><w:delText>gone</w:delText></w:r></w:del></w:p>")
            << u"one\ntwo\tx"_s;
        QTest::newRow("RTF by another name") << QByteArray("{\\rtf1\\ansi rich}") << u"rich"_s;
    }
    void Odd_And_Hostile_Files_Give_What_They_Can()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(TextExtractor().ExtractText(Written(u"odd.docx"_s, bytes)).trimmed(), text);
    }

    void A_Small_File_That_Unpacks_To_A_Huge_One_Is_Bounded()
    {
        const QByteArray run = "<w:p><w:r><w:t>" + QByteArray(1000, 'x') + "</w:t></w:r></w:p>";
        const QString path = Written(u"bomb.docx"_s, Word_File(run.repeated(20'000)));
        QVERIFY(QFile(path).size() < 200'000);
        QCOMPARE(TextExtractor().ExtractText(path, 12'345).size(), 12'345);
    }

    void A_Name_Is_Only_A_Name_To_The_Tools()
    {
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_folder.path()));
        const QString text = Bare(QString::fromUtf8(Bytes_Of(Data + u"words.txt"_s)));
        for (const QString &name : {u"-opw x"_s, u"--"_s, u"$(touch hit)"_s, u"`touch hit`;touch hit|touch hit"_s,
                                    u"a'\"\n touch hit"_s, u"..a"_s}) {
            for (const QString &type : {u".pdf"_s, u".doc"_s}) {
                Written(name + type, Bytes_Of(Data + u"words"_s + type));
                QCOMPARE(Bare(TextExtractor().ExtractText(name + type)), text);
            }
        }
        QVERIFY(!QFile::exists(u"hit"_s));
        QDir::setCurrent(before);
    }

    void A_Slow_Tool_Is_Ended()
    {
        QFile::remove(m_folder.filePath(u"pdftotext"_s));
        constexpr int Slow = 60; // seconds
        const QString tool = Written(u"pdftotext"_s, "#!/bin/sh\nexec sleep " + QByteArray::number(Slow) + '\n');
        QFile::setPermissions(tool, QFile::ReadOwner | QFile::ExeOwner);
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", m_folder.path().toUtf8() + ':' + path);
        ExtractText::Set_Tool_Time(300);
        QElapsedTimer time;
        time.start();
        QCOMPARE(TextExtractor().ExtractText(Data + u"words.pdf"_s), QString());
        QVERIFY(time.elapsed() < Slow * 1000);
        ExtractText::Set_Tool_Time(30'000);
        qputenv("PATH", "");
        QCOMPARE(TextExtractor().ExtractText(Data + u"words.pdf"_s), QString());
        qputenv("PATH", path);
    }

    void Numbers_Show_As_In_Their_Cells_data()
    {
        QTest::addColumn<double>("number");
        QTest::addColumn<QString>("format");
        QTest::addColumn<QString>("shown");
        QTest::newRow("general") << 0.1 + 0.2 << u"General"_s << u"0.3"_s;
        QTest::newRow("no format") << 1e6 << u""_s << u"1000000"_s;
        QTest::newRow("thousands") << 1234567.5 << u"#,##0.00"_s << u"1,234,567.50"_s;
        QTest::newRow("money") << -3.0 << u"\"¥\"#,##0.0;[Red]\\-\"¥\"#,##0.0"_s << u"-¥3.0"_s;
        QTest::newRow("percent") << 0.125 << u"0.00%"_s << u"12.50%"_s;
        QTest::newRow("date") << 46085.0 << u"yyyy\\-mm\\-dd"_s << u"2026-03-04"_s;
        QTest::newRow("Chinese date") << 46085.0 << u"yyyy\"年\"m\"月\"d\"日\";@"_s << u"2026年3月4日"_s;
        QTest::newRow("minutes, not months") << 46085.75 << u"yyyy/mm/dd hh:mm:ss"_s << u"2026/03/04 18:00:00"_s;
        QTest::newRow("half days") << 0.5 << u"h:mm AM/PM"_s << u"12:00 PM"_s;
        QTest::newRow("elapsed hours") << 1.25 << u"[h]:mm"_s << u"30:00"_s;
        QTest::newRow("elapsed minutes") << 1.0 / 16 << u"[mm]:ss"_s << u"90:00"_s;
        QTest::newRow("elapsed seconds") << 1.5 / 86400 << u"[ss].00"_s << u"01.50"_s;
        QTest::newRow("parts of seconds") << 59.96 / 86400 << u"mm:ss.0"_s << u"01:00.0"_s;
        QTest::newRow("Chinese half days") << 0.75 << ExtractText::Built_In_Format(34) << u"下午6时00分"_s;
        QTest::newRow("Chinese month and day") << 46085.0 << ExtractText::Built_In_Format(58) << u"3月4日"_s;
        QTest::newRow("built-in elapsed") << 1.25 << ExtractText::Built_In_Format(46) << u"30:00:00"_s;
        QTest::newRow("built-in negative") << -1234.0 << ExtractText::Built_In_Format(38) << u"(1,234)"_s;
        QTest::newRow("no number") << std::nan("") << u"yyyy"_s << u"nan"_s;
        QTest::newRow("negative date") << -1.0 << u"yyyy"_s << u"-1"_s;
        QTest::newRow("text") << 5.0 << u"@"_s << u"5"_s;
        QTest::newRow("hostile") << 5.0 << u"0."_s + QString(1 << 20, u'0') << u"5"_s;
        QTest::newRow("unfinished") << 5.0 << u"0\"x"_s << u"5x"_s;
    }
    void Numbers_Show_As_In_Their_Cells()
    {
        QFETCH(double, number);
        QFETCH(QString, format);
        QFETCH(QString, shown);
        QCOMPARE(ExtractText::Formatted_Number(number, format, false), shown);
    }
};

QTEST_MAIN(Test_Text_Extractor)
#include "test_text_extractor.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/errors/run_time_error.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextTable>

#include <sys/resource.h>

namespace
{
/// A small document with something of everything, for cutting and spoiling.
const QByteArray sample =
    "{\\rtf1\\ansi\\ansicpg936\\deff0{\\fonttbl{\\f0\\fcharset134 \\'cb\\'ce;}{\\f1\\fcharset2 Symbol;}}"
    "{\\colortbl;\\red1\\green2\\blue3;}{\\stylesheet{\\s1\\b One;}{\\s2\\sbasedon1 Two;}}"
    "{\\*\\listtable{\\list{\\listlevel\\levelnfc0{\\leveltext\\'02\\'00.;}{\\levelnumbers\\'01;}\\li720}\\listid7}}"
    "{\\*\\listoverridetable{\\listoverride\\listid7\\ls1}}\\pard\\s2 head\\par "
    "\\'d6\\'d0\\u25991?\\u-10179?\\u-8704?\\par"
    "\\pard\\ls1 item{\\footnote note}\\par{\\field{\\*\\fldinst HYPERLINK \"a\"}{\\fldrslt "
    "x}}{\\*\\pn\\pnlvlblt{\\pntxtb -}}"
    "{\\pict\\pngblip\\picwgoal100 89504e470d0a1a0a0000000d49484452000000030000000208}"
    "{\\pict\\wmetafile8 010009000003}{\\pict\\dibitmap0 "
    "2800000003000000}{\\pict\\wbitmap0\\picw9\\pich9\\wbmwidthbytes2 ff}"
    "{\\pict\\emfblip 010000006c00000051000000}\\trowd\\clvmgf\\cellx100\\clmgf\\cellx200\\clmrg\\cellx300\\intbl "
    "a\\cell b\\cell"
    "\\cell\\row\\trowd\\clvmrg\\cellx100\\cellx200\\intbl\\itap2 "
    "n\\nestcell{\\*\\nesttableprops\\trowd\\cellx9\\nestrow}"
    "\\itap1 c\\cell d\\cell\\row\\pard{\\upr{a}{\\*\\ud{b}}}{\\shp{\\*\\shpinst{\\sp{\\sn p}{\\sv 1}}{\\shptxt "
    "t\\par}}}end\\par}";

#ifdef __SANITIZE_ADDRESS__
constexpr long Most_Memory = 2'000'000; // what is freed is not used again at once
#else
constexpr long Most_Memory = 200'000; // KB, of all tests together
#endif

QByteArray Repeated(const char *part, int count)
{
    return QByteArray(part).repeated(count);
}
} // namespace

/// Damaged and hostile input: no crash, no hang, and the text that can be had.
class Test_Rtf_Hostile : public QObject
{
    Q_OBJECT

private slots:
    void cut_at_every_byte()
    {
        for (qsizetype length = 5; length <= sample.size(); ++length) {
            QTextDocument document;
            QVERIFY(Rich_Text::Read_Rtf(sample.first(length), document));
            if (length > sample.indexOf("\\par "))
                QVERIFY(document.toPlainText().startsWith(QLatin1String("head")));
            Rich_Text::Write_Rtf(document);
        }
    }

    void spoiled_bytes()
    {
        QRandomGenerator random(42);
        static const char bytes[] = "{}\\*'0-9;\n\x81\xff abu";
        for (int round = 0; round < 3000; ++round) {
            QByteArray spoiled = sample;
            for (int i = 0; i < 4; ++i)
                spoiled[random.bounded(6, int(spoiled.size()))] = bytes[random.bounded(int(sizeof(bytes)))];
            QTextDocument document;
            QVERIFY(Rich_Text::Read_Rtf(spoiled, document));
            if (round % 8 == 0)
                QVERIFY(Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(document), document));
        }
    }

    /// Each table in a table doubles the time that a layout takes; 22 of them would outlast the limit of a test.
    void deep_tables_can_be_laid_out()
    {
        QByteArray deep;
        for (int depth = 1; depth <= 22; ++depth)
            deep += "\\trowd\\cellx3000\\pard\\intbl\\itap" + QByteArray::number(depth) + " a\\par";
        QTextDocument document;
        QVERIFY(Rich_Text::Read_Rtf("{\\rtf1 " + QByteArray(deep + "\\pard b\\par").repeated(4) + "}", document));
        document.setTextWidth(500);
        QVERIFY(document.size().height() > 0);
        QCOMPARE(document.toPlainText().count(u'a'), 4 * 22);
    }

    void long_parts_are_cut_and_joined_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("marks"); // of paragraphs and cells, of the source and of what is written
        QTest::addColumn<int>("ends");  // of lines that are shown; tables have some of their own
        QTest::newRow("line") << Repeated("words and words ", 30'000) + "\\par" << 1 << 0;
        QTest::newRow("word") << Repeated("\\u-10179?\\u-8704?", 30'000) + "\\par" << 1 << 0;
        QTest::newRow("signs in an item")
            << "\\pard\\li700\\sb90 " + Repeated("{\\b a}{\\i b}", 30'000) + "\\par c\\par" << 2 << 1;
        QTest::newRow("cells") << "\\trowd\\cellx900\\intbl " + Repeated("a{\\v b}", 30'000) + "\\cell\\row\\pard\\par"
                               << 2 << 2;
        QTest::newRow("a cell told of late") << Repeated("words ", 5'000) + "\\cell\\row\\pard\\par" << 3 << 2;
        QTest::newRow("rows") << Repeated("\\trowd\\cellx900\\cellx1800\\intbl a\\cell b\\cell\\row", 3'000) +
                                     "\\pard\\par"
                              << 6001 << 6006;
    }

    /// Else a layout would take time by the square of their length. What is written has them whole.
    void long_parts_are_cut_and_joined()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, marks);
        QTextDocument document, again;
        QVERIFY(Rich_Text::Read_Rtf("{\\rtf1 " + body + "}", document));
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            QVERIFY(block.length() < 22'000);
        for (const QTextFrame *frame : document.rootFrame()->childFrames())
            QVERIFY(qobject_cast<const QTextTable *>(frame)->rows() <= 500);
        const QByteArray written = Rich_Text::Write_Rtf(document);
        QCOMPARE(written.count("\\par\r\n") + written.count("\\par}") + written.count("\\cell}"), marks);
        QVERIFY(Rich_Text::Read_Rtf(written, again));
        QCOMPARE(again.toRawText(), document.toRawText());
        QCOMPARE(Rich_Text::Shown_Text(again), Rich_Text::Shown_Text(document));
        QTEST(static_cast<int>(Rich_Text::Shown_Text(again).count(u'\n')), "ends");
    }

    void all_fonts_are_kept()
    {
        QByteArray table, text;
        for (int i = 0; i < 3000; ++i) {
            const QByteArray number = QByteArray::number(i);
            table += "{\\f" + number + " Font" + number + ";}";
            text += "{\\f" + number + " a}";
        }
        QTextDocument document;
        QVERIFY(Rich_Text::Read_Rtf("{\\rtf1{\\fonttbl" + table + "}" + text + "}", document));
        QSet<QString> shown;
        for (const QTextFormat &format : document.allFormats())
            shown.insert(format.toCharFormat().fontFamilies().toStringList().join(u','));
        QVERIFY(shown.size() < 300);
        QVERIFY(Rich_Text::Write_Rtf(document).contains(" Font2999;"));
    }

    void may_be_called_off()
    {
        const QByteArray rtf = "{\\rtf1" + Repeated("\\par a", 100'000) + "}";
        for (const int answers : {0, 40, 200}) { // before, while it is read and while it is shown
            QTextDocument document(QStringLiteral("before"));
            int asked = 0;
            QVERIFY_THROWS_EXCEPTION(Run_Time_Error,
                                     Rich_Text::Read_Rtf(rtf, document, [&] { return asked++ == answers; }));
            QCOMPARE(asked, answers + 1);
            QCOMPARE(document.toPlainText(), answers == 200 ? QString() : QStringLiteral("before"));
        }
    }

    void large_data()
    {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("blocks"); // at most
        const auto row = [](const char *name, const QByteArray &body, int blocks = 1) {
            QTest::newRow(name) << body << blocks;
        };
        row("a million groups", Repeated("{", 1'000'000) + "deep" + Repeated("}", 1'000'000));
        row("a million styled groups", Repeated("{\\b\\tx1\\f0", 300'000));
        row("unclosed destinations", Repeated("{\\*\\fldinst ", 200'000));
        row("fields in fields", Repeated("{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt ", 50'000));
        row("one result for one long instruction",
            "{\\field{\\*\\fldinst " + Repeated("HYPERLINK ", 20'000) + "}" + Repeated("{\\fldrslt x}", 20'000) + "}",
            2);
        row("tables in tables", Repeated("\\trowd\\cellx9\\intbl\\itap9999 x", 20'000), 33);
        row(
            "ever deeper tables",
            [] {
                QByteArray body;
                for (int i = 1; i < 3000; ++i)
                    body += "\\intbl\\itap" + QByteArray::number(i) + " x\\par";
                return body;
            }(),
            4000);
        row(
            "wide and long table",
            [] {
                QByteArray body = "\\trowd";
                for (int i = 1; i <= 500; ++i)
                    body += "\\cellx" + QByteArray::number(i * 60);
                return body + Repeated("\\intbl x\\cell", 500) + "\\row\\trowd\\cellx60" +
                       Repeated("\\intbl x\\cell\\row", 20'000);
            }(),
            21'000);
        row("merges",
            Repeated("\\trowd\\clvmgf\\clmgf\\cellx100\\clvmrg\\clmrg\\cellx200\\intbl\\cell\\cell\\row", 3'000),
            7'000);
        row("rows that define many cells and have one",
            "\\trowd" + Repeated("\\cellx60", 500) + "\\intbl" + Repeated("\\cell\\row", 3'000), 30'000);
        row("small tables of many columns",
            ("\\trowd" + Repeated("\\cellx60", 64) + Repeated("\\intbl\\cell", 64) + "\\row\\trowd\\cellx60" +
             Repeated("\\intbl\\cell\\row", 63) + "\\pard\\par")
                .repeated(100),
            100'000);
        row("cells without definitions", Repeated("\\intbl\\cell", 100'000) + "\\row", 101'000);
        row("tables that only nest", Repeated("\\itap8\\par\\itap0\\par", 20'000), 40'001);
        row("bookmarks", Repeated("{\\*\\bkmkstart a}x", 30'000), 3);
        row(
            "bookmarks of many names",
            [] {
                QByteArray body;
                for (int i = 0; i < 100'000; ++i)
                    body += "{\\*\\bkmkstart b" + QByteArray::number(i) + "}x ";
                return body;
            }(),
            21);
        row("footnotes", Repeated("x{\\footnote y}", 50'000), 31);
        row("bookmarks of one place", Repeated("{\\*\\bkmkstart a}", 50'000) + "x");
        row("pieces of hidden text", Repeated("{\\v x\\par}y", 30'000), 6);
        row("text boxes of one paragraph", Repeated("x{\\b y}{\\shp{\\*\\shpinst{\\shptxt z\\par}}}", 20'000), 20'010);
        row("text boxes in text boxes", Repeated("x{\\shp{\\*\\shpinst{\\shptxt z", 50'000), 1'001);
        row("list items",
            "{\\*\\listtable{\\list{\\listlevel\\levelnfc0}\\listid1}}{\\*\\listoverridetable"
            "{\\listoverride\\listid1\\ls1}}\\ls1" +
                Repeated("\\par", 50'000),
            50'001);
        row("styles on styles", "{\\stylesheet{\\s1\\b a;}" +
                                    Repeated("{\\s1\\sbasedon1\\sbasedon1\\sbasedon1 a;}", 20'000) + "}" +
                                    Repeated("\\s1", 50'000));
        row(
            "small styles on a large one", "{\\stylesheet{\\s1" + Repeated("\\b", 256) + "}" + [] {
                QByteArray styles;
                for (int i = 2; i < 40'000; ++i)
                    styles += "{\\s" + QByteArray::number(i) + "\\sbasedon1}";
                return styles;
            }() + "}");
        row(
            "tab stops",
            [] {
                QByteArray few, many = "\\pard";
                for (int i = 1; i <= 64; ++i) {
                    few += "\\pard\\tx" + QByteArray::number(i) + "\\par";
                    many += "\\tx" + QByteArray::number(10 * i);
                }
                return few + many + Repeated("\\par", 20'000) + Repeated("\\tqr\\tx9\\par\\tx9\\par", 5'000);
            }(),
            40'000);
        row("fonts and colours",
            "{\\fonttbl" + Repeated("{\\f1 a;}", 50'000) + "}{\\colortbl" + Repeated(";", 200'000) + "}");
        row("big \\bin", "{\\pict\\bin2147483647 x");
        row("pictures", Repeated("{\\pict\\pngblip\\picw2147483647\\pich2147483647 8950}", 20'000), 2);
        row("stand-ins", Repeated("\\uc64\\u-1 ", 100'000), 10);
        row("skipped groups", Repeated("{\\*\\nothing {\\bin-9 }", 100'000));
        row("old lists", Repeated("{\\*\\pn\\pndec{\\pntxta a}}{\\*\\pn\\pnlvlblt}\\par", 20'000), 20'001);
    }

    /// What grew with the square of the input would outlast the limit of a test, or meet that of memory.
    void large()
    {
        QFETCH(QByteArray, body);
        QFETCH(int, blocks);
        QTextDocument document;
        QVERIFY(Rich_Text::Read_Rtf("{\\rtf1 " + body, document));
        QVERIFY2(document.blockCount() <= blocks, qPrintable(QString::number(document.blockCount())));
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        QVERIFY2(used.ru_maxrss < Most_Memory, qPrintable(QString::number(used.ru_maxrss)));
    }

#ifndef __SANITIZE_ADDRESS__
    void ends_where_memory_does()
    {
        const QByteArray rtf = "{\\rtf1 " + Repeated("some text ", 3'000'000) + "}";
        rlimit before{};
        getrlimit(RLIMIT_AS, &before);
        QFile pages(QStringLiteral("/proc/self/statm"));
        QVERIFY(pages.open(QIODevice::ReadOnly));
        const rlim_t used = pages.readAll().split(' ').first().toULongLong() * 4096;
        rlimit little{.rlim_cur = used + static_cast<rlim_t>(rtf.size()), .rlim_max = before.rlim_max};
        QTextDocument document(QStringLiteral("before"));
        setrlimit(RLIMIT_AS, &little);
        int number = 0;
        try {
            Rich_Text::Read_Rtf(rtf, document);
        } catch (const Run_Time_Error &error) {
            number = error.number;
        }
        setrlimit(RLIMIT_AS, &before);
        QCOMPARE(number, Error_Number::Out_Of_Memory);
    }
#endif
};

QTEST_MAIN(Test_Rtf_Hostile)
#include "test_rtf_hostile.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rich_text.h"

#include <QRandomGenerator>
#include <QTest>
#include <QTextDocument>

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
            "{\\field{\\*\\fldinst " + Repeated("HYPERLINK ", 20'000) + "}" + Repeated("{\\fldrslt x}", 20'000) + "}");
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
        row("bookmarks", Repeated("{\\*\\bkmkstart a}x", 30'000));
        row("bookmarks of one place", Repeated("{\\*\\bkmkstart a}", 50'000) + "x");
        row("pieces of hidden text", Repeated("{\\v x\\par}y", 30'000));
        row("text boxes of one paragraph", Repeated("x{\\b y}{\\shp{\\*\\shpinst{\\shptxt z\\par}}}", 20'000), 20'001);
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
        row("pictures", Repeated("{\\pict\\pngblip\\picw2147483647\\pich2147483647 8950}", 20'000));
        row("stand-ins", Repeated("\\uc64\\u-1 ", 100'000));
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
};

QTEST_MAIN(Test_Rtf_Hostile)
#include "test_rtf_hostile.moc"

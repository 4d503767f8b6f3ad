// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/book_page.h"

#include <QElapsedTimer>
#include <QTest>

namespace
{
/// A page as one line: each run with what sets it apart, each paragraph with its place.
QByteArray Told(const Book::Page &page)
{
    QByteArray told;
    for (const Book::Paragraph &paragraph : page.paragraphs) {
        if (paragraph.row >= 0)
            told += '(' + QByteArray::number(paragraph.row) + ',' + QByteArray::number(paragraph.cell) + ')';
        told += paragraph.align == Book::Align::Center ? "c:" : paragraph.align == Book::Align::Right ? "r:" : "";
        told += paragraph.left > 0 ? QByteArray::number(paragraph.left) + ':' : QByteArray();
        for (std::size_t i = paragraph.first_run; i < paragraph.last_run; ++i) {
            const Book::Run &run = page.runs[i];
            const Book::Look &look = page.looks[run.look];
            QByteArray marks = QByteArray(look.bold ? "b" : "") + (look.italic ? "i" : "") +
                               (look.underlined ? "u" : "") + (look.struck ? "s" : "") + (look.raised > 0 ? "^" : "") +
                               (look.raised < 0 ? "_" : "");
            if (look.half_points != 24)
                marks += QByteArray::number(look.half_points);
            if (look.color != Book::No_Color)
                marks += '#' + QByteArray::number(look.color, 16);
            if (look.back != Book::No_Color)
                marks += '/' + QByteArray::number(look.back, 16);
            if (run.picture >= 0)
                marks += QByteArray::fromStdString(page.pictures[static_cast<std::size_t>(run.picture)].bytes) + '!';
            const QByteArray text = QByteArray::fromStdString(page.text.substr(run.begin, run.end - run.begin));
            told += marks.isEmpty() ? text : '[' + marks + ' ' + text + ']';
        }
        told += '|';
    }
    return told;
}

/// What a window relies on: runs follow each other within the text, and paragraphs name runs, rows and pictures there
/// are.
void Check(const Book::Page &page)
{
    std::size_t run = 0, at = 0;
    for (const Book::Paragraph &paragraph : page.paragraphs) {
        QCOMPARE(paragraph.first_run, run);
        QVERIFY(paragraph.last_run > run && paragraph.last_run <= page.runs.size());
        QVERIFY(paragraph.row < static_cast<int>(page.rows.size()));
        for (; run < paragraph.last_run; ++run) {
            QVERIFY(page.runs[run].begin >= at && page.runs[run].end >= page.runs[run].begin);
            at = page.runs[run].end;
            QVERIFY(page.runs[run].look < page.looks.size());
            QVERIFY(page.runs[run].picture < static_cast<int>(page.pictures.size()));
        }
    }
    QVERIFY(at <= page.text.size());
}
} // namespace

class Test_Book_Page : public QObject
{
    Q_OBJECT

private slots:
    void Rich_Text_Is_Read_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addColumn<QByteArray>("told");
        const auto row = [](const char *name, const char *rtf, const char *told) {
            QTest::newRow(name) << QByteArray("{\\rtf1") + rtf + "}" << QByteArray(told);
        };
        row("looks", R"({\b b\i bi}{\ul u}{\strike s}{\super 2}{\sub 3}{\fs40 x\plain y}\par)",
            "[b b][bi bi][u u][s s][^ 2][_ 3][40 x]y|");
        row("colours", R"({\colortbl;\red1\green2\blue3;\red255\green0\blue0;}{\cf1 a}{\highlight2 b}{\cf9 c}{\cf0 d})",
            "[#10203 a][/ff0000 b]cd|");
        row("paragraphs", R"(\pard\qc a\par\pard\qr b\par\pard\li720 c\line d)", "c:a|r:b|720:c|720:d|");
        row("characters", R"(\u20013?\'e9\emdash\~{\uc2 \u-10179 xx\u-8704 xx}\{\\\u-10179 ?z)",
            "\xE4\xB8\xAD\xC3\xA9\xE2\x80\x94\xC2\xA0\xF0\x9F\x98\x80{\\z|");
        row("what is passed over",
            R"({\fonttbl{\f0 F;}}{\*\x y}{\info{\title t}}{\v h}{\field{\*\fldinst L}{\fldrslt r}}a{\header b})",
            "ra|");
        row("a list", R"(\pard\li720\fi-360{\listtext 1.\tab}one\par)", "720:1.\tone|");
        row("a table", R"(\trowd\cellx9\cellx99\pard\intbl a\par b\cell\pard\intbl c\cell\row\pard d)",
            "(0,0)a|(0,0)b|(0,1)c|d|");
        row("a table in a table",
            R"(\trowd\cellx9\pard\intbl a\par\pard\intbl\itap2 b\nestcell{\*\nesttableprops\trowd\cellx9\nestrow}{\nonesttables\par}\pard\intbl c\cell\row)",
            "(0,0)a|(0,0)b\t|(0,0)c|");
        row("a row without its end", R"(\trowd\cellx9\pard\intbl a\cell b)", "(0,0)a|(0,1)b|");
        row("pictures",
            R"(a{\pict\pngblip\picwgoal20 41 42\bin1 C}{\pict\wmetafile8 41}{\*\shppict{\pict\jpegblip 44}}{\nonshppict{\pict\pngblip 45}})",
            "a[ABC! \xEF\xBF\xBC][! \xEF\xBF\xBC][D! \xEF\xBF\xBC]|");
        row("a note", R"(a{\footnote\pard\plain b}c)", "a [b]c|");
    }
    void Rich_Text_Is_Read()
    {
        QFETCH(QByteArray, rtf);
        const Book::Page page = Book::Read_Rich(rtf.toStdString());
        Check(page);
        QTEST(Told(page), "told");
        for (qsizetype size = 0; size < rtf.size(); ++size) // each way to be cut off
            Check(Book::Read_Rich(rtf.left(size).toStdString()));
    }

    void Rows_Keep_Their_Bounds()
    {
        const Book::Page page = Book::Read_Rich(
            R"({\rtf1{\colortbl;\red9\green9\blue9;}\trowd\trleft-5\clbrdrt\brdrs\clcbpat1\cellx2000\clmrg\cellx1000\clvmrg\cellx99999999\pard\intbl a\cell\row})");
        QCOMPARE(page.rows.size(), std::size_t(1));
        const Book::Row &row = page.rows[0];
        QVERIFY(row.has_lines && row.cells.size() == 3);
        QCOMPARE(row.cells[0].back, 0x090909U);
        QVERIFY(row.cells[1].joins_left && row.cells[2].joins_above);
        QVERIFY(row.cells[0].edge < row.cells[1].edge && row.cells[2].edge <= 1'000'000);
    }

    void Hostile_Text_Costs_Its_Length_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        constexpr int Many = 1'000'000;
        const auto row = [](const char *name, const QByteArray &text) {
            QTest::newRow(name) << "{\\rtf1 " + text;
        };
        row("groups", QByteArray("{").repeated(Many) + "x" + QByteArray("}").repeated(Many));
        row("groups side by side", QByteArray("{\\b x}").repeated(Many));
        QByteArray looks;
        for (int i = 0; i < Many / 10; ++i)
            looks += "{\\fs" + QByteArray::number(i % 397 + 2) + "\\cf" + QByteArray::number(i) + " x}";
        row("looks", looks);
        row("paragraphs", QByteArray("\\par ").repeated(Many));
        row("rows", QByteArray("\\trowd\\cellx9\\intbl\\cell\\row ").repeated(Many / 4));
        row("cells", "\\trowd" + QByteArray("\\cellx9").repeated(Many) + QByteArray("\\intbl\\cell ").repeated(Many));
        row("colours", "{\\colortbl" + QByteArray(";").repeated(Many) + "}x");
        row("a picture", "{\\pict\\pngblip " + QByteArray("f").repeated(20 * Many) + "}");
        row("binary", "{\\pict\\pngblip\\bin999999999 x}");
        row("numbers", "\\fs99999999999\\li-99999999999\\fi99999999999\\u99999999999 x\\bin-5 y\\uc99 \\u1 ");
        row("text", QByteArray("x").repeated(40 * Many));
    }
    void Hostile_Text_Costs_Its_Length()
    {
        QFETCH(QByteArray, rtf);
        QElapsedTimer timer;
        timer.start();
        const Book::Page page = Book::Read_Rich(rtf.toStdString());
        QVERIFY(timer.elapsed() < 10'000);
        Check(page);
        QVERIFY(page.text.size() <= (16U << 20) + 64 || page.is_cut);
        QVERIFY(page.looks.size() <= 4096 && page.paragraphs.size() <= 500'001);
    }
};

QTEST_APPLESS_MAIN(Test_Book_Page)
#include "test_book_page.moc"

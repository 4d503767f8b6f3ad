// SPDX-License-Identifier: GPL-3.0-or-later
#include "document_dump.h"
#include "platform/richtext/decorations.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/rich_text.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QRandomGenerator>
#include <QTest>
#include <QTextFrame>

#include <algorithm>

#include <utility>

namespace
{
/// Makes documents of everything the editor can make, the same for the same seed.
class Generator
{
public:
    explicit Generator(quint32 seed) : m_random(seed) {}

    void Fill(QTextDocument &document)
    {
        QTextCursor cursor(&document);
        Blocks(cursor, 2 + Below(12), 0);
    }

private:
    int Below(int bound) { return static_cast<int>(m_random.bounded(bound)); }
    bool Chance(int oneIn) { return Below(oneIn) == 0; }
    template <typename List>
    auto Any(const List &list)
    {
        return list[static_cast<std::size_t>(Below(int(std::size(list))))];
    }
    QColor Color() { return QColor::fromRgb(m_random.generate() | 0xFF000000U); }

    QString Text()
    {
        static const QString words[] = {u"word "_qs,    u"中文"_qs,   u"日本\u2028"_qs, u"мир"_qs,
                                        u"مرحبا"_qs,    u"{a\\b}"_qs, u"\t"_qs,         u"\U0001F600"_qs,
                                        u"x\u00ADy"_qs, u"-1 "_qs,    u" 12 ;"_qs,      u"é‘’?"_qs};
        QString text;
        for (int i = 0; i <= Below(4); ++i)
            text += Any(words);
        return text;
    }

    QTextCharFormat Char_Format()
    {
        static const QString families[] = {u"Base"_qs, u"宋体"_qs, u"Liberation Serif"_qs};
        static const double sizes[] = {9, 10.5, 12, 24};
        QTextCharFormat format;
        format.setFontFamilies({Any(families)});
        format.setFontPointSize(Any(sizes));
        format.setFontWeight(Chance(3) ? QFont::Bold : QFont::Normal);
        format.setFontItalic(Chance(4));
        format.setFontStrikeOut(Chance(6));
        format.setUnderlineStyle(Chance(3) ? QTextCharFormat::UnderlineStyle(1 + Below(6))
                                           : QTextCharFormat::NoUnderline);
        if (format.underlineStyle() == QTextCharFormat::SingleUnderline && Chance(2))
            format.setProperty(Rich_Text::Underline_Property, 7 + Below(3));
        if (Chance(6))
            format.setVerticalAlignment(QTextCharFormat::VerticalAlignment(1 + Below(2)));
        if (Chance(3))
            format.setForeground(Color());
        if (Chance(4))
            format.setBackground(Color());
        if (Chance(8))
            format.setFontCapitalization(Chance(2) ? QFont::AllUppercase : QFont::SmallCaps);
        if (Chance(8))
            format.setFontStretch(150);
        if (Chance(6)) {
            static const QString targets[] = {u"http://a.b/?q=\"1\"&r=中"_qs, u"#place"_qs, u"C:\\dir\\file"_qs};
            format.setAnchor(true);
            format.setAnchorHref(Any(targets));
            format.setToolTip(Chance(2) ? u"\"help\" 中"_qs : QString());
        }
        if (Chance(12)) {
            format.setAnchor(true);
            format.setAnchorNames({u"place%1"_qs.arg(++m_places)});
        }
        return format;
    }

    QTextBlockFormat Block_Format()
    {
        static const Qt::Alignment alignments[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify};
        QTextBlockFormat format;
        format.setAlignment(Any(alignments));
        format.setLeftMargin(Below(3) * 20);
        format.setRightMargin(Below(2) * 7);
        format.setTextIndent(Below(3) * 10 - 10);
        format.setTopMargin(Below(3) * 6);
        format.setBottomMargin(Below(3) * 5);
        if (Chance(4))
            format.setLineHeight(150, QTextBlockFormat::ProportionalHeight);
        else if (Chance(4))
            format.setLineHeight(20, Chance(2) ? QTextBlockFormat::FixedHeight : QTextBlockFormat::MinimumHeight);
        if (Chance(6))
            format.setBackground(Color());
        if (Chance(6))
            format.setHeadingLevel(1 + Below(6));
        if (Chance(8))
            format.setLayoutDirection(Qt::RightToLeft);
        if (Chance(8)) {
            format.setTabPositions({{40, QTextOption::LeftTab}, {100, QTextOption::CenterTab}});
            if (Chance(2))
                format.setProperty(Rich_Text::Tab_Leaders, QByteArray("\x01\x04"));
        }
        if (Chance(8))
            format.setProperty(Rich_Text::Keep_With_Next, true);
        if (Chance(10))
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        if (Chance(8))
            Borders(format, 1 + 2 * Below(8), true);
        return format;
    }

    /// Lines of all kinds on the sides that have a bit, with a distance from the text.
    void Borders(QTextFormat &format, int sides, bool isParagraph)
    {
        for (int side = 0; side < 4; ++side) {
            if ((sides >> side & 1) == 0)
                continue;
            const int style = 1 + Below(10);
            format.setProperty(QTextFormat::TableCellTopBorderStyle + side, style);
            format.setProperty(QTextFormat::TableCellTopBorder + side, (1 + Below(5)) * 0.2);
            if (Chance(2))
                format.setProperty(QTextFormat::TableCellTopBorderBrush + side, QBrush(Color()));
            if (isParagraph || Chance(2))
                format.setProperty(QTextFormat::TableCellTopPadding + side, double(Below(3)));
        }
    }

    void Blocks(QTextCursor &cursor, int count, int depth)
    {
        for (int i = 0; i < count; ++i) {
            if (i > 0)
                cursor.insertBlock({}, {});
            cursor.setBlockFormat(Block_Format());
            for (int run = Below(4); run > 0; --run)
                cursor.insertText(Text(), Char_Format());
            if (Chance(4))
                Picture(cursor);
            if (Chance(3))
                List_Item(cursor);
            if (depth < 3 && Chance(5))
                Table(cursor, depth);
            if (Chance(8))
                Rule(cursor);
        }
    }

    void Rule(QTextCursor &cursor)
    {
        QTextBlockFormat format;
        format.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth,
                           QTextLength(QTextLength::PercentageLength, 100));
        if (Chance(2))
            format.setBackground(Color());
        cursor.insertBlock(format, {});
    }

    /// Labels that QTextDocument cannot make.
    void Kept_Label(QTextListFormat &format)
    {
        static const Rich_Text::Label_Rule rules[] = {{.kind = 0, .start = 7, .text = u"§"_qs + QChar(0) + u")"_qs},
                                                      {.kind = 3, .start = 0, .text = QString(QChar(0))},
                                                      {.kind = 37, .start = 20, .text = QChar(0) + u"、"_qs},
                                                      {.kind = 23, .text = u"➢"_qs},
                                                      {.kind = 0, .text = u"none"_qs}};
        Rich_Text::Set_Rule(format, Any(rules));
    }

    void List_Item(QTextCursor &cursor)
    {
        QTextBlockFormat item = cursor.blockFormat();
        item.setTextIndent(0);
        if (Chance(3))
            item.setProperty(Rich_Text::List_First, -200 - Below(100));
        cursor.setBlockFormat(item);
        if (m_list && Chance(2)) {
            m_list->add(cursor.block());
            return;
        }
        QTextListFormat format;
        format.setStyle(QTextListFormat::Style(-1 - Below(8)));
        format.setIndent(1 + Below(4));
        if (format.style() <= QTextListFormat::ListDecimal && Chance(2)) {
            format.setNumberPrefix(u"第("_qs);
            format.setNumberSuffix(u"}条"_qs);
        }
        if (Chance(4))
            Kept_Label(format);
        m_list = cursor.createList(format);
    }

    void Picture(QTextCursor &cursor)
    {
        static const char *const formats[] = {"PNG", "JPG", "BMP"};
        QImage image(1 + Below(9), 1 + Below(9), QImage::Format_RGB32);
        image.fill(Color());
        QByteArray bytes;
        QBuffer buffer(&bytes);
        image.save(&buffer, Any(formats));
        QTextImageFormat format;
        format.setName(u"shot%1"_qs.arg(m_random.generate()));
        format.setFontPointSize(12);
        format.setWidth(10 + Below(50));
        format.setHeight(10 + Below(50));
        if (Chance(3))
            format.setProperty(Rich_Text::Picture_Part, QRectF(0.25, 0.5, 0.5, 0.25));
        cursor.document()->addResource(QTextDocument::ImageResource, QUrl(format.name()), bytes);
        cursor.insertImage(format);
    }

    void Table(QTextCursor &cursor, int depth)
    {
        const int rows = 1 + Below(3), columns = 1 + Below(4);
        QTextTableFormat format;
        const bool ownBorders = Chance(3); // of the cells, not of the table as a whole
        format.setBorder(ownBorders ? 0 : Below(3));
        format.setBorderCollapse(Chance(2));
        format.setCellSpacing(format.borderCollapse() ? 0 : Below(3));
        format.setCellPadding(Below(5));
        format.setHeaderRowCount(Below(2));
        format.setAlignment(Chance(2) ? Qt::AlignLeft : Qt::AlignHCenter);
        if (Chance(2)) {
            format.setBorderBrush(Color());
            QList<QTextLength> widths;
            for (int i = 0; i < columns; ++i)
                widths << QTextLength(Chance(2) ? QTextLength::FixedLength : QTextLength::PercentageLength,
                                      20 + Below(20));
            format.setColumnWidthConstraints(widths);
        }
        format.setLeftMargin(Below(2) * 10);
        if (depth == 0 && Chance(4))
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextTable *table = cursor.insertTable(rows, columns, format);
        if (Chance(2))
            table->mergeCells(0, 0, 1 + Below(rows), 1 + Below(columns));
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column)
                Cell(table->cellAt(row, column), row, column, depth, ownBorders);
        }
        cursor = table->lastCursorPosition();
        cursor.movePosition(QTextCursor::NextBlock);
    }

    void Cell(QTextTableCell cell, int row, int column, int depth, bool ownBorders)
    {
        if (cell.row() != row || cell.column() != column)
            return;
        QTextCharFormat format = cell.format();
        if (Chance(4))
            format.setBackground(Color());
        if (Chance(4))
            format.setVerticalAlignment(QTextCharFormat::AlignMiddle);
        if (ownBorders)
            Borders(format, 1 + Below(14), false);
        cell.setFormat(format);
        QTextCursor inside = cell.firstCursorPosition();
        Blocks(inside, 1 + Below(2), depth + 1);
    }

    QRandomGenerator m_random;
    QPointer<QTextList> m_list;
    int m_places = 0;
};

void Prepare(QTextDocument &document)
{
    document.setDefaultFont(QFont(QStringLiteral("Base"), 12));
}
} // namespace

/// Saving and loading gives the same document.
class Test_Rtf_Round_Trip : public QObject
{
    Q_OBJECT

private slots:
    void generated_documents_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 block = 0; block < 8; ++block)
            QTest::addRow("seeds from %u", block * 40) << block * 40;
    }

    /// Text of no page of its own is kept, not shown; an empty document read afterwards has none.
    void headers_and_footers()
    {
        const QByteArray head =
            "{\\info{\\title \\u20013?}{\\author a}}\r\n\\paperw8000\\margl300\\landscape\\deftab360\r\n";
        const QByteArray rtf =
            "{\\rtf1\\ansi" + head +
            "{\\header\\pard\\qr My {\\b notes}\\par second \\u20013?\\par}"
            "{\\footerf\\trowd\\cellx99\\cellx999 first\\cell {\\field{\\*\\fldinst { PAGE \\\\* "
            "MERGEFORMAT}}{\\fldrslt 7}} of "
            "{\\field{\\*\\fldinst NUMPAGES}{\\fldrslt 9}}{\\v !}\\cell\\row}{\\footer\\chpgn\\par}\\pard body\\par"
            "\\sect{\\header another}}";
        const QStringList kept{u"My notes\nsecond 中"_qs,     {}, {}, {}, u"\x1"_qs, {}, {},
                               u"first\t\x1 of \x2\x3!\x4"_qs};
        const auto texts = [](const QTextDocument &document) {
            return document.rootFrame()->frameFormat().property(Rich_Text::Page_Texts_Property).toStringList();
        };
        QTextDocument first, second;
        QVERIFY(Rich_Text::Read_Rtf(rtf, first));
        QCOMPARE(first.toPlainText(), u"body"_qs);
        QCOMPARE(texts(first), kept);
        const QByteArray written = Rich_Text::Write_Rtf(first);
        QVERIFY(written.contains("\\titlepg") && !written.contains("\\facingp"));
        QVERIFY(written.contains(head));
        QCOMPARE(first.defaultTextOption().tabStopDistance(), 24);
        QVERIFY(Rich_Text::Read_Rtf(written, second));
        QCOMPARE(second.toPlainText(), u"body"_qs);
        QCOMPARE(texts(second), kept);
        QVERIFY(Rich_Text::Read_Rtf("{\\rtf1 none}", second));
        QCOMPARE(texts(second), QStringList());
        QVERIFY(!Rich_Text::Write_Rtf(second).contains("\\info"));
    }

    void generated_documents()
    {
        QFETCH(quint32, seed);
        for (const quint32 end = seed + 40; seed < end; ++seed) {
            QTextDocument made, loaded;
            Prepare(made);
            Prepare(loaded);
            Generator(seed).Fill(made);
            const QByteArray rtf = Rich_Text::Write_Rtf(made);
            QVERIFY(std::all_of(rtf.begin(), rtf.end(), [](char c) { return static_cast<signed char>(c) > 0; }));
            QVERIFY(Rich_Text::Read_Rtf(rtf, loaded));
            const QStringList expected = Document_Dump::Of(made).split(u'\n');
            const QStringList actual = Document_Dump::Of(loaded).split(u'\n');
            for (qsizetype i = 0; i < std::max(expected.size(), actual.size()); ++i)
                QVERIFY2(expected.value(i) == actual.value(i),
                         qPrintable(u"seed %1\n%2\n%3"_qs.arg(seed).arg(expected.value(i), actual.value(i))));
        }
    }

    /// The coder that keeps documents may damage the last bytes of what it is given.
    void a_damaged_tail_harms_nothing()
    {
        QTextDocument made, loaded;
        Prepare(made);
        Prepare(loaded);
        Generator(7).Fill(made);
        QByteArray rtf = Rich_Text::Write_Rtf(made);
        const qsizetype tail = rtf.size() - rtf.lastIndexOf('}') - 1;
        QVERIFY(tail >= 64);
        for (qsizetype i = rtf.size() - tail; i < rtf.size(); ++i)
            rtf[i] = static_cast<char>(i * 37);
        for (const qsizetype lost : {qsizetype(0), tail / 2, tail}) {
            QVERIFY(Rich_Text::Read_Rtf(rtf.chopped(lost), loaded));
            QCOMPARE(Document_Dump::Of(loaded), Document_Dump::Of(made));
        }
    }

    /// Painting decodes pictures; their original bytes must be there for the next save all the same.
    void painting_keeps_what_is_saved()
    {
        int pictures = 0;
        for (quint32 seed = 1; seed < 12; ++seed) {
            QTextDocument document;
            Generator(seed).Fill(document);
            const QByteArray before = Rich_Text::Write_Rtf(document);
            pictures += before.contains("\\pict") ? 1 : 0;
            QImage canvas(800, 2000, QImage::Format_RGB32);
            QPainter painter(&canvas);
            document.drawContents(&painter);
            Rich_Text::Paint_Decorations(painter, document, canvas.rect(), Qt::black);
            QCOMPARE(Rich_Text::Write_Rtf(document), before);
        }
        QVERIFY(pictures > 3);
    }

    /// What QTextDocument cannot draw is drawn beside it: a row of dots across a letter more for each line.
    void underlines_look_as_they_are_called()
    {
        const auto dark = [](const char *word) {
            QTextDocument document;
            Rich_Text::Read_Rtf(QByteArray("{\\rtf1\\fs40") + word + " nnnn}", document);
            QImage canvas(200, 80, QImage::Format_RGB32);
            canvas.fill(Qt::white);
            QPainter painter(&canvas);
            document.drawContents(&painter);
            Rich_Text::Paint_Decorations(painter, document, canvas.rect(), Qt::black);
            int rows = 0, edges = 0;
            bool wasLine = false;
            for (int y = 0; y < canvas.height(); ++y) {
                bool isLine = true;
                for (int x = 10; x < 30; ++x)
                    isLine = isLine && qGray(canvas.pixel(x, y)) < 128;
                rows += isLine ? 1 : 0;
                edges += isLine && !wasLine ? 1 : 0;
                wasLine = isLine;
            }
            return std::pair(edges, rows);
        };
        const auto [single, thin] = dark("\\ul");
        QCOMPARE(single, 1);
        QCOMPARE(dark("\\uldb").first, 2);
        QCOMPARE(dark("\\ulth").first, 1);
        QVERIFY(dark("\\ulth").second > thin);
    }

    /// Formats that RTF has no word for become what shows the same.
    void html_sizes_and_other_images()
    {
        QTextDocument made, loaded;
        Prepare(made);
        made.setHtml(u"<p><font size=5>big</font> <img src='picture:webp' width=8 height=4></p>"_qs);
        QImage image(4, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        made.addResource(QTextDocument::ImageResource, QUrl(u"picture:webp"_qs), image);
        QVERIFY(Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(made), loaded));
        QTextCursor cursor(&loaded);
        cursor.setPosition(1);
        QCOMPARE(cursor.charFormat().fontPointSize(), 18.0);
        cursor.setPosition(5);
        const QTextImageFormat format = cursor.charFormat().toImageFormat();
        QCOMPARE(QSizeF(format.width(), format.height()), QSizeF(8, 4));
        QCOMPARE(QImage::fromData(loaded.resource(QTextDocument::ImageResource, QUrl(format.name())).toByteArray())
                     .pixelColor(3, 1),
                 QColor(Qt::red));
    }
};

QTEST_MAIN(Test_Rtf_Round_Trip)
#include "test_rtf_round_trip.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/legible_colors.h"
#include "editor/pictures.h"
#include "editor/printing.h"
#include "editor/text_editor.h"

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QProcess>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace
{
const QColor Dark_Ground(0x1d, 0x20, 0x24);
const QColor Dark_Text(0xe3, 0xe6, 0xea);

double Difference(const QColor &one, const QColor &other)
{
    return std::abs(one.lightnessF() - other.lightnessF());
}
} // namespace

class Test_Looks : public QObject
{
    Q_OBJECT

private slots:
    void Colors_Are_Legible_data();
    void Colors_Are_Legible();
    void Only_The_Layout_Is_Told();
    void Text_On_A_Ground_Of_Its_Own_Is_Legible();
    void Pages_Are_Counted_And_Chosen();
    void Pdf_Holds_The_Text();
};

void Test_Looks::Colors_Are_Legible_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("ground");
    QTest::addColumn<bool>("kept");

    QTest::newRow("black on dark") << QColor(Qt::black) << Dark_Ground << false;
    QTest::newRow("dark blue on dark") << QColor(0, 0, 0x80) << Dark_Ground << false;
    QTest::newRow("light on dark") << Dark_Text << Dark_Ground << true;
    QTest::newRow("red on dark") << QColor(0xff, 0x60, 0x60) << Dark_Ground << true;
    QTest::newRow("white on white") << QColor(Qt::white) << QColor(Qt::white) << false;
    QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white) << true;
    QTest::newRow("yellow on white") << QColor(Qt::yellow) << QColor(Qt::white) << false;
    QTest::newRow("grey on grey") << QColor(0x80, 0x80, 0x80) << QColor(0x80, 0x80, 0x80) << false;
}

void Test_Looks::Colors_Are_Legible()
{
    QFETCH(QColor, text);
    QFETCH(QColor, ground);
    const QColor shown = Legible_Color(text, ground);
    QTEST(shown == text, "kept");
    QVERIFY(Difference(shown, ground) > 0.25);
    if (text.hslSaturationF() > 0.5F && shown != QColor(Qt::white) && shown != QColor(Qt::black))
        QVERIFY(std::abs(shown.hslHueF() - text.hslHueF()) < 0.02);
}

void Test_Looks::Only_The_Layout_Is_Told()
{
    QTextDocument document;
    document.setHtml(u"<p>auto <span style='color:#000000'>black</span></p>"_s);
    document.setModified(false);
    QSignalSpy changed(&document, &QTextDocument::contentsChanged);
    Legible_Colors colors(document, nullptr);
    colors.Set_Surroundings(Dark_Text, Dark_Ground);
    const QList<QTextLayout::FormatRange> shown = document.firstBlock().layout()->formats();
    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown[0].start, 5);
    QVERIFY(!document.isModified());
    QCOMPARE(changed.count(), 0);
    QVERIFY(document.toHtml().contains(u"#000000"_s));
    // What is typed into the black text is shown like the rest of it.
    QTextCursor cursor(&document);
    cursor.setPosition(8);
    cursor.insertText(u"er"_s);
    QCOMPARE(document.firstBlock().layout()->formats()[0].length, 7);
    colors.Set_Surroundings(Qt::black, Qt::white);
    QVERIFY(document.firstBlock().layout()->formats().isEmpty());
}

void Test_Looks::Text_On_A_Ground_Of_Its_Own_Is_Legible()
{
    QTextDocument document;
    Legible_Colors colors(document, nullptr);
    colors.Set_Surroundings(Dark_Text, Dark_Ground);
    QTextCursor cursor(&document);
    QTextCharFormat marked;
    marked.setBackground(QColor(Qt::yellow));
    cursor.insertText(u"marked"_s, marked);
    QTextTable *table = cursor.insertTable(1, 1);
    QTextCharFormat light = table->cellAt(0, 0).format();
    light.setBackground(QColor(Qt::white));
    table->cellAt(0, 0).setFormat(light);
    table->cellAt(0, 0).firstCursorPosition().insertText(u"cell"_s, QTextCharFormat());
    for (const QTextBlock &block : {document.firstBlock(), table->cellAt(0, 0).firstCursorPosition().block()}) {
        QCOMPARE(block.layout()->formats().size(), 1);
        const QColor shown = block.layout()->formats()[0].format.foreground().color();
        QVERIFY(shown.lightnessF() < 0.6F && Dark_Text.lightnessF() > 0.8F);
    }
}

void Test_Looks::Pages_Are_Counted_And_Chosen()
{
    QTextDocument document;
    QString lines;
    for (int i = 0; i < 300; ++i)
        lines += u"line %1\n"_s.arg(i);
    document.setPlainText(lines);
    const double width = document.size().width();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    int pages = 0;
    {
        QPdfWriter writer(&buffer);
        Printing::Set_Up_Page(writer);
        pages = Printing::Print(document, writer, {2, 3});
    }
    QVERIFY2(pages > 3, qPrintable(QString::number(pages)));
    QCOMPARE(bytes.count("/Type /Page\n"), 2);
    QCOMPARE(document.size().width(), width); // what is on screen doesn't move
}

void Test_Looks::Pdf_Holds_The_Text()
{
    const QString reader = QStandardPaths::findExecutable(u"pdftotext"_s);
    if (reader.isEmpty())
        QSKIP("pdftotext is not installed");
    QTemporaryDir folder;
    const QString path = folder.filePath(u"a.pdf"_s);
    QTextDocument document;
    document.setHtml(u"<h1>Heading</h1><p>知识管理 and more</p>"_s);
    QImage image(2000, 20, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    QVERIFY(Pictures::Insert(cursor, Pictures::As_File(image)));
    Printing::Write_Pdf(document, path, u"A title"_s);
    QProcess process;
    process.start(reader, {path, u"-"_s});
    QVERIFY(process.waitForFinished());
    const QString text = QString::fromUtf8(process.readAllStandardOutput()).remove(u' ').simplified();
    QCOMPARE(text, u"Heading 知识管理andmore 1/1"_s);
}

QTEST_MAIN(Test_Looks)
#include "test_looks.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/text_editor.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/rich_text.h"
#include "support/test_program.h"
#include "ui/kit/icons.h"

#include <QBuffer>
#include <QMimeData>
#include <QTest>
#include <QtEndian>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Picture(const char *format, const QSize &size = {4, 3})
{
    QImage image(size, QImage::Format_Grayscale8);
    image.fill(Qt::gray);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

/// A bitmap whose header promises another size.
QByteArray Promising(quint32 width, quint32 height)
{
    QByteArray bitmap = Picture("BMP");
    qToLittleEndian(width, bitmap.data() + 18);
    qToLittleEndian(height, bitmap.data() + 22);
    return bitmap;
}

/// An icon file that names the picture behind it as often as it can.
QByteArray Icon_Of(const QByteArray &picture)
{
    constexpr quint16 Many = 60'000;
    QByteArray icon = Picture("ICO", {256, 256});
    QByteArray entry = icon.mid(6, 16);
    qToLittleEndian(quint32(6 + 16 * Many), entry.data() + 12);
    qToLittleEndian(Many, icon.data() + 4);
    return icon.left(6) + entry.repeated(Many) + (picture.isEmpty() ? icon.mid(22) : picture);
}

const QByteArray Drawing = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:x='http://www.w3.org/1999/xlink' width='4' "
                           "height='4'><image x:href='/dev/zero' width='4' height='4'/></svg>";
} // namespace

class Test_Foreign_Pictures : public QObject
{
    Q_OBJECT

private slots:
    void Only_Pictures_Of_Known_Kinds_And_Sizes_Pass_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QSize>("size");
        for (const char *format : {"PNG", "JPG", "BMP", "ICO"})
            QTest::newRow(format) << Picture(format) << QSize(4, 3);
        QTest::newRow("drawing") << Drawing << QSize();
        QTest::newRow("drawing with a head") << "<?xml version='1.0'?>" + Drawing << QSize();
        QTest::newRow("text") << QByteArray("/* XPM */ static char *x[] = {\"30000 30000 1 1\"};") << QSize();
        QTest::newRow("grey map") << QByteArray("P5 30000 30000 255\n") << QSize();
        QTest::newRow("too many pixels") << Promising(30'000, 30'000) << QSize();
        QTest::newRow("too long a side") << Promising(2'000'000'000, 1) << QSize();
        QTest::newRow("no pixels") << Promising(0, 5) << QSize();
        QTest::newRow("head only") << Picture("PNG").left(20) << QSize();
        QTest::newRow("icon that holds another picture") << Icon_Of(Picture("PNG", {3000, 3000})) << QSize();
        QTest::newRow("icon of icons") << Icon_Of({}) << QSize(256, 256);
        QTest::newRow("nothing") << QByteArray() << QSize();
    }
    /// At each place where pictures come in: what does not pass leaves nothing, and no file is asked for.
    void Only_Pictures_Of_Known_Kinds_And_Sizes_Pass()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QSize, size);
        const Test_Program program;
        QCOMPARE(Raster::Size(bytes), size);
        QCOMPARE(Raster::Decode(bytes).size(), size.isValid() ? size : QSize(0, 0));
        program.Write(u"data/ico/x.png"_s, bytes);
        Forget_Icons();
        QCOMPARE(Node_Icon(u"x.png"_s).availableSizes().contains(size), size.isValid());

        QTextDocument rich;
        Rich_Text::Read_Rtf("{\\rtf1 a{\\pict\\pngblip " + bytes.toHex() + "}}", rich);
        Text_Editor editor;
        QMimeData dragged;
        dragged.setUrls({QUrl::fromLocalFile(program.Path(u"data/ico/x.png"_s))});
        editor.Insert_Data(dragged);
        QCOMPARE(editor.toPlainText().contains(QChar(0xFFFC)), size.isValid());
        QMimeData copied;
        copied.setImageData(QImage(9, 9, QImage::Format_RGB32)); // as the toolkit would draw it
        copied.setData(u"image/svg+xml"_s, bytes);
        copied.setData(u"image/png"_s, bytes);
        editor.clear();
        editor.Insert_Data(copied);
        QCOMPARE(editor.toPlainText().contains(QChar(0xFFFC)), size.isValid());
    }

    /// A scan that is told again costs as much as the first.
    void A_Picture_That_Is_Told_Without_End_Is_Refused()
    {
        QByteArray bytes = Picture("JPG", {4000, 3000});
        const qsizetype scan = bytes.lastIndexOf("\xFF\xDA");
        QCOMPARE(Raster::Decode(bytes, 100).size(), QSize(12, 9));
        bytes.insert(bytes.size() - 2, bytes.mid(scan, bytes.size() - 2 - scan).repeated(200));
        QVERIFY(Raster::Decode(bytes, 100).isNull());
    }

    void What_Is_No_Regular_File_Is_Not_Opened()
    {
        const Test_Program program;
        QCOMPARE(mkfifo(qPrintable(program.Path(u"x.png"_s)), 0600), 0);
        for (const QString &path : {program.Path(u"x.png"_s), u"/dev/zero"_s, program.Path(u"data"_s), u""_s}) {
            QCOMPARE(Raster::Read_File(path), QByteArray());
            QVERIFY(!Raster::Is_Picture_File(path));
        }
    }
};

QTEST_MAIN(Test_Foreign_Pictures)
#include "test_foreign_pictures.moc"

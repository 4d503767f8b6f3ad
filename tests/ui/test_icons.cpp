// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/runtime_files.h"
#include "support/test_program.h"
#include "ui/kit/icons.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

class Test_Icons : public QObject
{
    Q_OBJECT

private slots:
    void A_Line_Icon_Follows_The_Palette_That_Is_On()
    {
        const QIcon icon = Line_Icon(u"save"_s);
        const auto strokes = [&](QIcon::Mode mode) {
            QSet<QRgb> colors;
            const QImage image = icon.pixmap(QSize(48, 48), 1.0, mode).toImage();
            for (int y = 0; y < 48; ++y)
                for (int x = 0; x < 48; ++x)
                    if (image.pixelColor(x, y).alpha() == 255)
                        colors.insert(image.pixel(x, y));
            return colors;
        };
        const QPalette before = QGuiApplication::palette();
        QPalette changed = before;
        changed.setColor(QPalette::WindowText, QColor(1, 2, 3));
        changed.setColor(QPalette::HighlightedText, QColor(4, 5, 6));
        changed.setColor(QPalette::Disabled, QPalette::WindowText, QColor(7, 8, 9));
        QGuiApplication::setPalette(changed);
        QCOMPARE(strokes(QIcon::Normal), QSet<QRgb>{qRgb(1, 2, 3)});
        QCOMPARE(strokes(QIcon::Selected), QSet<QRgb>{qRgb(4, 5, 6)});
        QCOMPARE(strokes(QIcon::Disabled), QSet<QRgb>{qRgb(7, 8, 9)});
        QGuiApplication::setPalette(before);
        QVERIFY(!strokes(QIcon::Normal).contains(qRgb(1, 2, 3)));
    }

    void Node_Icons_Come_From_Their_Files_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("resource");
        QTest::newRow("home") << u"HOME.ICO"_s << u"HOME_ICO"_s;
        QTest::newRow("book") << u"book.ico"_s << u"BOOK_ICO"_s;
        QTest::newRow("note") << u"NOTE.ico"_s << u"NOTE_ICO"_s;
        QTest::newRow("recycle bin") << u"RECYCLEBIN.ICO"_s << u"RECYCLEBIN_ICO"_s;
        QTest::newRow("the program's own, that has no file") << u"ZELQOR.ICO"_s << u"HOME_ICO"_s;
    }

    void Node_Icons_Come_From_Their_Files()
    {
        QFETCH(QString, name);
        QFETCH(QString, resource);
        const Test_Program program(Test_Program::Start::Bare);
        Forget_Icons();
        Load_Runtime_File();
        program.Write(u"carried.ico"_s, Runtime_File_Bytes(resource));
        const QIcon carried(program.Path(u"carried.ico"_s));
        const QIcon icon = Node_Icon(name);
        QCOMPARE(icon.availableSizes().size(), 9);
        for (const int size : {16, 20, 24, 32, 48, 256}) {
            const QImage image = icon.pixmap(QSize(size, size), 1.0).toImage();
            QCOMPARE(image.size(), QSize(size, size)); // drawn at that size, not scaled down to it
            QCOMPARE(image, carried.pixmap(QSize(size, size), 1.0).toImage());
            QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        }
    }
};

QTEST_MAIN(Test_Icons)
#include "test_icons.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// make_icon DRAWING.svg ICON.ico: draws a vector picture at each size that a window system asks for, and puts the
// drawings into one icon file, as PNG streams. Layout of the file: "ICO (file format)", the public description of
// ICONDIR (6 bytes) and ICONDIRENTRY (16 bytes each), little-endian.

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

namespace
{
constexpr int Sizes[] = {16, 20, 24, 32, 40, 48, 64, 128, 256};

QByteArray Draw(QSvgRenderer &drawing, int size)
{
    QImage image(size, size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawing.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG") ? png : QByteArray();
}

QByteArray Icon_File(QSvgRenderer &drawing)
{
    QByteArray file;
    QByteArray pictures;
    QDataStream out(&file, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << quint16(std::size(Sizes));
    const auto firstPicture = quint32(6 + 16 * std::size(Sizes));
    for (const int size : Sizes) {
        const QByteArray png = Draw(drawing, size);
        const auto side = quint8(size % 256); // 0 stands for 256
        out << side << side << quint8(0) << quint8(0) << quint16(1) << quint16(32);
        out << quint32(png.size()) << firstPicture + quint32(pictures.size());
        pictures += png;
    }
    return file + pictures;
}
} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 2;
    QSvgRenderer drawing(arguments.at(1));
    QFile icon(arguments.at(2));
    if (!drawing.isValid() || !icon.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "cannot draw %s as %s\n", qPrintable(arguments.at(1)), qPrintable(arguments.at(2)));
        return 1;
    }
    const QByteArray bytes = Icon_File(drawing);
    return icon.write(bytes) == bytes.size() ? 0 : 1;
}

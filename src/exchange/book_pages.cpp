// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/book_pages.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QTextDocument>
#include <cmath>

namespace
{
constexpr int Scale = 2;
constexpr double Text_Width = 640;
constexpr double Margin = 40;
constexpr int Longest_Side = 32'000; ///< in pixels; the format ends at 65535, what viewers take does sooner
constexpr double Dots_Per_Metre = 96 / 0.0254;
constexpr int Quality = 85;
} // namespace

QByteArray Page_Picture(QTextDocument &document)
{
    QImage measure(1, 1, QImage::Format_RGB32);
    measure.setDotsPerMeterX(static_cast<int>(std::lround(Dots_Per_Metre)));
    measure.setDotsPerMeterY(static_cast<int>(std::lround(Dots_Per_Metre)));
    document.documentLayout()->setPaintDevice(&measure);
    document.setDocumentMargin(Margin);
    document.setTextWidth(Text_Width + 2 * Margin);
    const QSizeF size = document.documentLayout()->documentSize() * Scale; // a wide table makes the page wider
    if (size.height() > Longest_Side || size.width() > Longest_Side)
        return {};
    QImage page(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())),
                QImage::Format_RGB32);
    if (page.isNull())
        return {};
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.scale(Scale, Scale);
    QAbstractTextDocumentLayout::PaintContext context;
    context.palette.setColor(QPalette::Text, Qt::black); // whatever the program's own colours are
    document.documentLayout()->draw(&painter, context);
    painter.end();
    document.documentLayout()->setPaintDevice(nullptr);
    QByteArray picture;
    QBuffer buffer(&picture);
    buffer.open(QIODevice::WriteOnly);
    return page.save(&buffer, "JPG", Quality) ? picture : QByteArray();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/picture_handler.h"

#include "editor/pictures.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/kept_properties.h"

#include <QAbstractTextDocumentLayout>
#include <QGuiApplication>
#include <QPaintDevice>
#include <QPainter>
#include <QPalette>
#include <QTextDocument>

namespace
{
constexpr int Cache_Kilobytes = 64 * 1024;
constexpr double Screen_Dots_Per_Inch = 96;
constexpr double Frame_Side = 48; // of a picture that cannot be shown

/// A picture is shown by at most so many pixels, more than a page of paper shows.
constexpr qint64 Most_Shown_Pixels = 8 * 1024 * 1024;
} // namespace

Picture_Handler::Picture_Handler(QTextDocument &document, QObject *parent) : QObject(parent), m_images(Cache_Kilobytes)
{
    document.documentLayout()->registerHandler(QTextFormat::ImageObject, this);
}

QSizeF Picture_Handler::intrinsicSize(QTextDocument *document, int /*position*/, const QTextFormat &format)
{
    const QTextImageFormat picture = format.toImageFormat();
    QSize own;
    if (picture.width() <= 0 || picture.height() <= 0)
        own = Raster::Size(Pictures::Held(*document, picture.name()));
    // A size in the format is in pixels of a screen; a printer's are finer.
    const QPaintDevice *device = document->documentLayout()->paintDevice();
    const double scale = device == nullptr ? 1 : device->logicalDpiY() / Screen_Dots_Per_Inch;
    QSizeF size = Picture_Size(picture, own) * scale;
    if (m_room > 0 && size.width() > m_room)
        size *= m_room / size.width();
    return size;
}

void Picture_Handler::drawObject(QPainter *painter, const QRectF &place, QTextDocument *document, int /*position*/,
                                 const QTextFormat &format)
{
    const QImage image = Image_Of(*document, format.toImageFormat().name());
    painter->save();
    if (image.isNull()) {
        painter->setPen(QPen(QGuiApplication::palette().color(QPalette::Mid), 1, Qt::DashLine));
        painter->drawRect(place.adjusted(0.5, 0.5, -1, -1));
    } else {
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        const QRectF part = format.property(Rich_Text::Picture_Part).toRectF();
        const QSizeF whole = image.size();
        const QRectF shown = part.isEmpty() ? QRectF(QPointF(), whole)
                                            : QRectF(part.x() * whole.width(), part.y() * whole.height(),
                                                     part.width() * whole.width(), part.height() * whole.height());
        painter->drawImage(place, image, shown);
    }
    painter->restore();
}

QImage Picture_Handler::Image_Of(QTextDocument &document, const QString &name)
{
    if (const QImage *kept = m_images.object(name))
        return *kept;
    QImage image = Raster::Decode(Pictures::Held(document, name), Most_Shown_Pixels);
    if (!image.isNull())
        m_images.insert(name, new QImage(image), static_cast<int>(image.sizeInBytes() / 1024 + 1));
    return image;
}

QSizeF Picture_Size(const QTextImageFormat &format, QSize own)
{
    const double width = format.width(), height = format.height();
    if (width > 0 && height > 0)
        return {width, height};
    if (own.isEmpty())
        return {std::max(width, Frame_Side), std::max(height, Frame_Side)};
    if (width > 0)
        return {width, width * own.height() / own.width()};
    if (height > 0)
        return {height * own.width() / own.height(), height};
    return own;
}

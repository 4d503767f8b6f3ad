// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/picture_bytes.h"

#include <QBuffer>
#include <QImage>
#include <QTextDocument>
#include <QUrl>
#include <QVariant>

QByteArray Rich_Text::Picture_Bytes(const QVariant &resource)
{
    if (resource.userType() == QMetaType::QByteArray)
        return resource.toByteArray();
    QByteArray png;
    const auto image = resource.value<QImage>();
    QBuffer buffer(&png);
    if (!image.isNull())
        image.save(&buffer, "PNG");
    return png;
}

QByteArray Rich_Text::Held_Picture(const QTextDocument &document, const QString &name)
{
    return name.startsWith(QLatin1String(Held_Picture_Names))
               ? Picture_Bytes(document.resource(QTextDocument::ImageResource, QUrl(name)))
               : QByteArray();
}

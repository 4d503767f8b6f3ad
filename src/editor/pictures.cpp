// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/pictures.h"

#include "editor/picture_handler.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/picture_bytes.h"

#include <QCryptographicHash>
#include <QImage>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <algorithm>

namespace
{
const char *const Picture_Types[] = {"image/png", "image/jpeg", "image/gif", "image/bmp", "image/webp"};

QString Name_Of(const QByteArray &bytes)
{
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return QLatin1String(Rich_Text::Held_Picture_Names) + QLatin1String(hash.toHex());
}

/// The bytes of an address that is the picture itself (RFC 2397).
QByteArray In_Address(const QString &name)
{
    const qsizetype comma = name.indexOf(QLatin1Char(','));
    const QByteArray coded = QStringView(name).mid(comma + 1).toLatin1();
    const bool base64 = QStringView(name).left(comma).endsWith(QLatin1String(";base64"), Qt::CaseInsensitive);
    return base64 ? QByteArray::fromBase64(coded) : QByteArray::fromPercentEncoding(coded);
}

/// Forgets where a picture without bytes would come from: what the picture's page says of it stands there instead.
void Refuse(QTextCursor &cursor, QTextImageFormat format)
{
    const QString words = format.stringProperty(QTextFormat::ImageAltText);
    if (!words.isEmpty()) {
        for (const int property : {QTextFormat::ObjectType, QTextFormat::ImageName, QTextFormat::ImageTitle,
                                   QTextFormat::ImageAltText, QTextFormat::ImageWidth, QTextFormat::ImageHeight})
            format.clearProperty(property);
        return cursor.insertText(words, format);
    }
    format.setName({});
    cursor.setCharFormat(format);
}
} // namespace

QByteArray Pictures::Held(const QTextDocument &document, const QString &name)
{
    if (name.startsWith(QLatin1String("data:"), Qt::CaseInsensitive)) {
        const QByteArray bytes = In_Address(name);
        return Raster::Size(bytes).isValid() ? bytes : QByteArray();
    }
    return Rich_Text::Held_Picture(document, name);
}

QByteArray Pictures::In(const QMimeData &data)
{
    for (const char *type : Picture_Types) {
        if (QByteArray bytes = data.data(QLatin1String(type)); Raster::Size(bytes).isValid())
            return bytes;
    }
    const QStringList formats = data.formats();
    const bool vector = std::any_of(formats.begin(), formats.end(), [](const QString &format) {
        return format.startsWith(QLatin1String("image/svg")); // the toolkit itself would draw it
    });
    return vector ? QByteArray() : As_File(data.imageData().value<QImage>());
}

QByteArray Pictures::As_File(const QImage &image)
{
    return Rich_Text::Picture_Bytes(image);
}

bool Pictures::Insert(QTextCursor &cursor, const QByteArray &bytes)
{
    if (!Raster::Size(bytes).isValid())
        return false;
    QTextImageFormat format;
    format.setName(Name_Of(bytes));
    cursor.document()->addResource(QTextDocument::ImageResource, QUrl(format.name()), bytes);
    cursor.insertImage(format);
    return true;
}

QTextCharFormat Pictures::Format_Of(const QTextCursor &selection)
{
    QTextCursor first(selection.document());
    // A cursor tells of the character before it.
    first.setPosition(qMin(selection.selectionStart() + 1, selection.document()->characterCount() - 1));
    return first.charFormat();
}

QSizeF Pictures::Own_Size_Of(const QTextCursor &picture)
{
    const QString name = Format_Of(picture).toImageFormat().name();
    return Raster::Size(Held(*picture.document(), name)).expandedTo({0, 0});
}

QSizeF Pictures::Size_Of(const QTextCursor &picture)
{
    return Picture_Size(Format_Of(picture).toImageFormat(), Own_Size_Of(picture).toSize());
}

void Pictures::Set_Size(QTextCursor picture, const QSizeF &size)
{
    QTextImageFormat format = Format_Of(picture).toImageFormat();
    format.setWidth(std::round(size.width()));
    format.setHeight(std::round(size.height()));
    picture.setCharFormat(format);
}

QStringList Pictures::Files_In(const QMimeData &data)
{
    QStringList files;
    for (const QUrl &url : data.urls()) {
        if (url.isLocalFile() && Raster::Is_Picture_File(url.toLocalFile()))
            files << url.toLocalFile();
    }
    return files;
}

void Pictures::Carry_Over(QTextDocument &from, QTextDocument &to)
{
    Keep(from, to, [&](const QString &name) { return Held(from, name); });
}

void Pictures::Keep(QTextDocument &document, QTextDocument &holder, const Source &source)
{
    struct Place {
        int position;
        int length;
        QTextImageFormat format;
    };
    QList<Place> places; // all of them first: a changed format may join fragments
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().isImageFormat())
                places.append({fragment.position(), fragment.length(), fragment.charFormat().toImageFormat()});
        }
    }
    QTextCursor cursor(&document);
    while (!places.isEmpty()) { // from the end: words may take the place of a picture
        Place place = places.takeLast();
        const QByteArray bytes = source(place.format.name());
        cursor.setPosition(place.position);
        cursor.setPosition(place.position + place.length, QTextCursor::KeepAnchor);
        if (bytes.isEmpty()) {
            Refuse(cursor, place.format);
            continue;
        }
        place.format.setName(Name_Of(bytes));
        holder.addResource(QTextDocument::ImageResource, QUrl(place.format.name()), bytes);
        cursor.setCharFormat(place.format);
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/pictures.h"

#include "editor/picture_handler.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

namespace
{
constexpr qint64 Largest_File = 64 * 1024 * 1024;

QString Name_Of(const QByteArray &bytes)
{
    const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1);
    return QLatin1String("picture:") + QLatin1String(hash.toHex());
}

bool Is_Picture(const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    return buffer.open(QIODevice::ReadOnly) && QImageReader(&buffer).size().isValid();
}

QByteArray Bytes_Of(const QVariant &resource)
{
    return resource.userType() == QMetaType::QByteArray ? resource.toByteArray()
                                                        : Pictures::As_File(resource.value<QImage>());
}

QByteArray Held(QTextDocument &document, const QString &name)
{
    const QUrl url(name);
    if (url.isLocalFile())
        return Pictures::Read_File(url.toLocalFile());
    return Bytes_Of(document.resource(QTextDocument::ImageResource, url));
}
} // namespace

QByteArray Pictures::Read_File(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > Largest_File)
        return {};
    QByteArray bytes = file.readAll();
    if (!Is_Picture(bytes))
        return {};
    return bytes;
}

QByteArray Pictures::As_File(const QImage &image)
{
    QByteArray png;
    QBuffer buffer(&png);
    if (!image.isNull())
        image.save(&buffer, "PNG");
    return png;
}

bool Pictures::Insert(QTextCursor &cursor, const QByteArray &bytes)
{
    if (!Is_Picture(bytes))
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
    first.setPosition(selection.selectionStart() + 1); // a cursor tells of the character before it
    return first.charFormat();
}

QSizeF Pictures::Own_Size_Of(const QTextCursor &picture)
{
    const QString name = Format_Of(picture).toImageFormat().name();
    QBuffer buffer;
    buffer.setData(Bytes_Of(picture.document()->resource(QTextDocument::ImageResource, QUrl(name))));
    return buffer.open(QIODevice::ReadOnly) ? QImageReader(&buffer).size().expandedTo({0, 0}) : QSizeF();
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
        if (url.isLocalFile() && !QImageReader::imageFormat(url.toLocalFile()).isEmpty())
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
    for (Place &place : places) {
        const QByteArray bytes = source(place.format.name());
        if (bytes.isEmpty())
            continue;
        place.format.setName(Name_Of(bytes));
        holder.addResource(QTextDocument::ImageResource, QUrl(place.format.name()), bytes);
        cursor.setPosition(place.position);
        cursor.setPosition(place.position + place.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(place.format);
    }
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QString>

/// The parts of an EPUB 3 that say what is in it (EPUB 3.2, Packages and Open Container Format).
namespace Epub
{
struct Folder {
    QString id;
    QString name;
};
struct Chapter {
    QString address; ///< of the page, beside the package
    QString title;
    QList<Folder> folders; ///< that it lies in, the outermost first
};
struct Part {
    QString address;
    QString type; ///< of its content
};

inline constexpr const char *Mimetype = "application/epub+zip";
/// Where everything but the container's own parts stands.
inline constexpr const char *Room = "EPUB/";

/// META-INF/container.xml, which says where the package stands.
QString Container();
/// The table of contents by folder. Chapters of one folder stand together.
QString Contents(const QString &title, const QString &language, const QList<Chapter> &chapters);
/// What is in the book and in which order it is read.
QString Package(const QString &title, const QString &language, const QList<Chapter> &chapters,
                const QList<Part> &pictures);
QString Style_Sheet();
} // namespace Epub

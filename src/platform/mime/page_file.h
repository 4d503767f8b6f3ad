// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

/// A web page with its pictures in one file (MHT): a MIME message of the type multipart/related, as RFC 2557 has it.
namespace Mime
{
struct Picture {
    QString name;    ///< a plain file name
    QByteArray type; ///< "image/png"
    QByteArray bytes;
};

struct Page {
    QString title;
    QByteArray html; ///< in UTF-8; shows a picture under Address
    QList<Picture> pictures;
};

/// How a page names a picture of its file.
QString Address(const QString &name);

QByteArray Write_Page(const Page &page, const QDateTime &date);

/// Reads what Write_Page has written. Pictures whose names are no plain file names are left out.
/// @returns a page without html for anything else
Page Read_Page(const QByteArray &bytes);
} // namespace Mime

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QIcon>
#include <QImage>
#include <QString>

/// The one door for pictures that the program has not drawn itself: of documents, databases, the clipboard and folders.
/// Only raster formats pass, told by their first bytes: a vector picture may name files and programs' worth of work.
/// What a picture says of its size is bounded before anything of it is decoded.
namespace Raster
{
constexpr qint64 Largest_File = 64 * 1024 * 1024;
constexpr qint64 Most_Pixels = 64 * 1024 * 1024; ///< 256 MB when decoded
constexpr int Longest_Side = 32'767;

/// Size in pixels, of the first picture where a file holds several; an invalid one for what this door refuses.
QSize Size(const QByteArray &bytes);
/// The picture, made smaller where it has more pixels; null for what this door refuses.
/// @param upright  turned as its camera was held
QImage Decode(const QByteArray &bytes, qint64 mostPixels = Most_Pixels, bool upright = false);
/// The pictures of an icon file, or the one of any other file; none that is far larger than an icon.
QIcon Icon(const QByteArray &bytes);

/// The bytes of a picture file; none when it is no regular file, too large or refused here.
QByteArray Read_File(const QString &path);
/// Whether a file begins as a picture does; cheap enough to ask while something is dragged.
bool Is_Picture_File(const QString &path);
} // namespace Raster

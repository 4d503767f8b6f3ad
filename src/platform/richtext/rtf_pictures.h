// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/rtf_model.h"

#include <QByteArrayView>
#include <QSize>

namespace Rtf
{
enum class Picture_Kind : quint8 {
    Unknown,
    Png,
    Jpeg,
    Device_Independent,
    Device_Dependent,
    Windows_Metafile,
    Enhanced_Metafile
};

/// What a \pict group says of its bytes. Negative and huge numbers come as they were written.
struct Picture_Source {
    Picture_Kind kind = Picture_Kind::Unknown;
    int width = 0, height = 0;         ///< \picw, \pich: pixels, or hundredths of a millimetre for a metafile
    int goalWidth = 0, goalHeight = 0; ///< twips
    int scaleX = 100, scaleY = 100;    ///< percent
    int cropLeft = 0, cropTop = 0, cropRight = 0, cropBottom = 0; ///< twips of the picture that are not shown
    int bitsPerPixel = 1, rowBytes = 0;                           ///< of a device-dependent bitmap
    QByteArray bytes;
    int halfByte = -1; ///< the first digit of a pair whose second has not come yet
};

/// Adds hexadecimal digits to the picture's bytes; anything else is passed over.
void Append_Hex(Picture_Source &source, std::string_view digits);

/// The picture as an image file with its size in twips. Bitmaps inside metafiles are taken out of them; a metafile
/// that only draws stays as it is, so that its frame has the right size and a later save gives it back.
Picture Finish_Picture(Picture_Source &&source);

/// What an image file is by its first bytes.
Picture_Kind Kind_Of_File(QByteArrayView bytes);
/// An image file's own size in pixels, empty if it cannot be read.
QSize Pixel_Size(const QByteArray &bytes);

inline constexpr int Bitmap_File_Header = 14; ///< bytes of a .bmp file before the bitmap that RTF holds
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/mime/page_file.h"

#include <functional>

class QTextDocument;

/// A document as a web page that names its pictures by an address of the caller's choice. Pictures are in formats that
/// every browser shows; a picture without bytes, or of a kind that nothing here can draw, is left out.
Mime::Page Page_Of(QTextDocument &document, const QString &title,
                   const std::function<QString(const Mime::Picture &)> &address);

/// An address that is the picture itself (RFC 2397).
QString Data_Address(const Mime::Picture &picture);

/// The bytes of a picture that a document holds, as PNG, JPEG or GIF; none as Page_Of says.
Mime::Picture Shown_Picture(const QTextDocument &document, const QString &name);

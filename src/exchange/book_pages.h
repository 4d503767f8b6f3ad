// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

class QTextDocument;

/// A document on one white page of the usual width, as a JPEG with two pixels for each of the screen's, so that it can
/// be read at 200 %. @returns "" for a document that is longer than such a picture can be
QByteArray Page_Picture(QTextDocument &document);

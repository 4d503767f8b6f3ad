// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "exchange/book_export.h"

/// Documents become an EPUB 3 book, which any reader of such books shows: one page for each document, a table of
/// contents by folder, and the pictures that the documents hold. Links between its documents work in it.

struct Epub_Order {
    QString target;
    QString title; ///< of the book
    QList<Book_Row> rows;
};

/// Writes a book. A document that has a password or cannot be read fails alone. What stands at the target is replaced
/// when the whole book is written, and stays otherwise.
/// @throws Run_Time_Error when the book cannot be written
Book_Result Export_Epub(const Epub_Order &order, Work &work);

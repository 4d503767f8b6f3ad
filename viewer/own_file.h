// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/book/book_texts.h"

#include <string_view>

/// The file that this program runs from, read and replaced as a whole.
namespace Own_File
{
/// The file's bytes, which stay as long as the program runs, whatever becomes of the file. "" when it cannot be read.
std::string_view Bytes();
/// Lets the book with other parameters take the file's place; with `documents` false nothing else is in it.
/// @returns false when the file could not be replaced; it is then as it was
bool Replace(const Book::Parameters &parameters, bool documents);
} // namespace Own_File

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/book/book_texts.h"

#include <string>

/// The file that this program runs from, read and replaced as a whole.
namespace Own_File
{
/// @returns "" when it cannot be read
std::string Read();
/// The book with other parameters; with `documents` false nothing else is in it.
/// @returns false when the file could not be replaced; it is then as it was
bool Replace(const std::string &file, const Book::Parameters &parameters, bool documents);
} // namespace Own_File

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

/// Pictures of a book: PNG and JPEG. What one says of its size is bounded before anything of it is decoded.
namespace Pictures
{
struct Size {
    int width = 0;
    int height = 0;
};

/// Rows of red, green and blue.
struct Decoded {
    Size size;
    std::vector<unsigned char> pixels;
};

/// A picture's size by its first bytes; 0 for what is none, or larger than is shown.
Size Size_Of(std::string_view bytes);
/// Decodes a picture; a JPEG at about this width, so that a large one costs what is seen of it. What is transparent
/// becomes white. @returns an empty one for what cannot be decoded
Decoded Decode(std::string_view bytes, int width);
} // namespace Pictures

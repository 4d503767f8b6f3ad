// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/book/book_page.h"

#include <cstddef>
#include <vector>

/// Where the parts of a page stand, in pixels from its upper left.
namespace Layout
{
struct Size {
    int width = 0;
    int height = 0;
};

/// Text of one look without tabs, or a picture.
struct Piece {
    std::size_t begin = 0;
    std::size_t end = 0;
    double x = 0;
    double width = 0;
    int height = 0; ///< of a picture
    std::uint32_t look = 0;
    int picture = -1;
};

struct Line {
    std::size_t begin = 0; ///< in the text
    std::size_t end = 0;
    int y = 0;
    int height = 0;
    int base = 0; ///< from y to the letters' feet
    std::size_t first_piece = 0;
    std::size_t last_piece = 0;
};

/// A paragraph, or a row of a table. Bands stand one below the other.
struct Band {
    int y = 0;
    int height = 0;
    std::size_t first_line = 0;
    std::size_t last_line = 0;
    int row = -1;
};

struct Placed {
    std::vector<Piece> pieces;
    std::vector<Line> lines;
    std::vector<Band> bands;
    int width = 0; ///< of the widest picture, else that of the text
    int height = 0;
};

/// @param pictures  sizes of the page's pictures at a zoom of 1; one as wide as the text is made smaller
/// @param width     of the text
Placed Place(const Book::Page &page, const std::vector<Size> &pictures, int width, double zoom);

/// The edges of a row's cells, left of the first one first. A cell that belongs to the one before has its right edge.
std::vector<int> Edges(const Book::Row &row, int cells, int width, double zoom);

/// The place in the text that is nearest to a point.
std::size_t Place_At(const Book::Page &page, const Placed &placed, double zoom, int x, int y);
/// The line that a place in the text is in.
const Line *Line_Of(const Placed &placed, std::size_t place);
/// Where a place of a piece begins, from the piece's left.
double Advance_To(const Book::Page &page, const Piece &piece, std::size_t place, double zoom);
} // namespace Layout

// SPDX-License-Identifier: GPL-3.0-or-later
#include "layout.h"

#include "glyphs.h"
#include "platform/book/utf8.h"

#include <algorithm>
#include <cmath>

namespace Layout
{
namespace
{
constexpr double Twips_Of_A_Pixel = 15;
constexpr double Tab = 720 / Twips_Of_A_Pixel;
constexpr int Narrowest = 48;
constexpr int Cell_Space = 6;
constexpr double Line_Space = 1.2;
constexpr double Raised_By = 0.35; ///< of the line's size
constexpr int Most_Cells = 64;

/// Signs that no line begins or ends with.
constexpr std::u32string_view Not_First = U"!%),.:;?]}¢°’”‰′″℃、。〉》」』】〕〗〞︰！％），．：；？］｝～—…·ー";
constexpr std::u32string_view Not_Last = U"$([{£¥‘“〈《「『【〔〖〝＄（［｛￡￥";

/// Letters between which a line may end, by blocks of Unicode.
bool Stands_Alone(char32_t c)
{
    return (c >= 0x2E80 && c < 0xA4D0) || (c >= 0xAC00 && c < 0xD7A4) || (c >= 0xF900 && c < 0xFB00) ||
           (c >= 0xFE30 && c < 0xFE50) || (c >= 0xFF00 && c < 0xFFF0) || c >= 0x1F000;
}

bool May_Part(char32_t before, char32_t behind)
{
    if (behind == U' ' || behind == U'\t')
        return false;
    if (before == U' ' || before == U'\t' || before == 0x200B)
        return true;
    if (Not_First.find(behind) != std::u32string_view::npos || Not_Last.find(before) != std::u32string_view::npos)
        return false;
    const bool isObject = before == 0xFFFC || behind == 0xFFFC;
    return isObject || Stands_Alone(before) || Stands_Alone(behind) || before == U'-' || before == 0x2013;
}

/// A place in a paragraph: a run and a byte of the text.
struct Spot {
    std::size_t run = 0;
    std::size_t at = 0;
};

/// The column that lines are set in.
struct Column {
    double left = 0;
    double width = 0;
};

class Setter
{
public:
    Setter(const Book::Page &page, const std::vector<Size> &pictures, double zoom)
        : m_page(page), m_pictures(pictures), m_zoom(zoom)
    {
    }
    Placed Run(int width);

private:
    void Set_Paragraph(const Book::Paragraph &paragraph, Column column);
    std::size_t Set_Row(std::size_t first, int width);
    [[nodiscard]] Spot End_Of_Line(const Spot &begin, double x) const;
    void Set_Line(const Spot &begin, const Spot &end, double x);
    void Set_Run(std::size_t run, std::size_t begin, std::size_t end, double &x);
    void Finish_Line(Line &line, double right);
    [[nodiscard]] double Next_Tab(double x) const;
    [[nodiscard]] Size Picture_Size(int picture) const;
    [[nodiscard]] double Width_Of(const Book::Run &run, char32_t character, double x) const;
    [[nodiscard]] double Pixels(int twips) const { return twips / Twips_Of_A_Pixel * m_zoom; }

    const Book::Page &m_page;
    const std::vector<Size> &m_pictures;
    double m_zoom;
    Placed m_placed;
    int m_y = 0;
    const Book::Paragraph *m_paragraph = nullptr;
    Column m_column; ///< of the paragraph at hand, without its indents
};

Size Setter::Picture_Size(int picture) const
{
    const Size own = m_pictures[static_cast<std::size_t>(picture)];
    // A picture alone may be wider than the text: it is scrolled.
    double width = std::max(own.width * m_zoom, 1.0), height = std::max(own.height * m_zoom, 1.0);
    if (!Book::Is_One_Picture(m_page) && width > m_column.width) {
        height = std::max(height * m_column.width / width, 1.0);
        width = m_column.width;
    }
    constexpr double Most = 1'000'000;
    return {static_cast<int>(std::min(width, Most)), static_cast<int>(std::min(height, Most))};
}

/// The first tab stop is where the lines of a hanging paragraph begin.
double Setter::Next_Tab(double x) const
{
    const double tab = Tab * m_zoom;
    const bool hangs = m_paragraph->first < 0 && x < -0.5;
    return hangs ? 0 : (std::floor((x + 1) / tab) + 1) * tab;
}

double Setter::Width_Of(const Book::Run &run, char32_t character, double x) const
{
    if (run.picture >= 0)
        return Picture_Size(run.picture).width;
    if (character == U'\t')
        return Next_Tab(x) - x;
    return Glyphs::Advance(Glyphs::Font_Of(m_page.looks[run.look], m_zoom), character);
}

/// How far a line goes that begins here. @param x  from the column's left
Spot Setter::End_Of_Line(const Spot &begin, double x) const
{
    Spot parting = begin;
    char32_t before = 0;
    for (Spot now = begin; now.run < m_paragraph->last_run; ++now.run) {
        const Book::Run &run = m_page.runs[now.run];
        now.at = std::max(now.at, run.begin);
        std::string_view rest = std::string_view(m_page.text).substr(now.at, run.end - now.at);
        while (!rest.empty()) {
            now.at = run.end - rest.size();
            const char32_t character = Book::Utf8::Take(rest);
            if (before != 0 && May_Part(before, character))
                parting = now;
            const double width = Width_Of(run, character, x);
            const bool isFull = before != 0 && x + width > m_column.width && character != U' ';
            if (isFull)
                return parting.at > begin.at ? parting : now;
            x += width;
            before = character;
        }
        now.at = run.end;
    }
    return {m_paragraph->last_run, m_page.runs[m_paragraph->last_run - 1].end};
}

void Setter::Set_Run(std::size_t number, std::size_t begin, std::size_t end, double &x)
{
    const Book::Run &run = m_page.runs[number];
    Piece piece{begin, begin, x, 0, 0, run.look, run.picture};
    const auto finish = [&] {
        if (piece.end > piece.begin)
            m_placed.pieces.push_back(piece);
    };
    std::string_view rest = std::string_view(m_page.text).substr(begin, end - begin);
    while (!rest.empty()) {
        const char32_t character = Book::Utf8::Take(rest);
        const double width = Width_Of(run, character, x);
        x += width;
        const std::size_t behind = end - rest.size();
        if (character == U'\t') {
            finish();
            piece = {behind, behind, x, 0, 0, run.look, run.picture};
            continue;
        }
        piece.end = behind;
        piece.width += width;
    }
    if (run.picture >= 0)
        piece.height = Picture_Size(run.picture).height;
    finish();
}

/// Gives a line its height, and its pieces their place across.
void Setter::Finish_Line(Line &line, double right)
{
    Book::Look plain;
    int below = 0, above = 0;
    const auto measure = [&](const Book::Look &look) {
        const Glyphs::Font font = Glyphs::Font_Of(look, m_zoom);
        const int space = static_cast<int>(Glyphs::Height(font) * (Line_Space - 1));
        below = std::max(below, Glyphs::Descent(font) + space / 2);
        above = std::max(above, Glyphs::Height(font) - Glyphs::Descent(font) + space - space / 2);
    };
    const std::uint32_t look = m_page.runs[m_paragraph->first_run].look;
    if (line.first_piece == line.last_piece)
        measure(look < m_page.looks.size() ? m_page.looks[look] : plain);
    const double room = m_column.width - right;
    const double shift = m_paragraph->align == Book::Align::Left     ? 0
                         : m_paragraph->align == Book::Align::Center ? std::max(room / 2, 0.0)
                                                                     : std::max(room, 0.0);
    for (std::size_t i = line.first_piece; i < line.last_piece; ++i) {
        Piece &piece = m_placed.pieces[i];
        piece.x += m_column.left + shift;
        m_placed.width = std::max(m_placed.width, static_cast<int>(piece.x + piece.width));
        if (piece.picture >= 0)
            above = std::max(above, piece.height);
        else
            measure(m_page.looks[piece.look]);
    }
    line.base = above;
    line.height = above + below;
}

void Setter::Set_Line(const Spot &begin, const Spot &end, double x)
{
    Line line{begin.at, end.at, m_y, 0, 0, m_placed.pieces.size(), 0};
    for (std::size_t run = begin.run; run < m_paragraph->last_run && run <= end.run; ++run) {
        const std::size_t from = std::max(begin.at, m_page.runs[run].begin);
        const std::size_t to = std::min(end.at, m_page.runs[run].end);
        if (from < to)
            Set_Run(run, from, to, x);
    }
    line.last_piece = m_placed.pieces.size();
    Finish_Line(line, x);
    m_y += line.height;
    m_placed.lines.push_back(line);
}

void Setter::Set_Paragraph(const Book::Paragraph &paragraph, Column column)
{
    m_paragraph = &paragraph;
    const double most = std::max(column.width - Narrowest, 0.0);
    const double left = std::clamp(Pixels(paragraph.left), 0.0, most);
    const double right = std::clamp(Pixels(paragraph.right), 0.0, most - left);
    m_column = {column.left + left, column.width - left - right};
    m_y += static_cast<int>(Pixels(paragraph.before));
    double x = std::clamp(Pixels(paragraph.first), -left, most);
    Spot begin{paragraph.first_run, m_page.runs[paragraph.first_run].begin};
    do {
        const Spot end = End_Of_Line(begin, x);
        Set_Line(begin, end, x);
        begin = end;
        x = 0;
    } while (begin.run < paragraph.last_run);
    m_y += static_cast<int>(Pixels(paragraph.after));
}

/// @returns the paragraph behind the row
std::size_t Setter::Set_Row(std::size_t first, int width)
{
    const std::vector<Book::Paragraph> &paragraphs = m_page.paragraphs;
    std::size_t last = first;
    while (last < paragraphs.size() && paragraphs[last].row == paragraphs[first].row)
        ++last;
    const int number = paragraphs[first].row;
    const std::vector<int> edges =
        Edges(m_page.rows[static_cast<std::size_t>(number)], paragraphs[last - 1].cell + 1, width, m_zoom);
    const int top = m_y, space = static_cast<int>(Cell_Space * m_zoom);
    int bottom = top;
    for (std::size_t i = first; i < last; ++i) {
        const bool isNewCell = i == first || paragraphs[i].cell != paragraphs[i - 1].cell;
        if (isNewCell)
            m_y = top + space;
        const auto cell = static_cast<std::size_t>(std::min(paragraphs[i].cell, static_cast<int>(edges.size()) - 2));
        const double room = edges[cell + 1] - edges[cell] - 2 * space;
        Set_Paragraph(paragraphs[i], {static_cast<double>(edges[cell] + space), std::max(room, 1.0)});
        bottom = std::max(bottom, m_y + space);
    }
    m_y = bottom;
    return last;
}

Placed Setter::Run(int width)
{
    m_placed.width = width;
    for (std::size_t i = 0; i < m_page.paragraphs.size();) {
        const Book::Paragraph &paragraph = m_page.paragraphs[i];
        Band band{m_y, 0, m_placed.lines.size(), 0, paragraph.row};
        if (paragraph.row >= 0)
            i = Set_Row(i, width);
        else
            Set_Paragraph(m_page.paragraphs[i++], {0, static_cast<double>(width)});
        band.height = m_y - band.y;
        band.last_line = m_placed.lines.size();
        m_placed.bands.push_back(band);
    }
    m_placed.height = m_y;
    return std::move(m_placed);
}

double Distance(const Line &line, const Placed &placed, int x, int y)
{
    const double down = y < line.y ? line.y - y : y >= line.y + line.height ? y - line.y - line.height : 0;
    double across = 1e9;
    for (std::size_t i = line.first_piece; i < line.last_piece; ++i) {
        const Piece &piece = placed.pieces[i];
        across = std::min(across, x < piece.x ? piece.x - x : std::max(x - piece.x - piece.width, 0.0));
    }
    return down * 1000 + (line.first_piece == line.last_piece ? 0 : across);
}

std::size_t Place_In(const Book::Page &page, const Piece &piece, double zoom, double x)
{
    double right = 0;
    std::string_view rest = std::string_view(page.text).substr(piece.begin, piece.end - piece.begin);
    const Glyphs::Font font = Glyphs::Font_Of(page.looks[piece.look], zoom);
    while (!rest.empty()) {
        const std::size_t at = piece.end - rest.size();
        const char32_t character = Book::Utf8::Take(rest);
        const double width = piece.picture >= 0 ? piece.width : Glyphs::Advance(font, character);
        if (x < right + width / 2)
            return at;
        right += width;
    }
    return piece.end;
}
} // namespace

Placed Place(const Book::Page &page, const std::vector<Size> &pictures, int width, double zoom)
{
    return Setter(page, pictures, zoom).Run(width);
}

std::vector<int> Edges(const Book::Row &row, int cells, int width, double zoom)
{
    const int count = std::clamp(std::max(cells, static_cast<int>(row.cells.size())), 1, Most_Cells);
    std::vector<int> edges(static_cast<std::size_t>(count) + 1, 0);
    if (row.cells.empty()) {
        for (int i = 1; i <= count; ++i)
            edges[static_cast<std::size_t>(i)] = width * i / count;
        return edges;
    }
    const double scale = std::min(zoom / Twips_Of_A_Pixel, width / std::max(1.0, double(row.cells.back().edge)));
    edges[0] = std::clamp(static_cast<int>(row.left * scale), 0, width);
    for (std::size_t i = 1; i < edges.size(); ++i) {
        const Book::Cell &cell = row.cells[std::min(i, row.cells.size()) - 1];
        edges[i] = std::clamp(static_cast<int>(cell.edge * scale), edges[i - 1], width);
    }
    for (std::size_t i = row.cells.size() - 1; i > 0; --i) {
        if (row.cells[i].joins_left)
            edges[i] = edges[i + 1];
    }
    return edges;
}

std::size_t Place_At(const Book::Page &page, const Placed &placed, double zoom, int x, int y)
{
    if (placed.bands.empty())
        return 0;
    auto band = std::upper_bound(placed.bands.begin(), placed.bands.end(), y,
                                 [](int wanted, const Band &each) { return wanted < each.y; });
    band -= band == placed.bands.begin() ? 0 : 1;
    const Line *nearest = &placed.lines[band->first_line];
    for (std::size_t i = band->first_line; i < band->last_line; ++i) {
        if (Distance(placed.lines[i], placed, x, y) < Distance(*nearest, placed, x, y))
            nearest = &placed.lines[i];
    }
    std::size_t place = nearest->begin;
    for (std::size_t i = nearest->first_piece; i < nearest->last_piece; ++i) {
        const Piece &piece = placed.pieces[i];
        if (x >= piece.x || i == nearest->first_piece)
            place = Place_In(page, piece, zoom, x - piece.x);
    }
    return place;
}

const Line *Line_Of(const Placed &placed, std::size_t place)
{
    auto line = std::upper_bound(placed.lines.begin(), placed.lines.end(), place,
                                 [](std::size_t wanted, const Line &each) { return wanted < each.begin; });
    return line == placed.lines.begin() ? nullptr : &*(line - 1);
}

double Advance_To(const Book::Page &page, const Piece &piece, std::size_t place, double zoom)
{
    if (piece.picture >= 0)
        return place >= piece.end ? piece.width : 0;
    double x = 0;
    std::string_view rest = std::string_view(page.text).substr(piece.begin, piece.end - piece.begin);
    const Glyphs::Font font = Glyphs::Font_Of(page.looks[piece.look], zoom);
    while (!rest.empty() && piece.end - rest.size() < place)
        x += Glyphs::Advance(font, Book::Utf8::Take(rest));
    return x;
}
} // namespace Layout

// SPDX-License-Identifier: GPL-3.0-or-later
#include "page_view.h"

#include "colors.h"
#include "glyphs.h"

#include <FL/Fl.H>
#include <FL/fl_draw.H>
#include <algorithm>
#include <cmath>

namespace
{
constexpr int Text_Margin = 36;
constexpr int Picture_Margin = 8;
constexpr int Widest_Text = 760; ///< lines longer than this are hard to read
constexpr int Line_Step = 40;
constexpr double Pixels_Of_A_Page_Picture = 2; ///< for each of the screen's
constexpr double Twips_Of_A_Pixel = 15;
constexpr double Sub_By = 0.15;
constexpr double Super_By = 0.35;

/// The size that a picture of the text has at a zoom of 1.
Layout::Size Size_Of(const Book::Page &page, const Book::Page_Picture &picture)
{
    const Pictures::Size own = Pictures::Size_Of(picture.bytes);
    const bool isWholePage = Book::Is_One_Picture(page);
    double width = isWholePage ? own.width / Pixels_Of_A_Page_Picture : own.width;
    double height = isWholePage ? own.height / Pixels_Of_A_Page_Picture : own.height;
    if (picture.width > 0 && picture.height > 0) {
        width = (picture.width - picture.cut_left - picture.cut_right) / Twips_Of_A_Pixel;
        height = (picture.height - picture.cut_top - picture.cut_bottom) / Twips_Of_A_Pixel;
    }
    constexpr double Least = 16, Most = 40'000;
    return {static_cast<int>(std::clamp(width, Least, Most)), static_cast<int>(std::clamp(height, Least, Most))};
}
} // namespace

Page_View::Page_View(int x, int y, int width, int height) : Fl_Group(x, y, width, height)
{
    m_down = new Fl_Scrollbar(x, y, 1, 1);
    m_across = new Fl_Scrollbar(x, y, 1, 1);
    m_across->type(FL_HORIZONTAL);
    for (Fl_Scrollbar *bar : {m_down, m_across}) {
        bar->linesize(Line_Step);
        bar->box(FL_FLAT_BOX);
        bar->color(Colors::Bar);
        bar->slider(FL_FLAT_BOX);
        bar->selection_color(Colors::Line);
        bar->clear_visible_focus();
        bar->callback([](Fl_Widget * /*bar*/, void *self) { static_cast<Page_View *>(self)->redraw(); }, this);
    }
    end();
    resizable(nullptr);
}

/// A page that is a picture has a margin of its own.
int Page_View::Margin() const
{
    return Book::Is_One_Picture(m_page) ? Picture_Margin : Text_Margin;
}

int Page_View::Text_Width() const
{
    const int room = w() - Fl::scrollbar_size() - 2 * Margin();
    return std::clamp(room, 100, static_cast<int>(Widest_Text * std::max(m_zoom, 1.0)));
}

int Page_View::Left() const
{
    const int room = w() - m_down->w();
    const bool isWider = m_placed.width + 2 * Margin() > room;
    return x() + (isWider ? Margin() - m_across->value() : (room - m_placed.width) / 2);
}

int Page_View::Top() const
{
    return y() + Margin() - m_down->value();
}

int Page_View::Last_Top() const
{
    return std::max(m_placed.height + 2 * Margin() - Room(), 0);
}

void Page_View::Show(Book::Page page, const char *missing)
{
    m_page = std::move(page);
    m_missing = missing;
    m_decoded.clear();
    m_sizes.clear();
    for (const Book::Page_Picture &picture : m_page.pictures)
        m_sizes.push_back(Size_Of(m_page, picture));
    m_anchor = m_caret = 0;
    m_down->value(0);
    m_across->value(0);
    Place();
}

/// Sets the page anew; the line at the top stays there.
void Page_View::Place()
{
    const std::size_t top =
        m_down->value() > 0 ? Layout::Place_At(m_page, m_placed, m_zoom, 0, m_down->value() - Margin()) : 0;
    m_placed = Layout::Place(m_page, m_sizes, Text_Width(), m_zoom);
    Place_Bars();
    const Layout::Line *line = top > 0 ? Layout::Line_Of(m_placed, top) : nullptr;
    Scroll_To(line != nullptr ? line->y + Margin() : 0);
}

void Page_View::Place_Bars()
{
    const int bar = Fl::scrollbar_size();
    const bool isWide = m_placed.width + 2 * Margin() > w() - bar;
    m_down->resize(x() + w() - bar, y(), bar, h() - (isWide ? bar : 0));
    m_across->resize(x(), y() + h() - bar, w() - bar, bar);
    if (isWide)
        m_across->show();
    else
        m_across->hide();
    m_across->value(isWide ? m_across->value() : 0, w() - bar, 0, m_placed.width + 2 * Margin());
}

void Page_View::Scroll_To(int top)
{
    m_down->value(std::clamp(top, 0, Last_Top()), Room(), 0, m_placed.height + 2 * Margin());
    m_down->linesize(Line_Step);
    redraw();
}

void Page_View::To_End()
{
    Scroll_To(Last_Top());
}

void Page_View::Set_Zoom(double zoom)
{
    m_zoom = zoom;
    Place();
}

void Page_View::resize(int x, int y, int width, int height)
{
    const bool isChanged = width != w() || height != h();
    Fl_Widget::resize(x, y, width, height);
    if (isChanged)
        Place();
    else
        Place_Bars();
}

void Page_View::Mark(std::size_t begin, std::size_t end)
{
    m_anchor = begin;
    m_caret = end;
    const Layout::Line *line = Layout::Line_Of(m_placed, begin);
    if (line != nullptr) {
        const int top = line->y + Margin();
        if (top < m_down->value() || top + line->height > m_down->value() + Room())
            Scroll_To(top - Room() / 3);
    }
    redraw();
}

void Page_View::draw()
{
    Fl_Color back = Colors::Page;
    fl_push_clip(x(), y(), w(), h());
    fl_rectf(x(), y(), w(), h(), back);
    Draw_Page();
    fl_pop_clip();
    draw_child(*m_down);
    if (m_across->visible() != 0)
        draw_child(*m_across);
    if (m_across->visible() != 0)
        fl_rectf(m_down->x(), m_across->y(), m_down->w(), m_across->h(), Colors::Bar);
}

void Page_View::Draw_Page()
{
    const int top = m_down->value() - Margin(), bottom = top + h();
    auto band = std::upper_bound(m_placed.bands.begin(), m_placed.bands.end(), top,
                                 [](int wanted, const Layout::Band &each) { return wanted < each.y; });
    band -= band == m_placed.bands.begin() ? 0 : 1;
    for (; band != m_placed.bands.end() && band->y < bottom; ++band) {
        if (band->row >= 0)
            Draw_Row(*band);
        for (std::size_t i = band->first_line; i < band->last_line; ++i) {
            const Layout::Line &line = m_placed.lines[i];
            if (line.y + line.height >= top && line.y < bottom)
                Draw_Line(line);
        }
    }
}

void Page_View::Draw_Row(const Layout::Band &band) const
{
    const Book::Row &row = m_page.rows[static_cast<std::size_t>(band.row)];
    const std::vector<int> edges = Layout::Edges(row, 1, Text_Width(), m_zoom);
    const int top = Top() + band.y;
    for (std::size_t i = 0; i < row.cells.size() && i + 1 < edges.size(); ++i) {
        const Book::Cell &cell = row.cells[i];
        const int left = Left() + edges[i], width = edges[i + 1] - edges[i];
        if (width <= 0)
            continue;
        if (cell.back != Book::No_Color)
            fl_rectf(left, top, width, band.height, Colors::Of(cell.back));
        if (!row.has_lines)
            continue;
        fl_color(Colors::Line);
        fl_xyline(left, top + band.height, left + width);
        fl_yxline(left, top, top + band.height);
        fl_yxline(left + width, top, top + band.height);
        if (!cell.joins_above)
            fl_xyline(left, top, left + width);
    }
}

void Page_View::Draw_Mark(const Layout::Line &line) const
{
    const std::size_t begin = std::min(m_anchor, m_caret), end = std::max(m_anchor, m_caret);
    for (std::size_t i = line.first_piece; begin < end && i < line.last_piece; ++i) {
        const Layout::Piece &piece = m_placed.pieces[i];
        if (piece.end <= begin || piece.begin >= end)
            continue;
        const double from = Layout::Advance_To(m_page, piece, std::max(begin, piece.begin), m_zoom);
        const double to = Layout::Advance_To(m_page, piece, std::min(end, piece.end), m_zoom);
        const int left = Left() + static_cast<int>(piece.x + from);
        fl_rectf(left, Top() + line.y, static_cast<int>(std::ceil(to - from)), line.height, Colors::Marked);
    }
}

void Page_View::Draw_Line(const Layout::Line &line)
{
    for (std::size_t i = line.first_piece; i < line.last_piece; ++i) {
        const Layout::Piece &piece = m_placed.pieces[i];
        const std::uint32_t back = m_page.looks[piece.look].back;
        if (back != Book::No_Color && piece.picture < 0)
            fl_rectf(Left() + static_cast<int>(piece.x), Top() + line.y, static_cast<int>(std::ceil(piece.width)),
                     line.height, Colors::Of(back));
    }
    Draw_Mark(line);
    for (std::size_t i = line.first_piece; i < line.last_piece; ++i) {
        if (m_placed.pieces[i].picture >= 0)
            Draw_Picture(m_placed.pieces[i], line);
        else
            Draw_Text(m_placed.pieces[i], line);
    }
}

void Page_View::Draw_Text(const Layout::Piece &piece, const Layout::Line &line) const
{
    const Book::Look &look = m_page.looks[piece.look];
    const Glyphs::Font font = Glyphs::Font_Of(look, m_zoom);
    fl_font(font.number, font.size);
    fl_color(look.color == Book::No_Color ? Fl_Color(Colors::Text) : Colors::Of(look.color));
    const double raise = look.raised > 0 ? Super_By : look.raised < 0 ? -Sub_By : 0;
    const int left = Left() + static_cast<int>(piece.x);
    const int base = Top() + line.y + line.base - static_cast<int>(raise * font.size / 0.7);
    fl_draw(m_page.text.data() + piece.begin, static_cast<int>(piece.end - piece.begin), left, base);
    const int right = left + static_cast<int>(piece.width) - 1;
    if (look.underlined)
        fl_xyline(left, base + std::max(font.size / 8, 1), right);
    if (look.struck)
        fl_xyline(left, base - font.size / 3, right);
}

/// A picture that was decoded for another size may be too coarse now.
const Pictures::Decoded &Page_View::Decoded(int picture, int width)
{
    Held &held = m_decoded[picture];
    if (held.width < width) {
        constexpr std::size_t Most_Held = 8; // what was seen before is decoded again when it comes back
        if (m_decoded.size() > Most_Held) {
            m_decoded.clear();
            return Decoded(picture, width);
        }
        held.picture = Pictures::Decode(m_page.pictures[static_cast<std::size_t>(picture)].bytes, width);
        held.width = width;
    }
    return held.picture;
}

void Page_View::Draw_Missing(const Layout::Piece &piece, int top) const
{
    const int left = Left() + static_cast<int>(piece.x), width = static_cast<int>(piece.width);
    fl_color(Colors::Line);
    fl_rect(left, top, width, piece.height);
    fl_color(Colors::Quiet);
    fl_font(FL_HELVETICA, FL_NORMAL_SIZE);
    fl_push_clip(left, top, width, piece.height);
    fl_draw(m_missing.c_str(), left + 4, top, width - 8, piece.height, FL_ALIGN_LEFT | FL_ALIGN_WRAP, nullptr, 0);
    fl_pop_clip();
}

namespace
{
/// One picture as it is drawn: the part of it that is shown, made as large as it is on the screen.
struct Stretched {
    const Pictures::Decoded *picture;
    double left, top;    ///< in the picture's pixels
    double across, down; ///< of the picture's pixels for one of the screen's
};

const unsigned char *Pixel(const Pictures::Decoded &picture, double x, double y)
{
    const int column = std::clamp(static_cast<int>(x), 0, picture.size.width - 1);
    const int row = std::clamp(static_cast<int>(y), 0, picture.size.height - 1);
    return picture.pixels.data() + (static_cast<std::size_t>(row) * static_cast<std::size_t>(picture.size.width) +
                                    static_cast<std::size_t>(column)) *
                                       3;
}

/// Fills a line with the mean of four places of each pixel.
void Draw_Pixels(void *data, int x, int y, int width, uchar *line)
{
    const auto &shown = *static_cast<const Stretched *>(data);
    constexpr double Places[] = {0.25, 0.75};
    for (int i = 0; i < width; ++i) {
        int sum[3] = {0, 0, 0};
        for (const double down : Places)
            for (const double across : Places) {
                const unsigned char *pixel = Pixel(*shown.picture, shown.left + (x + i + across) * shown.across,
                                                   shown.top + (y + down) * shown.down);
                for (int color = 0; color < 3; ++color)
                    sum[color] += pixel[color];
            }
        for (const int color : sum)
            *line++ = static_cast<uchar>(color / 4);
    }
}
} // namespace

void Page_View::Draw_Picture(const Layout::Piece &piece, const Layout::Line &line)
{
    const Book::Page_Picture &picture = m_page.pictures[static_cast<std::size_t>(piece.picture)];
    const int width = static_cast<int>(piece.width), top = Top() + line.y + line.base - piece.height;
    const bool isCut = picture.width > 0 && picture.height > 0;
    const double part = isCut ? double(picture.width - picture.cut_left - picture.cut_right) / picture.width : 1;
    const double tall = isCut ? double(picture.height - picture.cut_top - picture.cut_bottom) / picture.height : 1;
    const bool isSane = part > 0 && tall > 0 && part <= 4 && tall <= 4;
    const Pictures::Decoded &decoded = Decoded(piece.picture, isSane ? static_cast<int>(width / part) : 1);
    if (decoded.pixels.empty() || !isSane)
        return Draw_Missing(piece, top);
    Stretched shown{&decoded, isCut ? double(picture.cut_left) / picture.width * decoded.size.width : 0,
                    isCut ? double(picture.cut_top) / picture.height * decoded.size.height : 0,
                    decoded.size.width * part / width, decoded.size.height * tall / piece.height};
    // Only what is seen is given to the screen, which counts in 16 bits.
    const int left = Left() + static_cast<int>(piece.x);
    const int fromX = std::max(x() - left, 0), fromY = std::max(y() - top, 0);
    const int toX = std::min(width, x() + w() - left), toY = std::min(piece.height, y() + h() - top);
    if (fromX >= toX || fromY >= toY)
        return;
    shown.left += fromX * shown.across;
    shown.top += fromY * shown.down;
    fl_draw_image(Draw_Pixels, &shown, left + fromX, top + fromY, toX - fromX, toY - fromY, 3);
}

std::size_t Page_View::Place_At_Mouse() const
{
    return Layout::Place_At(m_page, m_placed, m_zoom, Fl::event_x() - Left(), Fl::event_y() - Top());
}

void Page_View::Copy() const
{
    std::string text = m_page.text.substr(Mark_Begin(), Mark_End() - Mark_Begin());
    for (std::size_t at = text.find(Book::Picture_Sign); at != std::string::npos; at = text.find(Book::Picture_Sign))
        text.erase(at, Book::Picture_Sign.size());
    if (!text.empty())
        Fl::copy(text.data(), static_cast<int>(text.size()), 1);
}

/// @returns false at the end that it would leave
bool Page_View::Move(int by)
{
    const int before = m_down->value();
    Scroll_To(before + by);
    return m_down->value() != before;
}

bool Page_View::Handle_Key()
{
    const int page = std::max(Room() - Line_Step, Line_Step);
    const bool control = Fl::event_ctrl() != 0;
    switch (Fl::event_key()) {
    case FL_Down:
        return Move(Line_Step), true;
    case FL_Up:
        return Move(-Line_Step), true;
    case ' ':
    case FL_Page_Down:
        if (!Move(page) && m_leave)
            m_leave(1);
        return true;
    case FL_BackSpace:
    case FL_Page_Up:
        if (!Move(-page) && m_leave)
            m_leave(-1);
        return true;
    case FL_Home:
        return Move(-m_placed.height), true;
    case FL_End:
        return To_End(), true;
    case FL_Left:
    case FL_Right:
        m_across->value(static_cast<int>(std::clamp<double>(
            m_across->value() + (Fl::event_key() == FL_Left ? -Line_Step : Line_Step), 0, m_across->maximum())));
        return redraw(), true;
    case 'a':
        return control && (Mark(0, m_page.text.size()), true);
    case 'c':
        return control && (Copy(), true);
    default:
        return false;
    }
}

int Page_View::handle(int event)
{
    const bool isOnBar = Fl::event_inside(m_down) != 0 || (m_across->visible() != 0 && Fl::event_inside(m_across) != 0);
    switch (event) {
    case FL_FOCUS:
    case FL_UNFOCUS:
        return 1;
    case FL_PUSH:
        if (isOnBar)
            break;
        take_focus();
        m_anchor = m_caret = Place_At_Mouse();
        return redraw(), 1;
    case FL_DRAG:
        m_caret = Place_At_Mouse();
        Move(Fl::event_y() < y() ? -Line_Step / 2 : Fl::event_y() > y() + h() ? Line_Step / 2 : 0);
        return redraw(), 1;
    case FL_RELEASE:
        return 1;
    case FL_MOUSEWHEEL:
        if (Fl::event_ctrl() != 0)
            return 0; // the window's
        return Move(Fl::event_dy() * Line_Step * 2), 1;
    case FL_KEYBOARD:
        return Handle_Key() ? 1 : 0;
    default:
        break;
    }
    return Fl_Group::handle(event);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "book_window.h"

#include "colors.h"
#include "platform/book/utf8.h"
#include "words.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Tile.H>
#include <FL/fl_draw.H>
#include <FL/fl_utf8.h>
#include <algorithm>
#include <array>

namespace
{
constexpr std::array<double, 15> Zooms{0.5, 0.6, 0.7, 0.8, 0.9, 1, 1.1, 1.25, 1.5, 1.75, 2, 2.5, 3, 3.5, 4};
constexpr int Usual_Step = 5;
constexpr int Percent = 100;

Book_Window *The_Book = nullptr;

bool Is_Picture(std::string_view bytes)
{
    return bytes.starts_with("\xFF\xD8");
}

/// The text with small letters, each as long as before, so that places stay.
std::string Folded(std::string_view text)
{
    std::string folded;
    folded.reserve(text.size());
    while (!text.empty()) {
        const std::string_view before = text;
        const char32_t character = Book::Utf8::Take(text);
        const std::size_t length = before.size() - text.size();
        std::string small;
        Book::Utf8::Append(small, static_cast<char32_t>(fl_tolower(character)));
        folded += small.size() == length ? small : std::string(before.substr(0, length));
    }
    return folded;
}
/// Says what it is for while it is empty.
class Search_Field : public Fl_Input
{
public:
    using Fl_Input::Fl_Input;
    void draw() override
    {
        Fl_Input::draw();
        fl_color(Colors::Line);
        fl_rect(x(), y(), w(), h());
        if (size() > 0 || Fl::focus() == this)
            return;
        fl_font(FL_HELVETICA, textsize());
        fl_color(Colors::Quiet);
        fl_draw(Said().search, x() + 6, y(), w() - 12, h(), FL_ALIGN_LEFT, nullptr, 0);
    }
};

/// Titles with some room between them.
class Title_List : public Fl_Hold_Browser
{
public:
    using Fl_Hold_Browser::Fl_Hold_Browser;
    [[nodiscard]] int item_height(void *item) const override
    {
        return Fl_Hold_Browser::item_height(item) + textsize() / 2;
    }
};

void Flatten(Fl_Scrollbar &bar)
{
    bar.box(FL_FLAT_BOX);
    bar.color(Colors::Bar);
    bar.slider(FL_FLAT_BOX);
    bar.selection_color(Colors::Line);
}
} // namespace

Book_Window::Book_Window(std::vector<Book::Item> items, std::vector<Book::Entry> index)
    : Fl_Double_Window(1060, 760, Said().title), m_items(std::move(items)), m_index(std::move(index)),
      m_unit(FL_NORMAL_SIZE), m_step(Usual_Step)
{
    size(std::min(w() * m_unit / 14, Fl::w()), std::min(h() * m_unit / 14, Fl::h()));
    color(Colors::Bar);
    Make_Bar();
    Add_Body();
    end();
    callback([](Fl_Widget *window, void * /*data*/) { // Escape leaves the search, not the book
        if (Fl::event() != FL_SHORTCUT || Fl::event_key() != FL_Escape)
            window->hide();
    });
    while (m_step + 1 < static_cast<int>(Zooms.size()) && Zooms[static_cast<std::size_t>(m_step)] < m_unit / 14.0)
        ++m_step;
    Zoom_By(0);
    Open(1);
}

Fl_Button *Book_Window::Add_Button(int right, const char *sign, const char *tip, Action action)
{
    struct Bound {
        Book_Window *window;
        Action action;
    };
    const int side = m_unit * 2;
    auto *button = new Fl_Button(w() - right * side - m_unit, m_unit / 2, side, side, sign);
    button->box(FL_FLAT_BOX);
    button->down_box(FL_THIN_DOWN_BOX);
    button->color(Colors::Bar);
    button->labelcolor(Colors::Text);
    button->labelsize(m_unit);
    button->tooltip(tip);
    button->clear_visible_focus();
    button->callback(
        [](Fl_Widget * /*button*/, void *data) {
            const auto *bound = static_cast<Bound *>(data);
            bound->action(*bound->window);
        },
        new Bound{this, action}); // lives as long as the window, which is as long as the program
    return button;
}

void Book_Window::Make_Bar()
{
    const int side = m_unit * 2, bar = side + m_unit;
    auto *whole = new Fl_Group(0, 0, w(), bar);
    m_search = new Search_Field(m_unit, m_unit / 2, m_unit * 18, side);
    m_search->box(FL_FLAT_BOX);
    m_search->color(Colors::Page, Colors::Marked);
    m_search->textsize(m_unit);
    m_search->tooltip(Said().search);
    m_search->when(FL_WHEN_ENTER_KEY_ALWAYS);
    m_search->callback([](Fl_Widget * /*input*/,
                          void *self) { static_cast<Book_Window *>(self)->Find(Fl::event_shift() != 0 ? -1 : 1); },
                       this);
    const int behind = m_search->x() + m_search->w();
    auto *before = Add_Button(0, "@8>", Said().tip_before, [](Book_Window &window) { window.Find(-1); });
    auto *next = Add_Button(0, "@2>", Said().tip_next, [](Book_Window &window) { window.Find(1); });
    before->position(behind + m_unit / 4, before->y());
    next->position(before->x() + side, next->y());
    m_state = new Fl_Box(next->x() + side + m_unit / 2, m_unit / 2, m_unit * 12, side);
    m_state->align(FL_ALIGN_LEFT | FL_ALIGN_INSIDE);
    m_state->labelsize(m_unit);
    m_state->labelcolor(Colors::Quiet);
    auto *room = new Fl_Box(m_state->x() + m_state->w(), 0, 1, bar);
    Add_Button(4, "−", Said().tip_smaller, [](Book_Window &window) { window.Zoom_By(-1); });
    m_percent = Add_Button(3, "", Said().tip_usual, [](Book_Window &window) { window.Zoom_By(0); });
    m_percent->size(side, side);
    Add_Button(2, "+", Said().tip_larger, [](Book_Window &window) { window.Zoom_By(1); });
    whole->resizable(room);
    whole->end();
}

void Book_Window::Add_Body()
{
    const int bar = m_unit * 3, list = w() * 3 / 11;
    auto *tile = new Fl_Tile(0, bar, w(), h() - bar);
    m_list = new Title_List(0, bar, list, h() - bar);
    m_list->format_char(0); // titles are plain text
    m_list->box(FL_FLAT_BOX);
    m_list->color(Colors::List, Colors::Chosen);
    m_list->textcolor(Colors::Text);
    m_list->textsize(m_unit);
    Flatten(m_list->scrollbar);
    Flatten(m_list->hscrollbar);
    m_list->callback(
        [](Fl_Widget *browser, void *self) {
            static_cast<Book_Window *>(self)->Open(static_cast<Fl_Hold_Browser *>(browser)->value());
        },
        this);
    for (const Book::Entry &entry : m_index)
        m_list->add((" " + entry.title).c_str());
    m_page = new Page_View(list, bar, w() - list, h() - bar);
    m_page->On_Leave([this](int by) { Open_Beside(by); });
    tile->end();
    resizable(m_page);
    tile->resizable(m_page);
}

/// The window's keys come before those of the field that has the focus.
int Book_Window::Dispatch(int event, Fl_Window *window)
{
    const bool isOwn = window != nullptr && window == The_Book;
    return event == FL_KEYDOWN && isOwn && The_Book->Handle_Key() ? 1 : Fl::handle_(event, window);
}

void Book_Window::Start()
{
    The_Book = this;
    Fl::event_dispatch(Dispatch);
    show();
    m_list->take_focus();
}

Book::Page Book_Window::Page_Of(int line) const
{
    const std::string_view bytes =
        Book::Find(m_items, m_index[static_cast<std::size_t>(line) - 1].id).value_or(std::string_view());
    if (Is_Picture(bytes))
        return Book::Picture_Page(bytes);
    return bytes.starts_with("{\\rtf") ? Book::Read_Rich(bytes) : Book::Plain_Page(Book::Unscrambled(bytes));
}

void Book_Window::Open(int line)
{
    if (line < 1 || line > Count())
        return;
    Book::Page page = Page_Of(line);
    if (page.runs.empty())
        page = Book::Plain_Page(Said().unreadable);
    if (page.is_cut)
        Book::Add_Last(page, Said().cut);
    m_list->value(line);
    m_list->make_visible(line);
    m_page->Show(std::move(page), Said().no_picture);
    copy_label((Title(line) + " - " + Said().title).c_str());
    Tell();
}

void Book_Window::Open_Beside(int by)
{
    const int line = m_list->value() + by;
    if (line < 1 || line > Count())
        return;
    Open(line);
    if (by < 0)
        m_page->To_End();
}

void Book_Window::Tell()
{
    m_stateText = std::to_string(m_list->value()) + " / " + std::to_string(Count());
    m_state->label(m_stateText.c_str());
}

void Book_Window::Found(int line, std::size_t begin, std::size_t end)
{
    if (line != m_list->value())
        Open(line);
    else
        Tell();
    m_page->Mark(begin, end);
}

/// Looks through one document. @param fromMark  beyond what is marked only
bool Book_Window::Find_In(int line, int by, bool fromMark)
{
    const std::string wanted = Folded(m_search->value());
    const bool isOpen = line == m_list->value();
    const std::string text = Folded(isOpen ? m_page->Page().text : Page_Of(line).text);
    std::size_t at = std::string::npos;
    if (by > 0)
        at = text.find(wanted, fromMark ? m_page->Mark_End() : 0);
    else if (!fromMark)
        at = text.rfind(wanted);
    else if (m_page->Mark_Begin() > 0)
        at = text.rfind(wanted, m_page->Mark_Begin() - 1);
    if (at != std::string::npos)
        return Found(line, at, at + wanted.size()), true;
    const bool isInTitle = !fromMark && Folded(Title(line)).find(wanted) != std::string::npos;
    return isInTitle && (Found(line, 0, 0), true);
}

/// Goes on from what is marked, through the documents behind or before, and round.
void Book_Window::Find(int by)
{
    if (m_search->size() == 0)
        return void(m_search->take_focus());
    cursor(FL_CURSOR_WAIT);
    const int now = m_list->value();
    bool found = Find_In(now, by, true);
    for (int away = 1; away <= Count() && !found; ++away)
        found = Find_In((now - 1 + away * by + Count()) % Count() + 1, by, false);
    cursor(FL_CURSOR_DEFAULT);
    if (!found)
        m_state->label(Said().not_found);
}

/// @param steps  0 for the usual size
void Book_Window::Zoom_By(int steps)
{
    m_step = steps == 0 && m_percentText.empty() ? m_step
             : steps == 0                        ? Usual_Step
                                                 : std::clamp(m_step + steps, 0, static_cast<int>(Zooms.size()) - 1);
    const double zoom = Zooms[static_cast<std::size_t>(m_step)];
    m_percentText = std::to_string(static_cast<int>(zoom * Percent + 0.5)) + "%";
    m_percent->label(m_percentText.c_str());
    m_percent->labelsize(m_unit * 5 / 6);
    m_page->Set_Zoom(zoom);
}

bool Book_Window::Handle_Key()
{
    const int key = Fl::event_key();
    if (key == FL_F + 3)
        return Find(Fl::event_shift() != 0 ? -1 : 1), true;
    if (key == FL_Escape && Fl::focus() == m_search)
        return m_page->take_focus() != 0;
    if ((key == FL_Enter || key == FL_KP_Enter) && Fl::focus() == m_list)
        return m_page->take_focus() != 0;
    if (Fl::event_ctrl() == 0)
        return false;
    switch (key) {
    case 'f':
        m_search->position(m_search->size(), 0);
        return m_search->take_focus() != 0;
    case 'q':
    case 'w':
        return hide(), true;
    case '0':
        return Zoom_By(0), true;
    case '+':
    case '=':
    case FL_KP + '+':
        return Zoom_By(1), true;
    case '-':
    case FL_KP + '-':
        return Zoom_By(-1), true;
    case FL_Page_Down:
        return Open_Beside(1), true;
    case FL_Page_Up:
        return Open_Beside(-1), true;
    default:
        return false;
    }
}

int Book_Window::handle(int event)
{
    if (event == FL_MOUSEWHEEL && Fl::event_ctrl() != 0)
        return Zoom_By(Fl::event_dy() > 0 ? -1 : 1), 1;
    return Fl_Double_Window::handle(event);
}

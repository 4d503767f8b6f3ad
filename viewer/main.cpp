// SPDX-License-Identifier: GPL-3.0-or-later
#include "own_file.h"
#include "picture.h"
#include "platform/book/book_items.h"
#include "rich_reader.h"
#include "words.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Hold_Browser.H>
#include <FL/Fl_Input.H>
#include <FL/Fl_RGB_Image.H>
#include <FL/Fl_Scroll.H>
#include <FL/Fl_Text_Display.H>
#include <FL/Fl_Tile.H>
#include <FL/fl_ask.H>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fontconfig/fontconfig.h>
#include <memory>

namespace
{
constexpr int Step = 2;
constexpr int Smallest = 8;
constexpr int Largest = 48;

bool Is_Chinese()
{
    for (const char *name : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char *value = std::getenv(name); value != nullptr && *value != '\0')
            return std::string_view(value).starts_with("zh");
    return false;
}
const Words &Said = Is_Chinese() ? Chinese : English;

class Window : public Fl_Double_Window
{
public:
    Window(const std::vector<Book::Item> &items, std::vector<Book::Entry> index);
    int handle(int event) override;
    void Start()
    {
        show();
        m_list->take_focus();
    }

private:
    void Show(int line);
    void Show_Text(const Shown_Text &shown);
    void Show_Picture(std::string_view jpeg);
    void Set_Size(int size);
    void Find_Next();
    [[nodiscard]] Shown_Text Text_Of(int line) const;
    [[nodiscard]] std::string_view Bytes_Of(int line) const;

    const std::vector<Book::Item> &m_items;
    std::vector<Book::Entry> m_index;
    Fl_Text_Buffer m_text;
    Fl_Text_Buffer m_styles;
    std::array<Fl_Text_Display::Style_Table_Entry, Style_Count> m_table{};
    Picture m_picture;
    std::unique_ptr<Fl_RGB_Image> m_image;
    Fl_Input *m_search;
    Fl_Hold_Browser *m_list;
    Fl_Text_Display *m_display;
    Fl_Scroll *m_scroll;
    Fl_Box *m_page;
    int m_size = 16;
};

bool Is_Rich(std::string_view bytes)
{
    return bytes.starts_with("{\\rtf");
}
bool Is_Picture(std::string_view bytes)
{
    return bytes.starts_with("\xFF\xD8");
}

Window::Window(const std::vector<Book::Item> &items, std::vector<Book::Entry> index)
    : Fl_Double_Window(960, 680, Said.title), m_items(items), m_index(std::move(index))
{
    constexpr int Bar = 44;
    constexpr int List = 260;
    m_search = new Fl_Input(80, 8, 300, 28, Said.search);
    m_search->when(FL_WHEN_ENTER_KEY_ALWAYS);
    m_search->callback([](Fl_Widget *, void *self) { static_cast<Window *>(self)->Find_Next(); }, this);
    auto *tile = new Fl_Tile(0, Bar, w(), h() - Bar);
    m_list = new Fl_Hold_Browser(0, Bar, List, h() - Bar);
    m_list->format_char(0); // titles are plain text
    m_list->textsize(15);
    m_list->callback(
        [](Fl_Widget *list, void *self) {
            static_cast<Window *>(self)->Show(static_cast<Fl_Hold_Browser *>(list)->value());
        },
        this);
    auto *pane = new Fl_Group(List, Bar, w() - List, h() - Bar);
    m_display = new Fl_Text_Display(List, Bar, w() - List, h() - Bar);
    m_display->buffer(&m_text);
    m_display->wrap_mode(Fl_Text_Display::WRAP_AT_BOUNDS, 0);
    m_scroll = new Fl_Scroll(List, Bar, w() - List, h() - Bar);
    m_scroll->box(FL_DOWN_BOX);
    m_page = new Fl_Box(List, Bar, 1, 1);
    m_scroll->end();
    m_scroll->hide();
    pane->end();
    tile->end();
    end();
    resizable(pane);
    for (const Book::Entry &entry : m_index)
        m_list->add(entry.title.c_str());
    Set_Size(m_size);
    m_list->value(1);
    Show(1);
}

std::string_view Window::Bytes_Of(int line) const
{
    return Book::Find(m_items, m_index.at(static_cast<std::size_t>(line) - 1).id).value_or(std::string_view());
}

Shown_Text Window::Text_Of(int line) const
{
    const std::string_view bytes = Bytes_Of(line);
    if (Is_Rich(bytes))
        return Read_Rich(bytes);
    std::string text = Is_Picture(bytes) ? std::string() : Book::Unscrambled(bytes);
    std::erase(text, '\r');
    std::erase(text, '\0');
    return {text, std::string(text.size(), 'A')};
}

void Window::Show(int line)
{
    if (line < 1 || line > static_cast<int>(m_index.size()))
        return;
    if (Is_Picture(Bytes_Of(line)))
        return Show_Picture(Bytes_Of(line));
    const Shown_Text shown = Text_Of(line);
    Show_Text(shown.text.empty() ? Shown_Text{Said.unreadable, {}} : shown);
}

void Window::Show_Text(const Shown_Text &shown)
{
    m_scroll->hide();
    m_display->show();
    m_styles.text(shown.styles.c_str());
    m_text.text(shown.text.c_str());
    m_display->scroll(0, 0);
}

void Window::Show_Picture(std::string_view jpeg)
{
    const int width = m_scroll->w() * m_size / 16;
    m_picture = Read_Picture(jpeg, width);
    if (m_picture.pixels.empty())
        return Show_Text({Said.unreadable, {}});
    const Fl_RGB_Image whole(m_picture.pixels.data(), m_picture.width, m_picture.height, 3);
    const int shown = std::min(width - Fl::scrollbar_size() - 8, m_picture.width);
    const auto height = static_cast<int>(static_cast<long long>(m_picture.height) * shown / m_picture.width);
    Fl_Image::RGB_scaling(FL_RGB_SCALING_BILINEAR);
    m_page->image(nullptr);
    m_image.reset(static_cast<Fl_RGB_Image *>(const_cast<Fl_RGB_Image &>(whole).copy(shown, std::max(height, 1))));
    m_scroll->scroll_to(0, 0);
    m_page->image(m_image.get());
    m_page->resize(m_scroll->x() + 2, m_scroll->y() + 2, m_image->w(), m_image->h());
    m_display->hide();
    m_scroll->show();
    redraw();
}

void Window::Set_Size(int size)
{
    m_size = std::clamp(size, Smallest, Largest);
    for (int style = 0; style < Style_Count; ++style) {
        const int font = FL_HELVETICA + ((style & 1) != 0 ? FL_BOLD : 0) + ((style & 2) != 0 ? FL_ITALIC : 0);
        m_table[static_cast<std::size_t>(style)] = {FL_FOREGROUND_COLOR, font, m_size + m_size * (style / 4) / 3, 0};
    }
    m_display->textsize(m_size);
    m_display->highlight_data(&m_styles, m_table.data(), Style_Count, 'A', nullptr, nullptr);
    m_display->resize(m_display->x(), m_display->y(), m_display->w(), m_display->h());
    if (m_scroll->visible() != 0)
        Show(m_list->value());
    redraw();
}

/// Goes on from what is found, through the documents behind, titles included.
void Window::Find_Next()
{
    const char *wanted = m_search->value();
    if (*wanted == '\0')
        return;
    int at = m_display->insert_position();
    if (m_display->visible() == 0)
        at = m_text.length();
    for (int line = std::max(m_list->value(), 1); line <= static_cast<int>(m_index.size()); ++line, at = 0) {
        Fl_Text_Buffer text;
        text.text(Text_Of(line).text.c_str());
        int found = 0;
        const bool inText = text.search_forward(std::min(at, text.length()), wanted, &found, 0) != 0;
        const bool inTitle = line != m_list->value() &&
                             m_index[static_cast<std::size_t>(line) - 1].title.find(wanted) != std::string::npos;
        if (!inText && !inTitle)
            continue;
        if (line != m_list->value()) {
            m_list->value(line);
            Show(line);
        }
        if (inText) {
            const int end = found + static_cast<int>(std::string_view(wanted).size());
            m_text.select(found, end);
            m_display->insert_position(end);
            m_display->show_insert_position();
        }
        return;
    }
    fl_message("%s", Said.not_found);
}

int Window::handle(int event)
{
    if ((event == FL_KEYBOARD || event == FL_SHORTCUT) && Fl::event_ctrl() != 0) {
        switch (Fl::event_key()) {
        case 'f':
            return m_search->take_focus();
        case '+':
        case '=':
        case FL_KP + '+':
            return Set_Size(m_size + Step), 1;
        case '-':
        case FL_KP + '-':
            return Set_Size(m_size - Step), 1;
        default:
            break;
        }
    }
    if ((event == FL_KEYBOARD || event == FL_SHORTCUT) && Fl::event_key() == FL_F + 3)
        return Find_Next(), 1;
    return Fl_Double_Window::handle(event);
}

int Refuse(const char *text)
{
    fl_alert("%s", text);
    return 1;
}

/// @returns false when the reader gave up
bool Password_Is_Given(const std::string &password)
{
    while (!password.empty()) {
        const char *typed = fl_password("%s", nullptr, Said.password);
        if (typed == nullptr)
            return false;
        std::string given(typed); // as the book keeps it, without blanks at its front
        given.erase(0, given.find_first_not_of(' '));
        if (given == password)
            return true;
        fl_alert("%s", Said.wrong);
    }
    return true;
}

int Open_Book()
{
    const std::string file = Own_File::Read();
    const std::vector<Book::Item> items = Book::Items(file);
    const auto parameters = Book::Read_Parameters(Book::Find(items, Book::Parameters_Id).value_or(""));
    if (!parameters)
        return Refuse(Said.no_book);
    if (parameters->uses <= 0)
        return Refuse(Said.used_up);
    std::vector<Book::Entry> index = Book::Read_Index(Book::Find(items, Book::Index_Id).value_or(""));
    std::erase_if(index, [&](const Book::Entry &entry) { return !Book::Find(items, entry.id); });
    if (index.empty())
        return Refuse(Said.no_book);
    if (!Password_Is_Given(parameters->password))
        return 1;
    const int left = parameters->uses - 1;
    if (Own_File::Replace(file, {parameters->password, left}, left > 0) && left == 0)
        fl_message("%s", Said.last_use);
    Window window(items, std::move(index));
    window.Start();
    return Fl::run();
}

/// The toolkit takes each letter from one font: it has to be one that knows Chinese.
void Choose_Fonts()
{
    static std::array<std::string, 4> names;
    FcPattern *wanted = FcNameParse(reinterpret_cast<const FcChar8 *>("sans:lang=zh-cn"));
    FcConfigSubstitute(nullptr, wanted, FcMatchPattern);
    FcDefaultSubstitute(wanted);
    FcResult result = FcResultNoMatch;
    FcPattern *found = FcFontMatch(nullptr, wanted, &result);
    FcChar8 *family = nullptr;
    if (found != nullptr && FcPatternGetString(found, FC_FAMILY, 0, &family) == FcResultMatch)
        for (int style = 0; style < 4; ++style) { // the first letter of a name says how it is set
            std::string &name = names[static_cast<std::size_t>(style)];
            name = std::string(1, " BIP"[style]) + reinterpret_cast<const char *>(family);
            Fl::set_font(FL_HELVETICA + style, name.c_str());
        }
    if (found != nullptr)
        FcPatternDestroy(found);
    FcPatternDestroy(wanted);
}
} // namespace

int main()
{
    Choose_Fonts();
    fl_ok = Said.ok;
    fl_cancel = Said.cancel;
    fl_close = Said.ok;
    fl_message_title_default(Said.title);
    return Open_Book();
}

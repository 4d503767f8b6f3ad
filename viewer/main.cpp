// SPDX-License-Identifier: GPL-3.0-or-later
#include "book_window.h"
#include "own_file.h"
#include "words.h"

#include <FL/Fl.H>
#include <FL/fl_ask.H>
#include <FL/x.H>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <fontconfig/fontconfig.h>

namespace
{
int Refuse(const char *text)
{
    fl_alert("%s", text);
    return 1;
}

/// @returns false when the reader gave up
bool Password_Is_Given(const std::string &password)
{
    while (!password.empty()) {
        const char *typed = fl_password("%s", nullptr, Said().password);
        if (typed == nullptr)
            return false;
        std::string given(typed); // as the book keeps it, without blanks at its front
        given.erase(0, given.find_first_not_of(' '));
        if (given == password)
            return true;
        fl_alert("%s", Said().wrong);
    }
    return true;
}

int Open_Book()
{
    std::vector<Book::Item> items = Book::Items(Own_File::Bytes());
    const auto parameters = Book::Read_Parameters(Book::Find(items, Book::Parameters_Id).value_or(""));
    if (!parameters)
        return Refuse(Said().no_book);
    if (parameters->uses <= 0)
        return Refuse(Said().used_up);
    std::vector<Book::Entry> index = Book::Read_Index(Book::Find(items, Book::Index_Id).value_or(""));
    std::erase_if(index, [&](const Book::Entry &entry) { return !Book::Find(items, entry.id); });
    if (index.empty())
        return Refuse(Said().no_book);
    if (!Password_Is_Given(parameters->password))
        return 1;
    const int left = parameters->uses - 1;
    if (Own_File::Replace({parameters->password, left}, left > 0) && left == 0)
        fl_message("%s", Said().last_use);
    Book_Window window(std::move(items), std::move(index));
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

/// Letters and bars as large as the screen's settings want them.
void Choose_Sizes()
{
    constexpr double Usual = 96, Largest = 4;
    constexpr int Letters = 14, Bar = 14;
    fl_open_display();
    const char *said = XGetDefault(fl_display, "Xft", "dpi");
    const double scale = std::clamp((said != nullptr ? std::atof(said) : Usual) / Usual, 1.0, Largest);
    FL_NORMAL_SIZE = static_cast<int>(Letters * scale);
    Fl::scrollbar_size(static_cast<int>(Bar * scale));
}
} // namespace

int main()
{
    Choose_Fonts();
    Choose_Sizes();
    Fl::background(0xEE, 0xF0, 0xF3); // as Colors::Bar
    Fl::scheme("gtk+");
    fl_ok = Said().ok;
    fl_cancel = Said().cancel;
    fl_close = Said().ok;
    fl_message_title_default(Said().title);
    return Open_Book();
}

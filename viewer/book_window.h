// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "page_view.h"
#include "platform/book/book_items.h"
#include "platform/book/book_texts.h"

#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Hold_Browser.H>
#include <FL/Fl_Input.H>
#include <string>
#include <vector>

class Fl_Box;
class Fl_Button;

/// The open book: its documents on the left, the chosen one on the right, the search above.
class Book_Window : public Fl_Double_Window
{
public:
    Book_Window(std::vector<Book::Item> items, std::vector<Book::Entry> index);
    int handle(int event) override;
    void Start();

private:
    using Action = void (*)(Book_Window &);
    void Make_Bar();
    Fl_Button *Add_Button(int right, const char *sign, const char *tip, Action action);
    void Add_Body();
    void Open(int line);
    void Open_Beside(int by);
    void Find(int by);
    bool Find_In(int line, int by, bool fromMark);
    void Found(int line, std::size_t begin, std::size_t end);
    void Zoom_By(int steps);
    void Tell();
    bool Handle_Key();
    static int Dispatch(int event, Fl_Window *window);
    [[nodiscard]] Book::Page Page_Of(int line) const;
    [[nodiscard]] int Count() const { return static_cast<int>(m_index.size()); }
    [[nodiscard]] const std::string &Title(int line) const { return m_index[static_cast<std::size_t>(line) - 1].title; }

    std::vector<Book::Item> m_items;
    std::vector<Book::Entry> m_index;
    int m_unit; ///< height of a line of the window's own text
    int m_step; ///< of the zoom
    Fl_Input *m_search = nullptr;
    Fl_Box *m_state = nullptr;
    Fl_Button *m_percent = nullptr;
    Fl_Hold_Browser *m_list = nullptr;
    Page_View *m_page = nullptr;
    std::string m_stateText;
    std::string m_percentText;
};

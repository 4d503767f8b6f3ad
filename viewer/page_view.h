// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "layout.h"
#include "picture.h"
#include "platform/book/book_page.h"

#include <FL/Fl_Group.H>
#include <FL/Fl_Scrollbar.H>
#include <functional>
#include <string>
#include <unordered_map>

/// Shows one page: scrolls, marks text and copies it, and is as large as the reader wants.
class Page_View : public Fl_Group
{
public:
    Page_View(int x, int y, int width, int height);

    /// @param missing  said in the place of a picture that cannot be shown
    void Show(Book::Page page, const char *missing);
    [[nodiscard]] const Book::Page &Page() const { return m_page; }
    void Set_Zoom(double zoom);
    [[nodiscard]] double Zoom() const { return m_zoom; }
    /// Marks a part of the text and brings it into view.
    void Mark(std::size_t begin, std::size_t end);
    /// Where what is marked ends; where it begins.
    [[nodiscard]] std::size_t Mark_End() const { return std::max(m_anchor, m_caret); }
    [[nodiscard]] std::size_t Mark_Begin() const { return std::min(m_anchor, m_caret); }
    /// Called when a key goes on beyond the page's end (1) or beginning (-1).
    void On_Leave(std::function<void(int)> leave) { m_leave = std::move(leave); }
    void To_End();

    void draw() override;
    int handle(int event) override;
    void resize(int x, int y, int width, int height) override;

private:
    void Place();
    void Place_Bars();
    void Draw_Page();
    void Draw_Row(const Layout::Band &band) const;
    void Draw_Line(const Layout::Line &line);
    void Draw_Mark(const Layout::Line &line) const;
    void Draw_Text(const Layout::Piece &piece, const Layout::Line &line) const;
    void Draw_Picture(const Layout::Piece &piece, const Layout::Line &line);
    void Draw_Missing(const Layout::Piece &piece, int top) const;
    const Pictures::Decoded &Decoded(int picture, int width);
    void Scroll_To(int top);
    bool Handle_Key();
    bool Move(int by);
    void Copy() const;
    [[nodiscard]] std::size_t Place_At_Mouse() const;
    [[nodiscard]] int Margin() const;
    [[nodiscard]] int Text_Width() const;
    [[nodiscard]] int Left() const; ///< of the text, in the window
    [[nodiscard]] int Top() const;
    [[nodiscard]] int Room() const { return h() - (m_across->visible() != 0 ? m_across->h() : 0); }
    [[nodiscard]] int Last_Top() const;

    Book::Page m_page;
    std::string m_missing;
    std::vector<Layout::Size> m_sizes; ///< of the pictures
    Layout::Placed m_placed;
    struct Held {
        Pictures::Decoded picture;
        int width = 0; ///< that it was decoded for
    };
    std::unordered_map<int, Held> m_decoded;
    double m_zoom = 1;
    std::size_t m_anchor = 0;
    std::size_t m_caret = 0;
    Fl_Scrollbar *m_down;
    Fl_Scrollbar *m_across;
    std::function<void(int)> m_leave;
};

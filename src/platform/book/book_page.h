// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A document of a book as it is shown: plain data that knows no window. Lengths are twips, a twentieth of a point.
namespace Book
{
inline constexpr std::uint32_t No_Color = 0xFFFFFFFF;
/// Stands in the text where a picture is.
inline constexpr std::string_view Picture_Sign = "\uFFFC";

struct Look {
    bool bold = false;
    bool italic = false;
    bool underlined = false;
    bool struck = false;
    std::int8_t raised = 0;         ///< 1 above the line, -1 below it
    std::uint16_t half_points = 24; ///< size
    std::uint32_t color = No_Color; ///< 0xRRGGBB
    std::uint32_t back = No_Color;
    bool operator==(const Look &) const = default;
};

/// Text of one look, or one picture.
struct Run {
    std::size_t begin = 0;
    std::size_t end = 0;
    std::uint32_t look = 0;
    int picture = -1;
};

enum class Align : std::uint8_t { Left, Center, Right };

/// What stands between two line ends of the text. Those of one row follow each other, cell by cell.
struct Paragraph {
    std::size_t first_run = 0;
    std::size_t last_run = 0; ///< one behind
    Align align = Align::Left;
    int left = 0;
    int first = 0; ///< what the first line is further in
    int right = 0;
    int before = 0;
    int after = 0;
    int row = -1; ///< of a table
    int cell = 0;
};

struct Cell {
    int edge = 0; ///< at its right
    std::uint32_t back = No_Color;
    bool joins_left = false; ///< belongs to the cell before
    bool joins_above = false;
};
struct Row {
    int left = 0;
    bool has_lines = false;
    std::vector<Cell> cells;
};

struct Page_Picture {
    std::string bytes; ///< a PNG or JPEG; "" for one of another kind
    int width = 0;     ///< of the whole; 0 where nothing is said
    int height = 0;
    int cut_left = 0;
    int cut_top = 0;
    int cut_right = 0;
    int cut_bottom = 0;
};

struct Page {
    std::string text; ///< UTF-8; paragraphs end in "\n", cells in "\t"
    std::vector<Look> looks;
    std::vector<Run> runs;
    std::vector<Paragraph> paragraphs;
    std::vector<Row> rows;
    std::vector<Page_Picture> pictures;
    bool is_cut = false; ///< there was more than a page may hold
};

/// Reads RTF as the program writes it, and as much of any other as can be had. Depth, text, tables and the time it
/// takes are bounded, whatever the bytes are.
Page Read_Rich(std::string_view rtf);
/// A text as it stands.
Page Plain_Page(std::string_view text);
/// One picture and nothing else.
Page Picture_Page(std::string_view bytes);
inline bool Is_One_Picture(const Page &page)
{
    return page.runs.size() == 1 && page.runs.front().picture >= 0 && page.pictures.front().width == 0;
}

/// Adds a paragraph at the end of a page, however long that is.
void Add_Last(Page &page, std::string_view text);

/// Puts a page together piece by piece.
class Page_Maker
{
public:
    void Add(std::string_view text, const Look &look);
    void Add_Picture(Page_Picture picture, const Look &look);
    /// Ends the paragraph at hand. @param format  what it is like but for its runs
    void End_Paragraph(Paragraph format, std::string_view sign = "\n");
    /// A row that the next paragraphs may stand in. @returns its number
    int Add_Row();
    [[nodiscard]] Row &Row_At(int row) { return m_page.rows[static_cast<std::size_t>(row)]; }
    [[nodiscard]] bool Has_Open_Paragraph() const { return m_page.runs.size() > m_firstRun; }
    [[nodiscard]] bool Is_Full() const { return m_page.is_cut; }
    Page Take() { return std::move(m_page); }

private:
    [[nodiscard]] std::uint32_t Look_Number(const Look &look);
    void Begin_Run(const Look &look, int picture);

    Page m_page;
    std::size_t m_firstRun = 0;
};
} // namespace Book

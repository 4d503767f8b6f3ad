// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/book/book_page.h"

#include <algorithm>

namespace Book
{
namespace
{
constexpr std::size_t Longest = 16U << 20;
constexpr std::size_t Most_Paragraphs = 500'000;
constexpr std::size_t Most_Looks = 4096;
constexpr std::size_t Looked_Back = 32;
} // namespace

/// Looks come back soon or not at all, so only the last ones are compared.
std::uint32_t Page_Maker::Look_Number(const Look &look)
{
    std::vector<Look> &looks = m_page.looks;
    const auto begin = looks.rbegin();
    const auto end = begin + static_cast<std::ptrdiff_t>(std::min(looks.size(), Looked_Back));
    const auto found = std::find(begin, end, look);
    if (found != end)
        return static_cast<std::uint32_t>(looks.size() - 1 - static_cast<std::size_t>(found - begin));
    if (looks.size() >= Most_Looks)
        return 0;
    looks.push_back(look);
    return static_cast<std::uint32_t>(looks.size() - 1);
}

void Page_Maker::Begin_Run(const Look &look, int picture)
{
    const std::uint32_t number = Look_Number(look);
    std::vector<Run> &runs = m_page.runs;
    const bool goesOn = Has_Open_Paragraph() && picture < 0 && runs.back().picture < 0 && runs.back().look == number;
    if (!goesOn)
        runs.push_back({m_page.text.size(), m_page.text.size(), number, picture});
}

void Page_Maker::Add(std::string_view text, const Look &look)
{
    if (m_page.is_cut || text.empty())
        return;
    Begin_Run(look, -1);
    m_page.text += text;
    m_page.runs.back().end = m_page.text.size();
    m_page.is_cut = m_page.text.size() > Longest;
}

void Page_Maker::Add_Picture(Page_Picture picture, const Look &look)
{
    if (m_page.is_cut)
        return;
    Begin_Run(look, static_cast<int>(m_page.pictures.size()));
    m_page.text += Picture_Sign;
    m_page.runs.back().end = m_page.text.size();
    m_page.pictures.push_back(std::move(picture));
}

void Page_Maker::End_Paragraph(Paragraph format, std::string_view sign)
{
    if (m_page.is_cut && !Has_Open_Paragraph())
        return;
    if (!Has_Open_Paragraph())
        Begin_Run({}, -1);
    format.first_run = m_firstRun;
    format.last_run = m_firstRun = m_page.runs.size();
    m_page.paragraphs.push_back(format);
    m_page.text += sign;
    m_page.is_cut = m_page.is_cut || m_page.paragraphs.size() >= Most_Paragraphs;
}

int Page_Maker::Add_Row()
{
    m_page.rows.emplace_back();
    return static_cast<int>(m_page.rows.size()) - 1;
}

Page Plain_Page(std::string_view text)
{
    Page_Maker page;
    for (std::size_t begin = 0; begin <= text.size() && !page.Is_Full();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        std::string line(text.substr(begin, end - begin));
        std::erase_if(line, [](char c) { return c == '\r' || c == '\0'; });
        page.Add(line, {});
        page.End_Paragraph({});
        begin = end + 1;
    }
    return page.Take();
}

void Add_Last(Page &page, std::string_view text)
{
    if (page.looks.empty())
        page.looks.emplace_back();
    const std::size_t begin = page.text.size(), run = page.runs.size();
    page.text += text;
    page.runs.push_back({begin, page.text.size(), 0, -1});
    page.paragraphs.push_back({.first_run = run, .last_run = run + 1});
    page.text += '\n';
}

Page Picture_Page(std::string_view bytes)
{
    Page_Maker page;
    page.Add_Picture({.bytes = std::string(bytes)}, {});
    page.End_Paragraph({});
    return page.Take();
}
} // namespace Book

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_writer.h"

#include "platform/richtext/rtf_borders.h"

#include <QTextBlock>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <cmath>

namespace Rtf
{
namespace
{
constexpr int textWidth = 9026; // twips between the margins of an A4 page
constexpr int narrowest = 300;
constexpr int farthestEdge = 1'000'000;

int Left_Of(const QTextTable &table)
{
    return std::max(0, Twips(table.format().leftMargin()));
}

/// The right edges of the columns. Columns without a width share what the others leave.
std::vector<int> Column_Edges(const QTextTable &table)
{
    const QList<QTextLength> given = table.format().columnWidthConstraints();
    std::vector<int> widths(static_cast<std::size_t>(table.columns()), 0);
    int rest = textWidth, free = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QTextLength length = given.value(static_cast<qsizetype>(i));
        if (length.type() == QTextLength::FixedLength)
            widths[i] = std::max(1, Twips(length.rawValue()));
        else if (length.type() == QTextLength::PercentageLength)
            widths[i] = std::max(narrowest, static_cast<int>(length.rawValue() * textWidth / 100));
        free += widths[i] == 0 ? 1 : 0;
        rest = std::max(0, rest - widths[i]);
    }
    const int share = free ? std::max(narrowest, rest / free) : 0;
    int edge = Left_Of(table);
    for (int &width : widths) {
        edge = std::min(edge + (width ? width : share), farthestEdge);
        width = edge;
    }
    return widths;
}

void Append_Width(QByteArray &out, const char *kindWord, const char *widthWord, const QTextLength &length)
{
    const bool fixed = length.type() == QTextLength::FixedLength;
    const bool percent = length.type() == QTextLength::PercentageLength;
    Append_Word(out, kindWord, fixed ? 3 : percent ? 2 : 1);
    if (fixed || percent)
        Append_Word(out, widthWord, fixed ? Twips(length.rawValue()) : static_cast<int>(length.rawValue() * 50));
}
} // namespace

void Writer::Write_Table(const QTextTable &table, int nesting)
{
    if (nesting == 1 && table.format().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore)
        m_out += "\\page\r\n";
    for (int row = 0; row < table.rows(); ++row) {
        if (nesting == 1)
            Write_Row_Definition(table, row);
        for (int column = 0; column < table.columns(); ++column)
            Write_Cell(table, row, column, nesting);
        if (nesting == 1) {
            m_out += "\\row\r\n";
            continue;
        }
        Append_Word(m_out, "\\pard\\intbl\\itap", nesting);
        m_out += "{\\*\\nesttableprops";
        Write_Row_Definition(table, row);
        m_out += "\\nestrow}{\\nonesttables\\par}\r\n";
    }
}

void Writer::Write_Row_Definition(const QTextTable &table, int row)
{
    const QTextTableFormat format = table.format();
    const int padding = Twips(format.cellPadding());
    m_out += "\\trowd";
    Append_Word(m_out, "\\trgaph", padding);
    Append_Word(m_out, "\\trleft", Left_Of(table));
    for (const char *side : {"l", "t", "r", "b"}) {
        Append_Word(m_out, (QByteArray("\\trpadd") + side).constData(), padding);
        m_out += QByteArray("\\trpaddf") + side + '3';
        if (const int spacing = format.borderCollapse() ? 0 : Twips(format.cellSpacing()); spacing > 0) {
            Append_Word(m_out, (QByteArray("\\trspd") + side).constData(), spacing);
            m_out += QByteArray("\\trspdf") + side + '3';
        }
    }
    const Qt::Alignment align = format.alignment();
    m_out += align & Qt::AlignRight ? "\\trqr" : align & Qt::AlignHCenter ? "\\trqc" : "";
    if (row < format.headerRowCount())
        m_out += "\\trhdr";
    if (format.width().type() != QTextLength::VariableLength)
        Append_Width(m_out, "\\trftsWidth", "\\trwWidth", format.width());
    const std::vector<int> edges = Column_Edges(table);
    for (int column = 0; column < table.columns(); ++column)
        Write_Cell_Definition(table, row, column, edges[static_cast<std::size_t>(column)]);
    m_out += "\r\n";
}

/// @param word the one for the side, before those for its line
void Writer::Write_Border(const char *word, const Shown_Border &border)
{
    if (!border.Is_Line())
        return;
    static constexpr std::array<const char *, 11> lines{"",
                                                        "\\brdrdot",
                                                        "\\brdrdash",
                                                        "\\brdrs",
                                                        "\\brdrdb",
                                                        "\\brdrdashd",
                                                        "\\brdrdashdd",
                                                        "\\brdrengrave",
                                                        "\\brdremboss",
                                                        "\\brdrinset",
                                                        "\\brdroutset"};
    m_out += word;
    m_out += lines[std::min(static_cast<std::size_t>(border.style), lines.size() - 1)];
    const int width = Twips(border.width) / Lines_Of(static_cast<Line>(border.style));
    Append_Word(m_out, "\\brdrw", std::clamp(width, 1, 255));
    if (const int color = m_tables.Color_Number(border.brush))
        Append_Word(m_out, "\\brdrcf", color);
}

void Writer::Write_Cell_Definition(const QTextTable &table, int row, int column, int right)
{
    const QTextTableCell cell = table.cellAt(row, column);
    const QTextTableFormat format = table.format();
    if (cell.rowSpan() > 1)
        m_out += cell.row() == row ? "\\clvmgf" : "\\clvmrg";
    if (cell.columnSpan() > 1)
        m_out += cell.column() == column ? "\\clmgf" : "\\clmrg";
    if (cell.format().verticalAlignment() == QTextCharFormat::AlignMiddle)
        m_out += "\\clvertalc";
    else if (cell.format().verticalAlignment() == QTextCharFormat::AlignBottom)
        m_out += "\\clvertalb";
    static constexpr std::array<const char *, 4> sides{"\\clbrdrt", "\\clbrdrb", "\\clbrdrl", "\\clbrdrr"};
    const Shown_Border whole{.style = format.borderStyle(), .width = format.border(), .brush = format.borderBrush()};
    const QTextFormat own = cell.format();
    for (std::size_t side = 0; side < sides.size(); ++side)
        Write_Border(sides[side], Has_Border(own, side) ? Border_Of(own, side) : whole);
    if (const int back = m_tables.Color_Number(cell.format().background()))
        Append_Word(m_out, "\\clcbpat", back);
    static constexpr std::array<const char *, 4> paddings{"\\clpadfl3\\clpadl", "\\clpadfb3\\clpadb",
                                                          "\\clpadft3\\clpadt", "\\clpadfr3\\clpadr"};
    // By Side: word processors agree that the words for top and left have changed places.
    for (std::size_t side = 0; side < paddings.size(); ++side) {
        if (const double padding = Border_Of(own, side).space; padding >= 0)
            Append_Word(m_out, paddings[side], Twips(padding));
    }
    Append_Width(m_out, "\\clftsWidth", "\\clwWidth", format.columnWidthConstraints().value(column));
    Append_Word(m_out, "\\cellx", right);
}

void Writer::Write_Cell(const QTextTable &table, int row, int column, int nesting)
{
    const char *end = nesting == 1 ? "\\cell" : "\\nestcell";
    const QTextTableCell cell = table.cellAt(row, column);
    if (cell.row() != row || cell.column() != column) { // covered by a merged cell
        Append_Word(m_out, "\\pard\\intbl\\itap", nesting);
        m_out += end;
        m_out += "\r\n";
        return;
    }
    Write_Flow(cell.begin(), cell.end(), nesting, end);
}
} // namespace Rtf

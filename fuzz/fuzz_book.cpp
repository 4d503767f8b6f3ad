// SPDX-License-Identifier: GPL-3.0-or-later
// room: book
//
// A book of any bytes: its items, their texts, and rich text as a page. What is read names only what there is.
#include "platform/book/book_items.h"
#include "platform/book/book_page.h"
#include "platform/book/book_texts.h"

#include <cstdlib>

namespace
{
void Check(const Book::Page &page)
{
    std::size_t run = 0;
    for (const Book::Paragraph &paragraph : page.paragraphs) {
        if (paragraph.first_run != run || paragraph.last_run > page.runs.size() ||
            paragraph.row >= static_cast<int>(page.rows.size()))
            std::abort();
        for (; run < paragraph.last_run; ++run)
            if (page.runs[run].end > page.text.size() || page.runs[run].look >= page.looks.size() ||
                page.runs[run].picture >= static_cast<int>(page.pictures.size()))
                std::abort();
    }
}

/// The bytes as one item of a whole book, so that what lies behind the sums is reached too.
std::string Wrapped(std::string_view bytes)
{
    std::string file = "program";
    file += Book::Record(file.size(), {}, Book::Parameters_Id, bytes);
    return file + Book::Record(file.size(), file.size() - Book::Footer_Size, Book::Index_Id, bytes);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char *>(data), size);
    for (const std::string &file : {bytes, Wrapped(bytes)}) {
        const std::vector<Book::Item> items = Book::Items(file);
        for (const Book::Item &item : items) {
            (void)Book::Read_Parameters(item.bytes);
            for (const Book::Entry &entry : Book::Read_Index(item.bytes))
                (void)Book::Find(items, entry.id);
        }
        if (Book::Program(file).size() > file.size() || Book::Place_For(file, Book::Parameters_Id).size > file.size())
            std::abort();
    }
    Check(Book::Read_Rich(bytes));
    Check(Book::Plain_Page(Book::Unscrambled(bytes)));
    return 0;
}

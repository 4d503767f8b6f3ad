// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/document_page.h"
#include "ui/document/page_attachments.h"
#include "ui/document/page_review.h"
#include "ui/document/page_tags.h"

namespace
{
template <class Page>
std::unique_ptr<Document_Page> Make(Shell &shell, QWidget &form)
{
    return std::make_unique<Page>(shell, form);
}

constexpr Document_Page_Row Pages[] = {
    {1, Make<Page_Attachments>},
    {3, Make<Page_Tags>},
    {4, Make<Page_Review>},
};
} // namespace

std::span<const Document_Page_Row> Document_Pages()
{
    return Pages;
}

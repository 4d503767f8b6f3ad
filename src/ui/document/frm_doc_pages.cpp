// SPDX-License-Identifier: GPL-3.0-or-later
//
// The form and the pages that store by themselves.

#include "ui/document/document_page.h"
#include "ui/document/frm_doc_standard.h"
#include "ui_frm_doc_standard.h"

void Frm_Doc_Standard::Set_Up_Pages()
{
    QTabWidget &tabs = *m_ui->TabS_Header;
    for (const Document_Page_Row &row : Document_Pages()) {
        Document_Page *page = row.make(m_shell, *this).release(); // the tabs own it
        tabs.insertTab(row.place, page, page->Caption());
        connect(page, &Document_Page::Caption_Changed, this,
                [&tabs, page] { tabs.setTabText(tabs.indexOf(page), page->Caption()); });
        connect(page, &Document_Page::Selection_Wanted, this, &Frm_Doc_Standard::Take_Selection);
        connect(page, &Document_Page::Scored, this, [this] { emit Scored(Code_Id()); });
        m_pages.push_back(page);
    }
    tabs.setCurrentIndex(0);
}

void Frm_Doc_Standard::Show_Pages()
{
    for (Document_Page *page : m_pages)
        page->Show_Document(Code_Id(), m_session->Form().title);
}

void Frm_Doc_Standard::Tell_Pages_Saved()
{
    for (Document_Page *page : m_pages)
        page->Document_Saved(Code_Id(), m_session->Form().title);
}

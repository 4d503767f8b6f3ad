// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_fields.h"

namespace
{
using D = Document_Form;
using K = Field_Kind;

// clang-format off
constexpr Document_Field Fields[] = {
    {&D::code_id, K::Hidden, "", "", "code_id"},
    {&D::title, K::Title, "Txt_Title", "Code_Title", "title"},
    {&D::folder, K::Folder, "Comb_Cate", "Cate_ID", "folder"},
    {&D::star, K::Stars, "Comb_Star", "Code_Color", "star"},
    {&D::done, K::Stars, "Comb_Done", "Code_Done", "done"},
    {&D::keys, K::Text, "Txt_Keys", "Code_Keys", "keys"},
    {&D::explain, K::Text, "Txt_Explain", "Code_Explain", "explain"},
    {&D::create_date, K::Created, "Txt_Create", "Code_Date", "create_date"},
    {&D::update_date, K::Updated, "Txt_Update", "Code_Update", "update_date"},
    {&D::file, K::File, "Txt_File", "Code_File", "file"},
    {&D::promulgator, K::Text, "Txt_Promulgator", "Code_Promulgator", "promulgator"},
    {&D::provenance, K::Text, "Txt_Provenance", "Code_Provenance", "provenance"},
    {&D::author, K::Text, "Txt_Author", "Code_Author", "author"},
    {&D::password, K::Password, "Txt_Password", "", "password"},
    {&D::password_again, K::Again, "Txt_Password2", "", ""},
    {&D::stored_type, K::Hidden, "", "", "stored_type"},
    {&D::type, K::Hidden, "", "", "type"},
    {&D::stored_state, K::Hidden, "", "", "stored_state"},
};
// clang-format on
} // namespace

std::span<const Document_Field> Document_Fields()
{
    return Fields;
}

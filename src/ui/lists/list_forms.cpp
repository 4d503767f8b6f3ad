// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/lists/list_forms.h"

#include "ui/lists/frm_list_view_color.h"
#include "ui/lists/frm_list_view_para.h"
#include "ui/lists/frm_list_view_tags.h"
#include "ui/lists/frm_list_view_vir_cate.h"
#include "ui/lists/frm_tag_add.h"

namespace
{
using Forms::Opening;

std::unique_ptr<QDialog> Make_Colors(const Opening &opening)
{
    auto form = std::make_unique<Frm_ListView_Color>(opening.parent, opening.documents);
    if (opening.changed)
        QObject::connect(form.get(), &Frm_ListView_Color::Colors_Changed, form.get(), opening.changed);
    return form;
}

std::unique_ptr<QDialog> Make_Memberships(const Opening &opening)
{
    return std::make_unique<Frm_ListView_VirCate>(opening.documents.value(0), opening.parent);
}

std::unique_ptr<QDialog> Make_Tags(const Opening &opening)
{
    auto form = std::make_unique<Frm_ListView_Tags>(opening.documents, opening.parent);
    if (opening.changed)
        QObject::connect(form.get(), &Frm_ListView_Tags::Tags_Changed, form.get(), opening.changed);
    return form;
}

constexpr Forms::Row Rows[] = {
    {"Frm_ListView_Para", Forms::Make_Changing<Frm_ListView_Para, &Frm_ListView_Para::Columns_Changed>},
    {"Frm_ListView_Color", Make_Colors},
    {"Frm_ListView_VirCate", Make_Memberships},
    {"Frm_ListView_Tags", Make_Tags},
    {"Frm_TagAdd", Forms::Make_Changing<Frm_TagAdd, &Frm_TagAdd::Tags_Added>},
};
} // namespace

std::span<const Forms::Row> List_Forms()
{
    return Rows;
}

// SPDX-License-Identifier: GPL-3.0-or-later
//
// How much the fields of a document take.

#include "core/error_log.h"
#include "documents/document_store.h"
#include "ui/document/frm_doc_standard.h"
#include "ui_frm_doc_standard.h"

namespace
{
struct Field_Row {
    const char *field;
    const char *column;
    QString Document_Form::*text;
};

/// The title has a limit and a message of its own.
constexpr Field_Row Limited[] = {
    {"Txt_Keys", "Code_Keys", &Document_Form::keys},
    {"Txt_Explain", "Code_Explain", &Document_Form::explain},
    {"Txt_Author", "Code_Author", &Document_Form::author},
    {"Txt_File", "Code_File", &Document_Form::file},
    {"Txt_Promulgator", "Code_Promulgator", &Document_Form::promulgator},
    {"Txt_Provenance", "Code_Provenance", &Document_Form::provenance},
};
} // namespace

/// A field takes what its column holds. What is longer in a database that others made is shown and kept whole.
void Frm_Doc_Standard::Limit_Fields()
{
    Trap(QStringLiteral("Frm_Doc_Standard\\Limit_Fields"), [this] {
        const QMap<QString, int> rooms = Field_Rooms();
        for (const Field_Row &row : Limited) {
            const qsizetype held = (m_form.*row.text).size();
            const int room = rooms.value(QLatin1String(row.column));
            findChild<QLineEdit *>(QLatin1String(row.field))->setMaxLength(std::max(room, static_cast<int>(held)));
        }
    });
}

void Frm_Doc_Standard::Show_Too_Long()
{
    const QMap<QString, int> rooms = Field_Rooms();
    for (const Field_Row &row : Limited) {
        auto *field = findChild<QLineEdit *>(QLatin1String(row.field));
        if (field->text().size() > rooms.value(QLatin1String(row.column)))
            return Focus(m_ui->Pag_Addon, field);
    }
}

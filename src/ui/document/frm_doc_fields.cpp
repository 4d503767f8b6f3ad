// SPDX-License-Identifier: GPL-3.0-or-later
//
// The fields of a document and the controls that show them.

#include "core/error_log.h"
#include "documents/document_fields.h"
#include "documents/document_store.h"
#include "ui/document/frm_doc_standard.h"
#include "ui_frm_doc_standard.h"

#include <QScopedValueRollback>

QString Frm_Doc_Standard::Shown_Field::Text() const
{
    if (stars != nullptr)
        return stars->Text();
    return folder != nullptr ? folder->Chosen() : line->text();
}

void Frm_Doc_Standard::Shown_Field::Show(const QString &text) const
{
    if (stars != nullptr)
        stars->Set_Text(text);
    else if (folder != nullptr)
        folder->Choose(text);
    else
        line->setText(text);
}

void Frm_Doc_Standard::Set_Up_Fields()
{
    m_ui->Comb_Cate->Fill();
    for (const Document_Field &field : Document_Fields()) {
        if (*field.control == '\0')
            continue;
        auto *control = findChild<QWidget *>(QLatin1String(field.control));
        const Shown_Field shown{&field, qobject_cast<QLineEdit *>(control), qobject_cast<Star_Field *>(control),
                                qobject_cast<Folder_Box *>(control)};
        if (shown.line != nullptr)
            connect(shown.line, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Show_Modify);
        else if (shown.stars != nullptr)
            connect(shown.stars, &Star_Field::Edited, this, &Frm_Doc_Standard::Show_Modify);
        else
            connect(shown.folder, &QComboBox::activated, this, &Frm_Doc_Standard::Show_Modify);
        m_fields.push_back(shown);
    }
    for (QTextEdit *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum}) {
        connect(pane->document(), &QTextDocument::contentsChanged, this, &Frm_Doc_Standard::Show_Modify);
        connect(pane->document(), &QTextDocument::modificationChanged, this, &Frm_Doc_Standard::Show_Modify);
    }
    connect(m_ui->Txt_Title, &QLineEdit::textEdited, this, &Frm_Doc_Standard::Mark_Changed);
}

void Frm_Doc_Standard::Show_Form()
{
    m_showing = true;
    Limit_Fields();
    for (const Shown_Field &shown : m_fields)
        shown.Show(m_session->Form().*shown.field->text);
    m_ui->Txt_Title->setCursorPosition(0);
    m_ui->Txt_Keys->setCursorPosition(0);
    for (Text_Editor *pane : {m_ui->Txt_Content, m_ui->Txt_Memo, m_ui->Txt_Sum})
        pane->Wear_Distance();
    m_ui->Txt_Content->moveCursor(QTextCursor::Start);
    m_showing = false;
    Clear_Changed();
    Show_Card();
    Show_Pages();
}

void Frm_Doc_Standard::Read_Form()
{
    for (const Shown_Field &shown : m_fields)
        m_session->Form().*shown.field->text = shown.Text();
}

void Frm_Doc_Standard::Clear_Changed()
{
    m_changed = false;
    m_draftTimer.stop();
    const QScopedValueRollback showing(m_showing, true);
    Read_Form();
    m_session->Set_Clean();
    Show_Mark();
    Set_Editor();
}

/// A field takes what its column holds. What is longer in a database that others made is shown and kept whole.
void Frm_Doc_Standard::Limit_Fields()
{
    Trap(QStringLiteral("Frm_Doc_Standard\\Limit_Fields"), [this] {
        const QMap<QString, int> rooms = Field_Rooms();
        for (const Shown_Field &shown : m_fields) {
            if (!Is_Bounded(shown.field->kind))
                continue;
            const qsizetype held = (m_session->Form().*shown.field->text).size();
            const int room = rooms.value(QLatin1String(shown.field->column));
            shown.line->setMaxLength(std::max(room, static_cast<int>(held)));
        }
    });
}

void Frm_Doc_Standard::Show_Too_Long()
{
    QMap<QString, int> rooms;
    if (!Resume_Next([&] { rooms = Field_Rooms(); })) // what kept it from being saved was told
        return Clear_Pending();
    for (const Shown_Field &shown : m_fields) {
        if (Is_Bounded(shown.field->kind) &&
            shown.line->text().size() > rooms.value(QLatin1String(shown.field->column)))
            return Focus(m_ui->Pag_Addon, shown.line);
    }
}

/// A field is shown before it gets the keyboard: on the page of the facts that holds it, if one does.
void Frm_Doc_Standard::Focus(QWidget *page, QWidget *field)
{
    if (page->isAncestorOf(field)) {
        if (!m_ui->Chk_Addon_Title->isChecked())
            m_ui->Chk_Addon_Title->click();
        m_ui->Pic_Beside->show();
        m_ui->TabS_Header->show();
        m_ui->TabS_Header->setCurrentWidget(page);
    }
    field->setFocus();
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/kept_note.h"

#include "arrivals/arrivals.h"
#include "core/error_log.h"
#include "editor/text_editor.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"

#include <QLineEdit>

Kept_Note::Kept_Note(QLineEdit &title, Text_Editor &text) : m_title(title), m_text(text)
{
    constexpr int Draft_After = 1500; // milliseconds
    m_later.setSingleShot(true);
    m_later.setInterval(Draft_After);
    connect(&m_later, &QTimer::timeout, this, &Kept_Note::Keep);
    const auto later = [this] {
        if (!m_later.isActive()) // who types without a pause is kept too
            m_later.start();
    };
    connect(&title, &QLineEdit::textEdited, this, later);
    connect(text.document(), &QTextDocument::contentsChanged, this, later);
}

Kept_Note::~Kept_Note()
{
    if (m_later.isActive())
        Keep();
}

bool Kept_Note::Is_Empty() const
{
    return m_title.text().trimmed().isEmpty() && m_text.document()->isEmpty();
}

void Kept_Note::Keep()
{
    m_later.stop();
    if (Is_Empty())
        return Remove();
    const bool kept = Trap(QStringLiteral("Kept_Note\\Keep"), [this] {
        Document_Form form;
        form.title = m_title.text();
        form.folder = Arrivals::Folder();
        form.create_date = form.update_date = Database_Engine::Short_Date(Machine::Now().date().startOfDay());
        form.type = QStringLiteral("RTF");
        form.content = m_text.document();
        form.memo = form.sum = &m_none;
        m_draft.Write(form, false, {});
        return true;
    });
    if (!kept)
        emit Not_Kept();
}

void Kept_Note::Remove()
{
    m_later.stop();
    m_draft.Remove();
}

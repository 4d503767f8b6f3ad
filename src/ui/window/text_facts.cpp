// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/text_facts.h"

#include "core/language_pack.h"
#include "editor/editor_commands.h"
#include "editor/text_editor.h"
#include "editor/word_count.h"
#include "platform/machine/machine.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/numbers.h"

#include <QTextBlock>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

Text_Facts::Text_Facts(Document_Tabs &tabs) : QObject(&tabs), m_tabs(tabs)
{
    m_soon.setSingleShot(true);
    m_soon.setInterval(500ms);
    connect(&m_soon, &QTimer::timeout, this, &Text_Facts::Count);
    connect(&tabs, &QTabWidget::currentChanged, this, &Text_Facts::Follow);
}

void Text_Facts::Follow()
{
    for (const QMetaObject::Connection &one : m_following)
        disconnect(one);
    m_following.clear();
    m_document = m_tabs.Current_Document();
    m_text = nullptr;
    if (m_document == nullptr) {
        m_soon.stop();
        emit Changed({});
        return;
    }
    m_changed = m_document->Is_Changed();
    m_text = m_document->Commands().Editors().first();
    m_following = {connect(m_document, &Frm_Doc_Standard::Mark_Changed, this, &Text_Facts::Tell),
                   connect(m_text, &QTextEdit::cursorPositionChanged, this, &Text_Facts::Tell),
                   connect(m_text, &QTextEdit::textChanged, this, [this] { m_soon.start(); })};
    Count();
}

void Text_Facts::Count()
{
    constexpr int Most_Characters = 4'000'000; // a longer text would be felt
    if (m_text == nullptr)
        return;
    const bool counted = m_text->document()->characterCount() < Most_Characters;
    m_words = counted ? Count_Words(m_text->document()->toRawText()).words : -1;
    Tell();
}

QString Text_Facts::Saved_Text(const Frm_Doc_Standard &document) const
{
    if (document.Is_Changed() || document.Code_Id().isEmpty())
        return Pack_Text("Frm_Main", "_Fact_Unsaved");
    const QTime time = m_saved.value(&document);
    return time.isValid() ? Filled(Pack_Text("Frm_Main", "_Fact_Saved_At"), {time.toString(QStringLiteral("HH:mm"))})
                          : Pack_Text("Frm_Main", "_Fact_Saved");
}

void Text_Facts::Note_Saved(const Frm_Doc_Standard &document)
{
    if (!m_saved.contains(&document))
        connect(&document, &QObject::destroyed, this, [this](const QObject *gone) { m_saved.remove(gone); });
    m_saved.insert(&document, Machine::Now().time());
}

void Text_Facts::Tell()
{
    if (m_document == nullptr || m_text == nullptr)
        return;
    if (std::exchange(m_changed, m_document->Is_Changed()) && !m_changed)
        Note_Saved(*m_document);
    const int line = m_text->textCursor().block().blockNumber() + 1;
    emit Changed({Saved_Text(*m_document),
                  m_words < 0 ? QString() : Filled(Pack_Text("Frm_Main", "_Fact_Words"), {Grouped(m_words)}),
                  Filled(Pack_Text("Frm_Main", "_Fact_Line"), {Grouped(line)}),
                  Pack_Text("Frm_Main", m_document->Is_Editing() ? "_Fact_Editing" : "_Fact_Reading")});
}

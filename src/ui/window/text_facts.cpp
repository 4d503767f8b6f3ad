// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/text_facts.h"

#include "core/language_pack.h"
#include "platform/database/database.h"
#include "platform/machine/machine.h"
#include "ui/document/document_tabs.h"
#include "ui/kit/numbers.h"

namespace
{
QString Saved_Text(const Document_Facts &facts)
{
    if (facts.unsaved || !facts.saved.isValid())
        return Pack_Text("Frm_Main", "_Fact_Unsaved");
    const bool today = facts.saved.date() == Machine::Now().date();
    return Filled(Pack_Text("Frm_Main", "_Fact_Saved_At"),
                  {today ? facts.saved.toString(QStringLiteral("HH:mm"))
                         : Database_Engine::Short_Date(facts.saved.date().startOfDay())});
}
} // namespace

Text_Facts::Text_Facts(Document_Tabs &tabs) : QObject(&tabs)
{
    connect(&tabs, &Document_Tabs::Facts_Changed, this, &Text_Facts::Tell);
}

void Text_Facts::Tell(const Document_Facts &facts)
{
    if (!facts.shown)
        return emit Changed({});
    const bool editing = facts.mode == Document_Facts::Mode::Editing;
    emit Changed({Saved_Text(facts),
                  facts.words < 0 ? QString() : Filled(Pack_Text("Frm_Main", "_Fact_Words"), {Grouped(facts.words)}),
                  Filled(Pack_Text("Frm_Main", "_Fact_Line"), {Grouped(facts.line)}),
                  Pack_Text("Frm_Main", editing ? "_Fact_Editing" : "_Fact_Reading")});
}

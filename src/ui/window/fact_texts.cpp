// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/fact_texts.h"

#include "core/language_pack.h"
#include "platform/machine/machine.h"
#include "ui/document/document_facts.h"
#include "ui/kit/numbers.h"

namespace
{
QString Filled_Text(const char *key, const QStringList &values)
{
    return Filled(Pack_Text("Frm_Main", key), values);
}

QString Saved_Text(const Document_Facts &facts)
{
    if (facts.unsaved || !facts.saved.isValid())
        return Pack_Text("Frm_Main", "_Fact_Unsaved");
    const bool today = facts.saved.date() == Machine::Now().date();
    return Filled_Text("_Fact_Saved_At",
                       {facts.saved.toString(today ? QStringLiteral("HH:mm") : QStringLiteral("yyyy-MM-dd"))});
}

QString Mode_Text(Document_Facts::Mode mode)
{
    switch (mode) {
    case Document_Facts::Mode::Editing:
        return Pack_Text("Frm_Main", "_Fact_Editing");
    case Document_Facts::Mode::Foreign:
        return Pack_Text("Frm_Main", "_Fact_Foreign");
    case Document_Facts::Mode::Reading:
        break;
    }
    return Pack_Text("Frm_Main", "_Fact_Reading");
}
} // namespace

QStringList Fact_Texts(const Document_Facts &facts)
{
    constexpr int Plain_Zoom = 100;
    if (!facts.shown)
        return {};
    return {Saved_Text(facts),
            Filled_Text(facts.of_selection ? "_Fact_Selected" : "_Fact_Words", {Grouped(facts.words)}),
            Filled_Text("_Fact_Line", {Grouped(facts.line), Grouped(facts.lines)}),
            facts.zoom == Plain_Zoom ? QString() : QStringLiteral("%1 %").arg(facts.zoom), Mode_Text(facts.mode)};
}

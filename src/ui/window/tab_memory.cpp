// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/tab_memory.h"

#include "core/config_store.h"
#include "tree/document_places.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/shell.h"

#include <QAction>

namespace
{
const QString Section = QStringLiteral("Page");
const QString Wanted_Key = QStringLiteral("Tabs_Back");
const QString Tabs_Key = QStringLiteral("Open_Tabs");
constexpr qsizetype Most_Tabs = 12; // opening them takes a while

bool Is_Wanted()
{
    return GetIni(Section, Wanted_Key) == QLatin1String("1");
}
} // namespace

namespace Tab_Memory
{
void Bind(QAction &entry)
{
    entry.setCheckable(true);
    entry.setChecked(Is_Wanted());
    QObject::connect(&entry, &QAction::toggled, &entry,
                     [](bool on) { WriteIni(Section, Wanted_Key, on ? QStringLiteral("1") : QStringLiteral("0")); });
}

void Save(const Document_Tabs &tabs)
{
    if (!Is_Wanted())
        return;
    QStringList ids;
    for (int i = 1; i < tabs.count(); ++i) {
        const auto *document = qobject_cast<const Frm_Doc_Standard *>(tabs.widget(i));
        if (document != nullptr && !document->Code_Id().isEmpty())
            ids << document->Code_Id();
    }
    WriteIni(Section, Tabs_Key, ids.mid(0, Most_Tabs).join(QLatin1Char(',')));
}

void Bring_Back(Document_Tabs &tabs, Shell &shell)
{
    if (!Is_Wanted() || tabs.count() > 1)
        return;
    const QStringList kept = GetIni(Section, Tabs_Key).split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const Document_Place &place : Places_Of(kept.mid(0, Most_Tabs)))
        shell.Open_Document(place.document);
    tabs.Show_List();
}
} // namespace Tab_Memory

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/window_title.h"

#include "core/language_pack.h"
#include "core/process_state.h"

QString Window_Title(const QString &document, const QString &folder)
{
    QStringList parts;
    for (const QString &name : {document, folder}) {
        if (const QString plain = name.simplified(); !plain.isEmpty())
            parts << plain;
    }
    parts << App().App_Title + QStringLiteral("  ") + Pack_Text("Frm_Main", "_Edition");
    // The toolkit takes this sign for its own mark of unsaved changes.
    return parts.join(QStringLiteral(" – ")).replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

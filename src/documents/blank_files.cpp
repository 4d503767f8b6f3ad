// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/blank_files.h"

#include "core/error_log.h"
#include "core/runtime_files.h"
#include "documents/document_store.h"
#include "documents/staging.h"
#include "platform/files/paths.h"

QString Store_Blank_File(const QString &type, const QString &folder_id, const QString &title)
{
    const QString name = QStringLiteral("blank.") + type.toLower();
    return Trap(
        QStringLiteral("Store_Blank_File"),
        [&] {
            const Staging staging(10000, {name});
            Files::Write_Bytes(staging.Path(name), Runtime_File_Bytes(QStringLiteral("BLANK_") + type),
                               Files::Durability::Staging);
            QString id = AddCodeContent_File_Ex(staging.Path(name), folder_id, QStringLiteral("0"), title, type, false);
            staging.Drop(name);
            return id;
        },
        Report_Failed_Save);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/file_import.h"

#include "core/config_store.h"
#include "core/language_pack.h"
#include "documents/document_store.h"
#include "platform/prompts/prompts.h"

#include <QFileInfo>
#include <QProgressDialog>

namespace
{
const QString Section = QStringLiteral("Page");
const QString Path_Key = QStringLiteral("OpenPath");
} // namespace

namespace File_Import
{
QStringList Ask(const QString &title)
{
    QStringList paths = Prompts::Open_Files(title, GetIni(Section, Path_Key));
    if (!paths.isEmpty())
        WriteIni(Section, Path_Key, QFileInfo(paths.first()).path());
    return paths;
}

int Store(QWidget &window, const QStringList &paths, const QString &folderId)
{
    QProgressDialog progress(Pack_Text("Frm_Main", "_Importing"), Pack_Text("Buttons", "_Cancel"), 0,
                             static_cast<int>(paths.size()), &window);
    progress.setWindowModality(Qt::WindowModal);
    int stored = 0;
    for (const QString &path : paths) {
        progress.setValue(stored);
        if (progress.wasCanceled())
            break;
        const QFileInfo file(path);
        if (file.isFile() &&
            !AddCodeContent_File_Ex(path, folderId, QStringLiteral("0"), file.completeBaseName(), file.suffix(), false)
                 .isEmpty())
            ++stored;
    }
    progress.setValue(static_cast<int>(paths.size()));
    return stored;
}
} // namespace File_Import

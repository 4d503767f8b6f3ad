// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/web_page.h"

#include "core/settings.h"
#include "documents/html_pictures.h"
#include "editor/pictures.h"

#include <QFileInfo>
#include <QTextDocument>

namespace
{
/// Stands for the picture directory's mark, whose ">" would end a tag.
const QString Own_Scheme = QStringLiteral("zelqor-picture");

/// The file that a picture's address means, "" for one that is not on this machine.
QString Picture_File(const QUrl &name)
{
    if (name.scheme() == Own_Scheme)
        return Html::Own_Picture(QLatin1String(Html::Picture_Directory_Mark) + name.path(QUrl::FullyDecoded),
                                 Config().Pic_Dir);
    const bool local = name.scheme().isEmpty() || name.isLocalFile();
    const QString path = name.isLocalFile() ? name.toLocalFile() : name.path(QUrl::FullyDecoded);
    const bool onNetwork =
        !name.host().isEmpty() || path.startsWith(QLatin1String("//")) || path.startsWith(QLatin1String("\\\\"));
    return local && !onNetwork && QFileInfo(path).isAbsolute() && QFileInfo(path).isFile() ? path : QString();
}

QByteArray Picture_Bytes(const QUrl &name)
{
    const QString file = Picture_File(name);
    return file.isEmpty() ? QByteArray() : Pictures::Read_File(file);
}
} // namespace

void Web_Page::Show(const QString &page, QTextDocument &pane, const QUrl &base)
{
    QString safe = page;
    for (const char *mark : {Html::Picture_Directory_Mark, "&lt;&lt;&lt;Pic_Dir&gt;&gt;&gt;"})
        safe.replace(QLatin1String(mark), Own_Scheme + QLatin1Char(':'));
    pane.setHtml(safe);
    Pictures::Keep(pane, pane, [&](const QString &name) {
        return Picture_Bytes(base.isEmpty() ? QUrl(name) : base.resolved(QUrl(name)));
    });
    pane.clearUndoRedoStacks();
    pane.setModified(false);
}

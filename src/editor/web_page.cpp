// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/web_page.h"

#include "core/settings.h"
#include "documents/file_content.h"
#include "documents/html_pictures.h"
#include "editor/pictures.h"
#include "platform/html/bounded_page.h"
#include "platform/pictures/raster.h"

#include <QFileInfo>
#include <QTextDocument>

namespace
{
/// Stands for the picture directory's mark, whose ">" would end a tag.
const QString Own_Scheme = QStringLiteral("zelqor-picture");

/// The file that a picture's address means, "" for one that the page may not show: a page shows pictures of the
/// picture directory and those that lie with it, and the page that stands for a picture shows that one.
QString Picture_File(const QString &name, const QString &standsFor, const QUrl &base)
{
    const QUrl url(name);
    if (url.scheme() == Own_Scheme)
        return Html::Own_Picture(QLatin1String(Html::Picture_Directory_Mark) + url.path(QUrl::FullyDecoded),
                                 Config().Pic_Dir);
    if (base.isEmpty())
        return standsFor;
    const QString inside = QFileInfo(base.toLocalFile()).canonicalFilePath() + QLatin1Char('/');
    const QUrl resolved = base.resolved(url);
    const QString path = resolved.isLocalFile() && resolved.host().isEmpty()
                             ? QFileInfo(resolved.toLocalFile()).canonicalFilePath()
                             : QString();
    return path.startsWith(inside) ? path : QString();
}
} // namespace

void Web_Page::Show(const QString &page, QTextDocument &pane, const QUrl &base)
{
    QString safe = page;
    for (const char *mark : {Html::Picture_Directory_Mark, "&lt;&lt;&lt;Pic_Dir&gt;&gt;&gt;"})
        safe.replace(QLatin1String(mark), Own_Scheme + QLatin1Char(':'));
    pane.setHtml(Html::Bounded(safe));
    const QString standsFor = base.isEmpty() ? Wrapped_Picture(page) : QString();
    Pictures::Keep(pane, pane, [&](const QString &name) {
        const QString file = Picture_File(name, standsFor, base);
        return file.isEmpty() ? Pictures::Held(pane, name) : Raster::Read_File(file);
    });
    pane.clearUndoRedoStacks();
    pane.setModified(false);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/page_view.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/html_pictures.h"
#include "platform/prompts/prompts.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QImageReader>

namespace
{
/// Stands for the picture directory's mark, whose ">" would end a tag.
const QString Own_Scheme = QStringLiteral("zelqor-picture:");

/// The file that a picture's address means, "" for one that is not on this machine.
QString Picture_File(const QUrl &name)
{
    const QString address = name.toString(QUrl::FullyDecoded);
    if (address.startsWith(Own_Scheme))
        return Html::Own_Picture(QLatin1String(Html::Picture_Directory_Mark) + address.mid(Own_Scheme.size()),
                                 Config().Pic_Dir);
    const bool local = name.scheme().isEmpty() || name.isLocalFile();
    const QString path = name.isLocalFile() ? name.toLocalFile() : name.path(QUrl::FullyDecoded);
    const bool onNetwork =
        !name.host().isEmpty() || path.startsWith(QLatin1String("//")) || path.startsWith(QLatin1String("\\\\"));
    return local && !onNetwork && QFileInfo(path).isAbsolute() ? path : QString();
}
} // namespace

Page_View::Page_View(QWidget *parent) : QTextBrowser(parent)
{
    setOpenLinks(false);
    setOpenExternalLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &Page_View::Open_Link);
}

void Page_View::Show_Page(const QString &page)
{
    QString safe = page;
    safe.replace(QLatin1String(Html::Picture_Directory_Mark), Own_Scheme);
    setHtml(safe.replace(QLatin1String("&lt;&lt;&lt;Pic_Dir&gt;&gt;&gt;"), Own_Scheme));
}

QVariant Page_View::loadResource(int type, const QUrl &name)
{
    constexpr qint64 Most_Points = 100'000'000;
    const QString file = type == QTextDocument::ImageResource ? Picture_File(name) : QString();
    // An empty image, not an invalid one, keeps the base class from looking for the address by itself.
    if (file.isEmpty() || !QFileInfo(file).isFile())
        return QImage();
    QImageReader reader(file);
    const QSize size = reader.size();
    if (qint64(size.width()) * size.height() > Most_Points)
        return QImage();
    return reader.read();
}

void Page_View::Open_Link(const QUrl &link)
{
    if (link.toString().startsWith(QLatin1Char('#'))) {
        scrollToAnchor(link.fragment());
        return;
    }
    const QUrl address = link.scheme().isEmpty() ? QUrl::fromLocalFile(link.path(QUrl::FullyDecoded)) : link;
    const QString shown = address.isLocalFile() ? address.toLocalFile() : address.toDisplayString();
    if (Prompts::Ask(Pack_Text("Frm_Doc_Standard", "_OpenLink").arg(shown), App().App_Title, Prompts::Choice::Yes_No,
                     Prompts::Answer::No) != Prompts::Answer::Yes)
        return;
    if (!QDesktopServices::openUrl(address))
        Prompts::Message(Pack_Text("Frm_Doc_Standard", "_OpenError"), App().App_Title, Prompts::Icon::Exclamation);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_package.h"

#include "exchange/xml_text.h"
#include "platform/machine/machine.h"

#include <QUuid>

namespace
{
/// A title that is something to see.
QString Shown(const QString &title)
{
    return title.trimmed().isEmpty() ? QStringLiteral("-") : Xml_Text(title);
}
} // namespace

QString Epub::Container()
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                          "<container version=\"1.0\" xmlns=\"urn:oasis:names:tc:opendocument:xmlns:container\">\n"
                          "<rootfiles><rootfile full-path=\"%1book.opf\" "
                          "media-type=\"application/oebps-package+xml\"/></rootfiles>\n</container>\n")
        .arg(QLatin1String(Room));
}

QString Epub::Contents(const QString &title, const QString &language, const QList<Chapter> &chapters)
{
    QString list;
    QStringList open; // ids of folders
    const auto go = [&](const QList<Folder> &folders) {
        qsizetype same = 0;
        while (same < std::min(open.size(), folders.size()) && open[same] == folders[same].id)
            ++same;
        for (; open.size() > same; open.removeLast())
            list += QLatin1String("</ol></li>\n");
        for (; open.size() < folders.size(); open << folders[open.size()].id)
            list += QLatin1String("<li><span>") + Shown(folders[open.size()].name) + QLatin1String("</span><ol>\n");
    };
    for (const Chapter &chapter : chapters) {
        go(chapter.folders);
        list += QStringLiteral("<li><a href=\"") + chapter.address + QLatin1String("\">") + Shown(chapter.title) +
                QLatin1String("</a></li>\n");
    }
    go({});
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE html>\n"
                          "<html xmlns=\"http://www.w3.org/1999/xhtml\" xmlns:epub=\"http://www.idpf.org/2007/ops\" "
                          "xml:lang=\"") +
           language + QLatin1String("\" lang=\"") + language + QLatin1String("\">\n<head><title>") + Shown(title) +
           QLatin1String("</title></head>\n<body><nav epub:type=\"toc\"><h1>") + Shown(title) +
           QLatin1String("</h1><ol>\n") + list + QLatin1String("</ol></nav></body>\n</html>\n");
}

QString Epub::Package(const QString &title, const QString &language, const QList<Chapter> &chapters,
                      const QList<Part> &pictures)
{
    QString items, spine;
    for (qsizetype i = 0; i < chapters.size(); ++i) {
        items += QStringLiteral("<item id=\"d%1\" href=\"%2\" media-type=\"application/xhtml+xml\"/>\n")
                     .arg(i)
                     .arg(chapters[i].address);
        spine += QStringLiteral("<itemref idref=\"d%1\"/>\n").arg(i);
    }
    for (qsizetype i = 0; i < pictures.size(); ++i)
        items += QStringLiteral("<item id=\"p%1\" href=\"%2\" media-type=\"%3\"/>\n")
                     .arg(i)
                     .arg(pictures[i].address, pictures[i].type);
    const QString changed = Machine::Now().toUTC().toString(QStringLiteral("yyyy-MM-ddThh:mm:ssZ"));
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
                          "<package xmlns=\"http://www.idpf.org/2007/opf\" version=\"3.0\" unique-identifier=\"id\" "
                          "xml:lang=\"") +
           language +
           QLatin1String("\">\n<metadata xmlns:dc=\"http://purl.org/dc/elements/1.1/\">\n"
                         "<dc:identifier id=\"id\">urn:uuid:") +
           QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String("</dc:identifier>\n<dc:title>") +
           Shown(title) + QLatin1String("</dc:title>\n<dc:language>") + language +
           QLatin1String("</dc:language>\n<meta property=\"dcterms:modified\">") + changed +
           QLatin1String("</meta>\n</metadata>\n<manifest>\n"
                         "<item id=\"contents\" href=\"contents.xhtml\" media-type=\"application/xhtml+xml\" "
                         "properties=\"nav\"/>\n<item id=\"style\" href=\"style.css\" media-type=\"text/css\"/>\n") +
           items + QLatin1String("</manifest>\n<spine>\n") + spine + QLatin1String("</spine>\n</package>\n");
}

QString Epub::Style_Sheet()
{
    return QStringLiteral("body { margin: 0 2%; line-height: 1.5; }\n"
                          "p, li, h1, h2, h3, h4, h5, h6 { white-space: pre-wrap; }\n"
                          "p { margin: 0.3em 0; }\n"
                          "img { max-width: 100%; height: auto; }\n"
                          "table { border-collapse: collapse; margin: 0.5em 0; }\n"
                          "td, th { padding: 0.2em 0.5em; vertical-align: top; }\n"
                          "table.lined td, table.lined th { border: 1px solid #999; }\n"
                          "ul.labelled { list-style: none; padding-left: 1em; }\n");
}

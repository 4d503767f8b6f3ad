// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_export.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "documents/staging.h"
#include "editor/pictures.h"
#include "exchange/document_body.h"
#include "exchange/epub_links.h"
#include "exchange/epub_package.h"
#include "exchange/epub_page.h"
#include "exchange/epub_places.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/html/closed_door.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/kept_properties.h"
#include "platform/zip/zip_writer.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>
#include <QImage>
#include <QTextDocument>

namespace
{
const QString Parts_File = QStringLiteral("epub.parts");
const QString Zip_File = QStringLiteral("epub.zip");

QString Text(const char *key)
{
    return Pack_Text("Frm_DataExport_Node_Exe", key);
}

/// A part of the file in which pages and pictures wait for the book to be packed.
struct Section {
    qint64 begin = 0;
    qint64 size = 0;
};

struct Picture_Part {
    Epub::Part part;
    Section section;
};

/// A page that is written. Its links may lead to pages that are not, in the end.
struct Page_Part {
    Book_Row row;
    Section section;
    QStringList linked; ///< ids of documents
};

/// The bytes of a picture as every reader of such books shows it. @returns the type, "" for none
QString Prepare(QByteArray &bytes, const QRectF &part)
{
    if (!Raster::Size(bytes).isValid())
        return {};
    const bool isPart = !part.isEmpty() && part != QRectF(0, 0, 1, 1);
    if (!isPart && bytes.startsWith("\x89PNG"))
        return QStringLiteral("png");
    if (!isPart && bytes.startsWith("\xFF\xD8\xFF"))
        return QStringLiteral("jpeg");
    if (!isPart && bytes.startsWith("GIF8"))
        return QStringLiteral("gif");
    QImage image = Raster::Decode(bytes);
    if (isPart)
        image = image.copy(QRectF(part.x() * image.width(), part.y() * image.height(), part.width() * image.width(),
                                  part.height() * image.height())
                               .toAlignedRect());
    bytes.clear();
    QBuffer buffer(&bytes);
    return !image.isNull() && image.save(&buffer, "PNG") ? QStringLiteral("png") : QString();
}

class Export
{
public:
    Export(const Epub_Order &order, Work &work)
        : m_order(order), m_work(work), m_links(order.rows), m_language(Text("_Language_Tag"))
    {
    }
    Book_Result Run();

private:
    void Add_Page(const Book_Row &row, Work &work);
    [[nodiscard]] Section Keep(const QByteArray &bytes);
    [[nodiscard]] QByteArray Kept(const Section &section) const;
    QString Picture_Address(const QTextDocument &document, const QTextImageFormat &format);
    void Drop_Dead_Links();
    [[nodiscard]] QList<Epub::Chapter> Chapters() const;
    void Pack();

    const Epub_Order &m_order;
    Work &m_work;
    Staging m_files{10'000, {Parts_File, Zip_File}};
    qint64 m_size = 0; ///< of the parts' file
    Epub_Links m_links;
    QString m_language;
    QList<Page_Part> m_pages;
    QList<Picture_Part> m_pictures;
    QHash<QByteArray, QString> m_addresses; ///< of pictures by what their bytes and the shown part are
    Book_Result m_result;

    struct Cleaner {
        ~Cleaner()
        {
            for (const QString &name : {Parts_File, Zip_File})
                Resume_Next([&] { files.Drop(name); });
        }
        const Staging &files;
    } m_cleaner{m_files};
};

Section Export::Keep(const QByteArray &bytes)
{
    Files::Append_Bytes(m_files.Path(Parts_File), bytes);
    const Section section{m_size, bytes.size()};
    m_size += bytes.size();
    return section;
}

QByteArray Export::Kept(const Section &section) const
{
    QFile file;
    Files::Open_To_Read(file, m_files.Path(Parts_File));
    file.seek(section.begin);
    return file.read(section.size);
}

QString Export::Picture_Address(const QTextDocument &document, const QTextImageFormat &format)
{
    QByteArray bytes = Pictures::Held(document, format.name());
    const QRectF part = format.property(Rich_Text::Picture_Part).toRectF();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(bytes);
    hash.addData(
        QStringLiteral("%1 %2 %3 %4").arg(part.x()).arg(part.y()).arg(part.width()).arg(part.height()).toUtf8());
    const auto known = m_addresses.constFind(hash.result());
    if (known != m_addresses.constEnd())
        return *known;
    const QString type = Prepare(bytes, part);
    QString &address = m_addresses[hash.result()];
    if (type.isEmpty())
        return address;
    address = QStringLiteral("picture-%1.%2").arg(m_pictures.size() + 1).arg(type);
    m_pictures.append({{address, QStringLiteral("image/") + type}, Keep(bytes)});
    return address;
}

void Export::Add_Page(const Book_Row &row, Work &work)
{
    Html::Closed_Door door;
    QTextDocument document(&door);
    Document_Body::Load(row.code_id, document, work);
    Page_Part page{row, {}, {}};
    Epub_Page writer(document, {[&](const QTextImageFormat &format) { return Picture_Address(document, format); },
                                [&](const QString &target, const QString &words) {
                                    return m_links.Address(target, words, row, page.linked, m_result.lost_links);
                                }});
    page.section = Keep(writer.Write(row.title, m_language).toUtf8());
    m_pages.append(page);
}

/// Links to documents that failed are written out of the pages that hold them.
void Export::Drop_Dead_Links()
{
    QSet<QString> there;
    for (const Page_Part &page : std::as_const(m_pages))
        there.insert(page.row.code_id);
    for (Page_Part &page : m_pages) {
        QByteArray bytes;
        for (const QString &id : std::as_const(page.linked)) {
            if (there.contains(id))
                continue;
            if (bytes.isEmpty())
                bytes = Kept(page.section);
            bytes.replace(" href=\"" + m_links.Page_Of(id).toUtf8() + '"', "");
            m_result.lost_links << page.row.title + QStringLiteral(" → ") + m_links.Title_Of(id);
        }
        if (!bytes.isEmpty())
            page.section = Keep(bytes);
    }
    m_result.lost_links.removeDuplicates();
}

QList<Epub::Chapter> Export::Chapters() const
{
    const Epub_Places places;
    QList<Epub::Chapter> chapters;
    for (const Page_Part &page : m_pages)
        chapters.append({m_links.Page_Of(page.row.code_id), page.row.title, places.Folders_Of(page.row.code_id)});
    std::stable_sort(chapters.begin(), chapters.end(), [&](const Epub::Chapter &a, const Epub::Chapter &b) {
        return places.Is_Before(a.folders, b.folders);
    });
    return chapters;
}

void Export::Pack()
{
    const QList<Epub::Chapter> chapters = Chapters();
    QList<Epub::Part> pictures;
    for (const Picture_Part &picture : std::as_const(m_pictures))
        pictures << picture.part;
    const QString room = QLatin1String(Epub::Room), parts = m_files.Path(Parts_File);
    Zip_Writer zip(m_files.Path(Zip_File));
    zip.Add(QStringLiteral("mimetype"), Epub::Mimetype, false);
    zip.Add(QStringLiteral("META-INF/container.xml"), Epub::Container().toUtf8());
    zip.Add(room + QStringLiteral("book.opf"), Epub::Package(m_order.title, m_language, chapters, pictures).toUtf8());
    zip.Add(room + QStringLiteral("contents.xhtml"), Epub::Contents(m_order.title, m_language, chapters).toUtf8());
    zip.Add(room + QStringLiteral("style.css"), Epub::Style_Sheet().toUtf8());
    for (const Page_Part &page : std::as_const(m_pages))
        zip.Add_Part(room + m_links.Page_Of(page.row.code_id), parts, page.section.begin, page.section.size);
    for (const Picture_Part &picture : std::as_const(m_pictures))
        zip.Add_Part(room + picture.part.address, parts, picture.section.begin, picture.section.size, false);
    const qint64 all = m_order.rows.size();
    m_result.stopped = !zip.Finish([&] { return !m_work.Next(all, all, m_order.title); });
    if (!m_result.stopped)
        Files::Copy_File(m_files.Path(Zip_File), m_order.target, Files::Durability::Given);
}

Book_Result Export::Run()
{
    qint64 behind = 0;
    for (const Book_Row &row : m_order.rows) {
        Item_Work item(m_work, behind++, m_order.rows.size(), row.title);
        m_result.stopped = !item.Next(0, 0, {});
        if (m_result.stopped)
            return m_result;
        const bool done = Resume_Next([&] { Add_Page(row, item); });
        m_result.stopped = !done && Err().failure == Failure::Stopped;
        if (m_result.stopped)
            return m_result;
        if (!done)
            m_result.failed.append({row.title, Error_Text(Err())});
    }
    m_result.done = m_pages.size();
    if (m_pages.isEmpty())
        return m_result;
    Drop_Dead_Links();
    Pack();
    return m_result;
}
} // namespace

Book_Result Export_Epub(const Epub_Order &order, Work &work)
{
    return Export(order, work).Run();
}

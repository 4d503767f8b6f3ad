// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/book_export.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/runtime_files.h"
#include "exchange/book_pages.h"
#include "exchange/document_body.h"
#include "platform/book/book_items.h"
#include "platform/book/book_texts.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/html/closed_door.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QFileInfo>
#include <QTextDocument>
#include <QUuid>

namespace
{
const QString Viewer_Resource = QStringLiteral("ZELQORVIEWER_EXE");

QString Text(const char *key)
{
    return Pack_Text("Frm_DataExport_Node_Exe", key);
}

[[noreturn]] void Refuse(const QString &reason)
{
    throw Run_Time_Error(Error_Number::Path_Access, reason);
}

/// The viewer in tools\, written there where it is missing or not the one that this program carries.
QString Viewer()
{
    QString path = Tools_Directory() + QStringLiteral("ZelqorViewer.dat");
    const QFileInfo carried(Resource_Path(Viewer_Resource));
    const std::optional<Files::Entry> present = Files::Look(path);
    if (!present || (carried.exists() && present->size != carried.size()))
        Files::Write_Bytes(path, Runtime_File_Bytes(Viewer_Resource));
    return path;
}

/// The bytes as a view, and back.
std::string_view View(const QByteArray &bytes)
{
    return {bytes.constData(), static_cast<size_t>(bytes.size())};
}
QByteArray Bytes(const std::string &text)
{
    return QByteArray::fromStdString(text);
}

/// The book while it is written, beside its place.
class Unfinished_Book
{
public:
    explicit Unfinished_Book(const QString &target)
        : m_target(Files::Native_Path(target)),
          m_path(m_target + QLatin1Char('.') + QUuid::createUuid().toString(QUuid::Id128).left(8))
    {
        Files::Copy_File(Viewer(), m_path, Files::Durability::Given);
    }
    ~Unfinished_Book()
    {
        Resume_Next([this] { Files::Delete_If_Present(m_path); });
    }
    Unfinished_Book(const Unfinished_Book &) = delete;
    Unfinished_Book &operator=(const Unfinished_Book &) = delete;

    void Add(quint32 id, const QByteArray &bytes) const { Add_Named_Item(m_path, id, bytes); }
    void Take_Place() const
    {
        Files::Make_Runnable(m_path);
        Files::Rename_File(m_path, QFileInfo(m_target).fileName());
    }

private:
    QString m_target;
    QString m_path;
};

/// A document's item. @throws Run_Time_Error for one that has nothing of its own
QByteArray Item_Of(const Book_Row &row, Book_Mode mode, Work &work)
{
    if (mode == Book_Mode::Text) {
        const QString text = Document_Body::Listed_Text(row.code_id);
        if (text.trimmed().isEmpty())
            Refuse(Text("_ContentEn"));
        return Bytes(Book::Scrambled(text.toStdString()));
    }
    Html::Closed_Door door;
    QTextDocument document(&door);
    Document_Body::Load(row.code_id, document, work);
    if (mode == Book_Mode::Rich)
        return Rich_Text::Write_Rtf(document);
    QByteArray picture = Page_Picture(document);
    if (picture.isEmpty())
        Refuse(Text("_Too_Long"));
    return picture;
}

QString Type_Of(const Book_Row &row, Book_Mode mode)
{
    if (mode == Book_Mode::Rich)
        return row.type.isEmpty() ? QStringLiteral("RTF") : row.type;
    return mode == Book_Mode::Text ? QStringLiteral("TXT") : QStringLiteral("JPG");
}

/// Adds the documents one by one. @returns the index of those that are in the book
std::vector<Book::Entry> Add_Documents(const Book_Order &order, const Unfinished_Book &book, Work &work,
                                       Book_Result &result)
{
    std::vector<Book::Entry> index;
    qint64 behind = 0;
    for (const Book_Row &row : order.rows) {
        Item_Work item(work, behind++, order.rows.size(), row.title);
        result.stopped = !item.Next(0, 0, {});
        if (result.stopped)
            break;
        QByteArray bytes;
        if (!Resume_Next([&] { bytes = Item_Of(row, order.mode, item); })) {
            result.stopped = Err().failure == Failure::Stopped;
            if (result.stopped)
                break;
            result.failed.append({row.title, Error_Text(Err())});
            continue;
        }
        const auto id = Book::First_Document_Id + static_cast<quint32>(index.size());
        book.Add(id, bytes);
        index.push_back({id, Type_Of(row, order.mode).toStdString(), row.title.toStdString()});
        if (Book::Index_Title(index.back().title) != index.back().title)
            result.changed_titles.append(row.title);
    }
    result.done = static_cast<qint64>(index.size());
    return index;
}
} // namespace

void Add_Named_Item(const QString &path, quint32 id, const QByteArray &bytes)
{
    QFile file;
    Files::Open_To_Change(file, path);
    const qint64 size = file.size();
    // Behind a whole record the last bytes tell enough. The first item, and one behind what a kill left, looks further.
    qint64 from = std::max<qint64>(0, size - static_cast<qint64>(Book::Footer_Size));
    std::optional<quint64> former;
    for (bool whole = false; !former && !whole; from = 0) {
        whole = from == 0;
        file.seek(from);
        former = Book::Last_Footer(View(file.read(size - from)), static_cast<quint64>(from));
    }
    const QByteArray record = Bytes(Book::Record(static_cast<quint64>(size), former, id, View(bytes)));
    file.seek(size);
    if (file.write(record) != record.size()) {
        const bool full = file.error() == QFileDevice::ResourceError;
        throw Run_Time_Error(full ? Error_Number::Disk_Full : Error_Number::Path_Access, path,
                             full ? Failure::Disk_Full : Failure::Path_Access);
    }
}

Book_Result Export_Book(const Book_Order &order, Work &work)
{
    constexpr qsizetype Most_Documents = Book::Last_Document_Id - Book::First_Document_Id + 1;
    if (order.rows.size() > Most_Documents)
        Refuse(Text("_Too_Many").arg(Most_Documents));
    Book_Result result;
    const Unfinished_Book book(order.target);
    book.Add(Book::Parameters_Id, Bytes(Book::Written(Book::Parameters{order.password.toStdString(), order.uses})));
    const std::vector<Book::Entry> index = Add_Documents(order, book, work, result);
    if (result.stopped || index.empty())
        return result;
    book.Add(Book::Index_Id, Bytes(Book::Written(index)));
    book.Take_Place();
    return result;
}

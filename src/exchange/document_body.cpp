// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/document_body.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "core/sql_text.h"
#include "documents/coder.h"
#include "documents/html_pictures.h"
#include "documents/staging.h"
#include "documents/stored_stream.h"
#include "exchange/book_export_sql.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/html/bounded_page.h"
#include "platform/pictures/raster.h"
#include "platform/richtext/rich_text.h"

#include <QBuffer>
#include <QImage>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

namespace
{
const QString Stored = QStringLiteral("book.dd");
const QString Decoded = QStringLiteral("book.doc");
/// Stands for the picture directory's mark, whose ">" would end a tag.
const QString Own_Scheme = QStringLiteral("zelqor-picture:");

[[noreturn]] void Refuse(const char *key)
{
    throw Run_Time_Error(Error_Number::Path_Access, Pack_Text("Frm_DataExport_Node_Exe", key));
}

/// The row of a document. @throws Run_Time_Error when there is none
void Open(Recordset &row, const QString &code_id)
{
    row.Open(Sql_Text(Sql::Document_For_Book, code_id), App().Conn_Str);
    if (row.Eof())
        Refuse("_No_Document");
}

/// The staging files of one body, which go with the object.
class Stage
{
public:
    Stage() = default;
    ~Stage()
    {
        for (const QString &name : {Stored, Decoded})
            Resume_Next([&] { m_files.Drop(name); });
    }
    Stage(const Stage &) = delete;
    Stage &operator=(const Stage &) = delete;

    /// @returns the path of what the stream holds
    QString Decode(const QByteArray &stream) const
    {
        Files::Write_Bytes(m_files.Path(Stored), stream, Files::Durability::Staging);
        if (!Read_Pass_Tail(m_files.Path(Stored)).isEmpty())
            Refuse("_ContentEn");
        if (!Run_Coder("d", m_files.Path(Stored), m_files.Path(Decoded)) || !Files::Is_File(m_files.Path(Decoded)))
            Refuse("_Unreadable");
        return m_files.Path(Decoded);
    }

private:
    Staging m_files{10'000, {Stored, Decoded}};
};

/// The bytes of an address that is the picture itself (RFC 2397).
QByteArray In_Address(const QString &name)
{
    const qsizetype comma = name.indexOf(u',');
    const QByteArray coded = QStringView(name).mid(comma + 1).toLatin1();
    const bool isCoded = QStringView(name).left(comma).endsWith(QLatin1String(";base64"), Qt::CaseInsensitive);
    return isCoded ? QByteArray::fromBase64(coded) : QByteArray::fromPercentEncoding(coded);
}

/// Gives the pictures of a page their bytes, and words to those that have none.
void Take_Pictures(QTextDocument &document)
{
    struct Place {
        int position;
        int length;
        QTextImageFormat format;
    };
    QList<Place> strange; // all of them first: a changed format may join fragments
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextImageFormat format = fragment.charFormat().toImageFormat();
            if (!format.isValid() || !Document_Body::Picture(document, format.name()).isEmpty())
                continue;
            const QString file = format.name().startsWith(Own_Scheme)
                                     ? Html::Own_Picture(QLatin1String(Html::Picture_Directory_Mark) +
                                                             QUrl(format.name()).path(QUrl::FullyDecoded),
                                                         Config().Pic_Dir)
                                     : QString();
            const QByteArray bytes = file.isEmpty() ? QByteArray() : Raster::Read_File(file);
            if (bytes.isEmpty())
                strange.append({fragment.position(), fragment.length(), format});
            else
                document.addResource(QTextDocument::ImageResource, QUrl(format.name()), bytes);
        }
    }
    QTextCursor cursor(&document);
    while (!strange.isEmpty()) {
        const Place place = strange.takeLast();
        cursor.setPosition(place.position);
        cursor.setPosition(place.position + place.length, QTextCursor::KeepAnchor);
        const QString words = place.format.stringProperty(QTextFormat::ImageAltText);
        cursor.insertText(u'[' + (words.isEmpty() ? Pack_Text("Frm_DataExport_Node_Exe", "_Picture") : words) + u']',
                          QTextCharFormat());
    }
}

void Show_Page(QString page, QTextDocument &document)
{
    for (const char *mark : {Html::Picture_Directory_Mark, "&lt;&lt;&lt;Pic_Dir&gt;&gt;&gt;"})
        page.replace(QLatin1String(mark), Own_Scheme);
    document.setHtml(Html::Bounded(page));
    Take_Pictures(document);
}
void Fill(const QString &code_id, QTextDocument &document)
{
    Recordset row;
    Open(row, code_id);
    const Field type = row[QStringLiteral("Code_Type")];
    const QString kind = type.Is_Null() ? QStringLiteral("RTF") : type.Text().toUpper();
    const Field stream = row[QStringLiteral("Code_Content_IO")];
    const bool isRich = kind == QLatin1String("RTF"), isPage = kind == QLatin1String("HTM");
    Rich_Text::Set_Measures(document);
    const Stage stage;
    const QString file = stream.Is_Null() ? QString() : stage.Decode(stream.Bytes());
    if (!file.isEmpty() && (isRich || kind == QLatin1String("TXT")))
        return Rich_Text::Load_File(file, isRich ? Rich_Text::Format::Rtf : Rich_Text::Format::Plain, document);
    const QString page = !file.isEmpty() && isPage ? Files::Decode_Text(Files::Read_Bytes(file)) : QString();
    if (page.contains(u'<')) // else it is the path of a page that lies elsewhere
        return Show_Page(page, document);
    document.setPlainText(row[QStringLiteral("Code_Content")].Text());
}

} // namespace

void Document_Body::Load(const QString &code_id, QTextDocument &document)
{
    Fill(code_id, document);
    if (document.toPlainText().trimmed().isEmpty()) // a picture has a sign in it
        Refuse("_ContentEn");
}

QString Document_Body::Listed_Text(const QString &code_id)
{
    Recordset row;
    Open(row, code_id);
    return row[QStringLiteral("Code_Content")].Text();
}

QByteArray Document_Body::Picture(const QTextDocument &document, const QString &name)
{
    if (name.startsWith(QLatin1String("data:"), Qt::CaseInsensitive)) {
        const QByteArray bytes = In_Address(name);
        return Raster::Size(bytes).isValid() ? bytes : QByteArray();
    }
    if (QUrl(name).isLocalFile() || QUrl(name).isRelative())
        return {}; // the toolkit would open it
    const QVariant held = document.resource(QTextDocument::ImageResource, QUrl(name));
    if (held.userType() == QMetaType::QByteArray)
        return held.toByteArray();
    QByteArray png;
    QBuffer buffer(&png);
    if (const auto image = held.value<QImage>(); !image.isNull())
        image.save(&buffer, "PNG");
    return png;
}

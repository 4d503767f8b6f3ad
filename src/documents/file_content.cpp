// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/file_content.h"

#include "core/process_state.h"
#include "documents/html_pictures.h"
#include "platform/errors/run_time_error.h"
#include "platform/extract/text_extractor.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTextDocument>
#include <QUrl>

namespace
{
enum class Kind { Rich_Text, Plain_Text, Office, Path_Only, Wrapper_Page };

struct Type_Row {
    const char *extension;
    const char *type; ///< what is stored
    Kind kind;
    bool shows; ///< whether a file of the type can only be shown by the program that the desktop gives it to
};

constexpr Type_Row Types[] = {
    {"RTF", "RTF", Kind::Rich_Text, true},   {"TXT", "TXT", Kind::Plain_Text, true},
    {"INI", "INI", Kind::Plain_Text, true},  {"ASP", "ASP", Kind::Plain_Text, false},
    {"JSP", "JSP", Kind::Plain_Text, false}, {"PHP", "PHP", Kind::Plain_Text, false},
    {"FRM", "FRM", Kind::Plain_Text, true},  {"BAT", "BAT", Kind::Plain_Text, false},
    {"CLS", "CLS", Kind::Plain_Text, true},  {"CTL", "CTL", Kind::Plain_Text, true},
    {"DOC", "DOC", Kind::Office, true},      {"WPS", "DOC", Kind::Office, true},
    {"DOCX", "DOCX", Kind::Office, true},    {"XLS", "XLS", Kind::Office, true},
    {"ET", "XLS", Kind::Office, true},       {"XLSX", "XLSX", Kind::Office, true},
    {"PPT", "PPT", Kind::Office, true},      {"DPS", "PPT", Kind::Office, true},
    {"PPTX", "PPTX", Kind::Office, true},    {"PDF", "PDF", Kind::Office, true},
    {"SWF", "SWF", Kind::Path_Only, false},
};

Type_Row Row_For(const QString &extension)
{
    for (const Type_Row &row : Types) {
        if (extension == QLatin1String(row.extension))
            return row;
    }
    return {"", "HTM", Kind::Wrapper_Page, false};
}

QByteArray First_Bytes(const QString &path)
{
    QFile file;
    Files::Open_To_Read(file, path);
    return file.read(ExtractText::Most_Characters);
}

QString Plain_File_Text(const QString &path)
{
    return Rich_Text::Decode_Plain(First_Bytes(path));
}

/// A file that is called RTF and is none is taken as plain text.
QString Rich_File_Text(const QString &path)
{
    const QByteArray bytes = First_Bytes(path);
    QTextDocument document;
    return Rich_Text::Read_Rtf(bytes, document) ? Rich_Text::Shown_Text(document) : Rich_Text::Decode_Plain(bytes);
}

/// A path as it is, but for what ends an attribute without quotation marks: no short name holds any of these
/// characters, and they are written as in an address.
QString Unquoted(const QString &path)
{
    QString value;
    for (const QChar c : Files::Short_Path(path)) {
        if (QStringLiteral(" <>\"=").contains(c) || c < QLatin1Char(' '))
            value += QString::fromLatin1(QString(c).toUtf8().toPercentEncoding());
        else
            value += c;
    }
    return value;
}

/// A page that stands in for a file that other programs show: a picture, or a link to the file.
QString Wrapper_Page(const QString &path, const QString &extension)
{
    const bool picture =
        QStringList{QStringLiteral("JPG"), QStringLiteral("GIF"), QStringLiteral("BMP")}.contains(extension);
    const QString file = Unquoted(path);
    const QString shown = picture
                              ? QStringLiteral("<font color=0><img border=0 ALIGN=TOP src=%1></font></body>").arg(file)
                              : QStringLiteral("<font color=0><a target=_self href=%1>%1</a></font>").arg(file);
    return QStringLiteral("<BASE HREF=%1><html><head>"
                          "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">"
                          "<STYLE>BODY {border:0;overflow-x:auto;overflow-y:auto;}</STYLE></head><body>")
               .arg(App().App_Path + QStringLiteral("editor/")) +
           shown + QStringLiteral("</html>");
}

/// The file at an address in a page, "" unless the page is the one that stands for it.
QString Wrapped_At(const QString &page, const QString &address)
{
    const QString path = QUrl::fromPercentEncoding(address.toUtf8());
    const auto withoutBase = [](const QString &text) {
        return text.section(QLatin1Char('>'), 1);
    };
    const bool own =
        !path.isEmpty() && withoutBase(page) == withoutBase(Wrapper_Page(path, QFileInfo(path).suffix().toUpper()));
    return own ? path : QString();
}

/// What is stored is held in memory by the database's engine while it is written.
void Check_File(const QString &path, bool wholeFile)
{
    constexpr qint64 Largest = Q_INT64_C(256) << 20;
    QFile file;
    Files::Open_To_Read(file, path);
    if (wholeFile && file.size() > Largest)
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Too large: ") + path, Failure::Too_Large);
}
} // namespace

bool Is_Shown_Outside(const QString &type)
{
    return Row_For(type.toUpper()).shows;
}

bool May_Hold_Text(const QString &type)
{
    static const QStringList others{
        QStringLiteral("7Z"),  QStringLiteral("AVI"),  QStringLiteral("BMP"),  QStringLiteral("DLL"),
        QStringLiteral("EXE"), QStringLiteral("FLAC"), QStringLiteral("GIF"),  QStringLiteral("GZ"),
        QStringLiteral("ICO"), QStringLiteral("ISO"),  QStringLiteral("JPEG"), QStringLiteral("JPG"),
        QStringLiteral("MKV"), QStringLiteral("MOV"),  QStringLiteral("MP3"),  QStringLiteral("MP4"),
        QStringLiteral("OGG"), QStringLiteral("PNG"),  QStringLiteral("RAR"),  QStringLiteral("SO"),
        QStringLiteral("TIF"), QStringLiteral("TIFF"), QStringLiteral("WAV"),  QStringLiteral("WEBP"),
        QStringLiteral("WMV"), QStringLiteral("XZ"),   QStringLiteral("ZIP")};
    return !others.contains(type.toUpper());
}

QString Text_In_File(const QString &path, const QString &type)
{
    constexpr qsizetype Looked_At = 4096;
    switch (Row_For(type.toUpper()).kind) {
    case Kind::Rich_Text:
        return Rich_File_Text(path);
    case Kind::Plain_Text:
        return Plain_File_Text(path);
    case Kind::Office:
        return ExtractText::TextExtractor().ExtractText(path, ExtractText::Most_Characters);
    case Kind::Path_Only:
    case Kind::Wrapper_Page:
        break;
    }
    if (!May_Hold_Text(type))
        return {};
    const QByteArray bytes = First_Bytes(path);
    return bytes.first(std::min(bytes.size(), Looked_At)).contains('\0') ? QString() : Rich_Text::Decode_Plain(bytes);
}

QString Wrapped_Picture(const QString &page)
{
    return Wrapped_At(page, Html::Picture_Sources(page).value(0));
}

QString Wrapped_File(const QString &page)
{
    constexpr qsizetype Longest = 40'000; // no path makes a longer one
    if (page.size() > Longest)
        return {};
    static const QRegularExpression link(QStringLiteral("<a target=_self href=([^>]*)>"));
    const QString picture = Wrapped_Picture(page);
    return picture.isEmpty() ? Wrapped_At(page, link.match(page).captured(1)) : picture;
}

File_Content Content_Of_File(const QString &path, const QString &type, bool link_only)
{
    const QString extension = type.toUpper();
    const Type_Row row = Row_For(extension);
    File_Content content{QLatin1String(row.type), {}, link_only, false};
    const bool wholeFile = !link_only && (row.kind == Kind::Rich_Text || row.kind == Kind::Plain_Text ||
                                          (row.kind == Kind::Office && extension != QLatin1String("PDF")));
    Check_File(path, wholeFile);
    switch (row.kind) {
    case Kind::Rich_Text:
        content.text = Rich_File_Text(path);
        break;
    case Kind::Plain_Text:
        content.text = Plain_File_Text(path);
        break;
    case Kind::Office:
        content.text = ExtractText::TextExtractor().ExtractText(path, ExtractText::Most_Characters);
        break;
    case Kind::Path_Only:
        content.text = path;
        content.link_only = true;
        break;
    case Kind::Wrapper_Page:
        content.text = Wrapper_Page(path, extension);
        content.link_only = true;
        break;
    }
    const bool isPdf = content.type == QLatin1String("PDF");
    if (isPdf)
        content.link_only = true;
    content.keeps_path = isPdf || row.kind == Kind::Path_Only;
    return content;
}

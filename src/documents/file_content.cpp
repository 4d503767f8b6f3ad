// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/file_content.h"

#include "core/process_state.h"
#include "platform/errors/run_time_error.h"
#include "platform/extract/text_extractor.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QFileInfo>
#include <QTextDocument>

namespace
{
enum class Kind { Rich_Text, Plain_Text, Office, Path_Only, Wrapper_Page };

struct Type_Row {
    const char *extension;
    const char *type; ///< what is stored
    Kind kind;
};

constexpr Type_Row Types[] = {
    {"RTF", "RTF", Kind::Rich_Text},  {"TXT", "TXT", Kind::Plain_Text}, {"INI", "INI", Kind::Plain_Text},
    {"ASP", "ASP", Kind::Plain_Text}, {"JSP", "JSP", Kind::Plain_Text}, {"PHP", "PHP", Kind::Plain_Text},
    {"FRM", "FRM", Kind::Plain_Text}, {"BAT", "BAT", Kind::Plain_Text}, {"CLS", "CLS", Kind::Plain_Text},
    {"CTL", "CTL", Kind::Plain_Text}, {"DOC", "DOC", Kind::Office},     {"WPS", "DOC", Kind::Office},
    {"DOCX", "DOCX", Kind::Office},   {"XLS", "XLS", Kind::Office},     {"ET", "XLS", Kind::Office},
    {"XLSX", "XLSX", Kind::Office},   {"PPT", "PPT", Kind::Office},     {"DPS", "PPT", Kind::Office},
    {"PPTX", "PPTX", Kind::Office},   {"PDF", "PDF", Kind::Office},     {"SWF", "SWF", Kind::Path_Only},
};

Type_Row Row_For(const QString &extension)
{
    for (const Type_Row &row : Types) {
        if (extension == QLatin1String(row.extension))
            return row;
    }
    return {"", "HTM", Kind::Wrapper_Page};
}

QByteArray First_Bytes(const QString &path)
{
    QFile file(Files::Native_Path(path));
    if (!file.open(QIODevice::ReadOnly))
        throw Run_Time_Error(Error_Number::Path_Access,
                             QStringLiteral("Cannot read %1: %2").arg(path, file.errorString()), Failure::Path_Access);
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

/// A path as an attribute's value without quotation marks, which no name can end early: short names hold none of these
/// characters, and elsewhere they are written as in an address.
QString Unquoted(const QString &path)
{
    QString value;
    for (const QChar c : Files::Short_Path(path)) {
        if (QStringLiteral(" <>\"'`=&%").contains(c) || c < QLatin1Char(' '))
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

/// What is stored is held in memory by the database's engine while it is written.
void Check_File(const QString &path, bool wholeFile)
{
    constexpr qint64 Largest = Q_INT64_C(256) << 20;
    const QFileInfo file(Files::Native_Path(path));
    if (!file.exists())
        throw Run_Time_Error(Error_Number::File_Not_Found, QStringLiteral("File not found: ") + path,
                             Failure::File_Not_Found);
    if (!file.isFile())
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Not a file: ") + path, Failure::Path_Access);
    if (wholeFile && file.size() > Largest)
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Too large: ") + path, Failure::Too_Large);
}
} // namespace

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
    if (content.type == QLatin1String("PDF"))
        content.link_only = true;
    content.keeps_path = content.link_only && row.kind != Kind::Wrapper_Page;
    return content;
}

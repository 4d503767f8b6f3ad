// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/file_content.h"

#include "core/process_state.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"

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

QString Rich_File_Text(const QString &path)
{
    QTextDocument document;
    Rich_Text::Load_File(path, Rich_Text::Format::Rtf, document);
    return document.toPlainText();
}

/// A page that stands in for a file that is shown by other programs: a picture, or a link to the file.
QString Wrapper_Page(const QString &path, const QString &extension)
{
    const bool picture =
        QStringList{QStringLiteral("JPG"), QStringLiteral("GIF"), QStringLiteral("BMP")}.contains(extension);
    const QString shown = QStringLiteral("<font color=0>%1</font>")
                              .arg(picture ? QStringLiteral("<img border=0 ALIGN=TOP src=%1>").arg(path)
                                           : QStringLiteral("<a target=_self href=%1>%1</a>").arg(path));
    return QStringLiteral("<BASE HREF=%1><html><head>"
                          "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=gb2312\">"
                          "<STYLE>BODY {border:0;overflow-x:auto;overflow-y:auto;}</STYLE></head><body>")
               .arg(App().App_Path + QStringLiteral("editor/")) +
           shown + (picture ? QStringLiteral("</body>") : QString()) + QStringLiteral("</html>");
}
} // namespace

File_Content Content_Of_File(const QString &path, const QString &type, bool link_only)
{
    const QString extension = type.toUpper();
    const Type_Row row = Row_For(extension);
    File_Content content{QLatin1String(row.type), {}, link_only, false};
    switch (row.kind) {
    case Kind::Rich_Text:
        content.text = Rich_File_Text(path);
        break;
    case Kind::Plain_Text:
        content.text = Rich_Text::Decode_Plain(Files::Read_Bytes(path));
        break;
    case Kind::Office:
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/text_extractor.h"

#include "platform/extract/office_parts.h"
#include "platform/extract/office_text.h"
#include "platform/extract/slide_records.h"
#include "platform/extract/tool_text.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"

#include <QFile>
#include <QFileInfo>
#include <QTextDocument>

namespace ExtractText
{
namespace
{
enum class Kind { Unknown, Pdf, Zip, Compound, Rich_Text };

/// First bytes: ISO 32000-1 annex H (the mark of a PDF may stand within the first 1024), the ZIP application note,
/// [MS-CFB] 2.2, RTF 1.9.1.
Kind Kind_Of(const QByteArray &head)
{
    if (head.startsWith("PK\x03\x04"))
        return Kind::Zip;
    if (head.startsWith(QByteArray::fromHex("d0cf11e0a1b11ae1")))
        return Kind::Compound;
    if (head.startsWith("{\\rtf"))
        return Kind::Rich_Text;
    return head.contains("%PDF-") ? Kind::Pdf : Kind::Unknown;
}

QByteArray Utf16_Name(const char16_t *name)
{
    const QString text = QString::fromUtf16(name);
    return {reinterpret_cast<const char *>(text.utf16()), text.size() * 2};
}

/// The tool for a compound file, by the names of its streams; the extension decides where none is seen.
Tool Tool_For_Compound(const QString &path)
{
    struct Row {
        const char16_t *stream;
        const char *extensions;
        Tool tool;
    };
    static const Row rows[] = {{u"PowerPoint Document", "ppt dps pps", Tool::Slides},
                               {u"WordDocument", "doc wps dot", Tool::Words},
                               {u"Workbook", "xls et xlt", Tool::Sheets}};
    constexpr qint64 Searched = 1 << 20;
    QFile file;
    Files::Open_To_Read(file, path);
    QByteArray seen = file.read(Searched);
    if (file.size() > Searched && file.seek(std::max(Searched, file.size() - Searched)))
        seen += file.readAll();
    if (seen.contains(Utf16_Name(u"EncryptedPackage")))
        return Tool::None;
    for (const Row &row : rows) {
        if (seen.contains(Utf16_Name(row.stream)))
            return row.tool;
    }
    const QByteArray extension = QFileInfo(path).suffix().toLower().toLatin1();
    for (const Row &row : rows) {
        if (!extension.isEmpty() && QByteArray(row.extensions).split(' ').contains(extension))
            return row.tool;
    }
    return Tool::None;
}

QString Rich_Text_Of(const QString &path, qint64 limit)
{
    QFile file;
    QTextDocument document;
    Files::Open_To_Read(file, path);
    if (!Rich_Text::Read_Rtf(file.read(limit), document))
        return {};
    return Rich_Text::Shown_Text(document);
}
} // namespace

QString TextExtractor::ExtractText(const QString &path, qint64 limit) const
{
    constexpr qint64 Head = 1024;
    const QString native = Files::Native_Path(path);
    if (!Files::Is_File(native))
        return {};
    QFile file;
    Files::Open_To_Read(file, native);
    const Kind kind = Kind_Of(file.read(Head));
    file.close();
    switch (kind) {
    case Kind::Pdf:
        return Text_By_Tool(Tool::Pdf, native, limit);
    case Kind::Compound:
        if (const Tool tool = Tool_For_Compound(native); tool != Tool::Slides)
            return Text_By_Tool(tool, native, limit);
        return Slide_Records_Text(native, limit);
    case Kind::Zip: {
        Office_Parts parts(native);
        return Office_Text(parts, limit);
    }
    case Kind::Rich_Text:
        return Rich_Text_Of(native, limit).left(limit);
    case Kind::Unknown:
        break;
    }
    return {};
}
} // namespace ExtractText

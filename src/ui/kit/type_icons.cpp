// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/type_icons.h"

#include "ui/kit/icons.h"

namespace
{
struct Row {
    const char *types; ///< with a blank before and behind each
    const char *icon;
};
constexpr Row Rows[] = {
    {" RTF ", "note"},
    {" TXT INI LOG CSV MD C CPP H BAS SQL XML JSON ", "type_text"},
    {" HTM HTML MHT MHTML XHTML CHM ", "type_page"},
    {" DOC DOCX WPS ODT DOT ", "type_word"},
    {" XLS XLSX ODS ET ", "type_sheet"},
    {" PPT PPTX PPS ODP DPS ", "type_slides"},
    {" PDF ", "type_pdf"},
    {" PNG JPG JPEG BMP GIF ICO TIF TIFF WEBP SVG WMF EMF ", "picture"},
    {" EML MSG ", "mail"},
};
} // namespace

QIcon Type_Icon(const QString &type, bool isLink)
{
    if (isLink)
        return Line_Icon(QStringLiteral("type_link"));
    const QString sought = type.trimmed().toUpper();
    if (sought.isEmpty())
        return Line_Icon(QStringLiteral("note"));
    for (const Row &row : Rows) {
        if (QLatin1String(row.types).contains(QLatin1Char(' ') + sought + QLatin1Char(' ')))
            return Line_Icon(QLatin1String(row.icon));
    }
    return Line_Icon(QStringLiteral("type_file"));
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/number_format.h"
#include "platform/extract/office_parts.h"
#include "platform/extract/office_text.h"

#include <QXmlStreamReader>

namespace ExtractText
{
namespace
{
QString Attribute(const QXmlStreamReader &xml, const char *name)
{
    return xml.attributes().value(QLatin1String(name)).toString();
}

struct Book {
    QStringList sheet_ids;
    bool date_1904 = false;
    QStringList strings;
    QHash<int, QString> formats; ///< format codes by their ids
    QList<int> styles;           ///< format ids by a cell's style
};

void Read_Workbook(Office_Parts &parts, const QString &workbook, Book &book)
{
    parts.Read(workbook, [&](QXmlStreamReader &xml) {
        if (!xml.isStartElement())
            return true;
        if (xml.name() == QLatin1String("workbookPr")) {
            const QString flag = Attribute(xml, "date1904");
            book.date_1904 = flag == QLatin1String("1") || flag == QLatin1String("true");
        }
        if (xml.name() == QLatin1String("sheet")) {
            for (const QXmlStreamAttribute &attribute : xml.attributes()) {
                if (attribute.name() == QLatin1String("id"))
                    book.sheet_ids << attribute.value().toString();
            }
        }
        return book.sheet_ids.size() < Office_Parts::Most_Parts;
    });
}

void Read_Strings(Office_Parts &parts, const QString &part, Book &book, qint64 limit)
{
    constexpr qsizetype Most_Strings = 1 << 20; // as many as a sheet has rows
    qint64 size = 0;
    bool inText = false;
    int phonetic = 0; // readings that stand over the text, as in Japanese
    parts.Read(part, [&](QXmlStreamReader &xml) {
        const int step = xml.isStartElement() ? 1 : xml.isEndElement() ? -1 : 0;
        if (step != 0 && xml.name() == QLatin1String("rPh"))
            phonetic += step;
        if (step == 1 && xml.name() == QLatin1String("si"))
            book.strings << QString();
        if (step != 0)
            inText = step == 1 && xml.name() == QLatin1String("t");
        if (inText && phonetic == 0 && xml.isCharacters() && !book.strings.isEmpty()) {
            book.strings.last() += xml.text();
            size += xml.text().size();
        }
        return size < limit && book.strings.size() < Most_Strings;
    });
}

void Read_Styles(Office_Parts &parts, const QString &part, Book &book)
{
    constexpr qsizetype Most_Styles = 1 << 16;
    bool inCells = false;
    parts.Read(part, [&](QXmlStreamReader &xml) {
        if (xml.name() == QLatin1String("cellXfs"))
            inCells = xml.isStartElement();
        if (!xml.isStartElement())
            return true;
        if (xml.name() == QLatin1String("numFmt"))
            book.formats.insert(Attribute(xml, "numFmtId").toInt(), Attribute(xml, "formatCode"));
        if (inCells && xml.name() == QLatin1String("xf"))
            book.styles << Attribute(xml, "numFmtId").toInt();
        return book.formats.size() < Most_Styles && book.styles.size() < Most_Styles;
    });
}

/// One cell while its element is read.
struct Cell {
    QString type;
    int style = 0;
    QString value;
};

QString Shown(const Cell &cell, const Book &book)
{
    if (cell.type == QLatin1String("s"))
        return book.strings.value(cell.value.toInt());
    if (cell.type == QLatin1String("b"))
        return cell.value == QLatin1String("1") ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
    bool isNumber = false;
    const double number = cell.value.toDouble(&isNumber);
    if (!isNumber || !(cell.type.isEmpty() || cell.type == QLatin1String("n")))
        return cell.value;
    const int format = book.styles.value(cell.style);
    return Formatted_Number(number, book.formats.value(format, Built_In_Format(format)), book.date_1904);
}

void Read_Sheet(Office_Parts &parts, const QString &part, const Book &book, QString &text, qint64 limit)
{
    Cell cell;
    bool inValue = false;
    int phonetic = 0;
    bool first = true;
    parts.Read(part, [&](QXmlStreamReader &xml) {
        const auto name = xml.name();
        if (xml.isStartElement()) {
            phonetic += name == QLatin1String("rPh") ? 1 : 0;
            inValue = name == QLatin1String("v") || name == QLatin1String("t");
            if (name == QLatin1String("row"))
                first = true;
            if (name == QLatin1String("c"))
                cell = {Attribute(xml, "t"), Attribute(xml, "s").toInt(), {}};
        } else if (xml.isEndElement()) {
            phonetic -= name == QLatin1String("rPh") ? 1 : 0;
            inValue = false;
            if (name == QLatin1String("c")) {
                text += (first ? QString() : QStringLiteral("\t")) + Shown(cell, book);
                first = false;
            }
            if (name == QLatin1String("row"))
                text += QLatin1Char('\n');
        } else if (inValue && phonetic == 0 && xml.isCharacters()) {
            cell.value += xml.text();
        }
        return text.size() + cell.value.size() < limit;
    });
}
} // namespace

QString Sheets_Text(Office_Parts &parts, const QString &workbook, qint64 limit)
{
    const auto related = [&](const char *type, const char *usual) {
        return parts.Related(workbook, QLatin1StringView(type), QLatin1StringView(usual));
    };
    Book book;
    Read_Workbook(parts, workbook, book);
    Read_Strings(parts, related("sharedStrings", "xl/sharedStrings.xml"), book, limit);
    Read_Styles(parts, related("styles", "xl/styles.xml"), book);
    const QHash<QString, QString> targets = parts.Relationships(workbook);
    QString text;
    for (const QString &id : book.sheet_ids)
        Read_Sheet(parts, targets.value(id), book, text, limit);
    return text.left(limit);
}
} // namespace ExtractText

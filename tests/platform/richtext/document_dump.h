// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"

#include <QCryptographicHash>
#include <QFont>
#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QUrl>

#include <utility>

/// A document as lines of text, one for each block, table and cell, in which everything that RTF carries can be
/// seen and what is usual (left, 12 points, the document's own font) is left out.
class Document_Dump
{
public:
    static QString Of(const QTextDocument &document)
    {
        Document_Dump dump(document);
        dump.Frame(document.rootFrame()->begin(), document.rootFrame()->end());
        return dump.m_lines.join(u'\n');
    }

private:
    explicit Document_Dump(const QTextDocument &document) : m_document(document) {}

    static QString Number(const char *name, double value)
    {
        return value == 0 ? QString()
                          : QStringLiteral(" %1=%2").arg(QLatin1String(name)).arg(qRound(value * 15) / 15.0);
    }
    static QString Color(const char *name, const QBrush &brush)
    {
        if (brush.style() == Qt::NoBrush)
            return {};
        return QStringLiteral(" %1=%2").arg(QLatin1String(name), brush.color().name());
    }
    static QString If(bool is, const char *word) { return is ? QLatin1String(" ") + QLatin1String(word) : QString(); }

    void Frame(QTextFrame::iterator it, const QTextFrame::iterator &end)
    {
        for (; it != end; ++it) {
            if (const auto *table = qobject_cast<QTextTable *>(it.currentFrame()))
                Table(*table);
            else if (it.currentBlock().isValid())
                Block(it.currentBlock());
        }
    }

    void Block(const QTextBlock &block)
    {
        const QTextBlockFormat format = block.blockFormat();
        QString line = QStringLiteral("P");
        line += If(format.alignment() & Qt::AlignRight, "right") + If(format.alignment() & Qt::AlignHCenter, "center") +
                If(format.alignment() & Qt::AlignJustify, "justify");
        line += Number("left", format.leftMargin() + 48 * format.indent()) + Number("right", format.rightMargin()) +
                Number("first", format.textIndent()) + Number("before", format.topMargin()) +
                Number("after", format.bottomMargin()) + Number("heading", format.headingLevel());
        if (format.lineHeightType() != QTextBlockFormat::SingleHeight)
            line += Number("line", format.lineHeight()) + QStringLiteral("/%1").arg(format.lineHeightType());
        line += Color("back", format.background()) + If(block.textDirection() == Qt::RightToLeft, "rtl") +
                If(format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore, "page");
        for (const QTextOption::Tab &tab : format.tabPositions())
            line += Number("tab", tab.position) + QStringLiteral("/%1").arg(tab.type);
        if (format.hasProperty(Rich_Text::Tab_Leaders))
            line += QLatin1String(" leaders=") +
                    QLatin1String(format.property(Rich_Text::Tab_Leaders).toByteArray().toHex());
        line += If(format.boolProperty(Rich_Text::Keep_With_Next), "keep");
        line += If(format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth), "rule") + Borders(format);
        if (const QTextList *list = block.textList())
            line += List(*list, block) + Number("label", list->format().intProperty(Rich_Text::List_First)) +
                    Number("ofItem", format.intProperty(Rich_Text::List_First));
        m_lines += m_indent + line + QLatin1String(": ") + Runs(block);
    }

    /// Lines and paddings of a paragraph or a cell.
    static QString Borders(const QTextFormat &format)
    {
        QString line;
        for (int side = 0; side < 4; ++side) {
            static const char *const names[] = {"top", "bottom", "left", "right"};
            const auto has = [&](int first) {
                return format.hasProperty(first + side);
            };
            if (has(QTextFormat::TableCellTopBorderStyle))
                line += Number(names[side], format.doubleProperty(QTextFormat::TableCellTopBorder + side)) +
                        QStringLiteral("/%1").arg(format.intProperty(QTextFormat::TableCellTopBorderStyle + side)) +
                        Color("", format.brushProperty(QTextFormat::TableCellTopBorderBrush + side));
            if (has(QTextFormat::TableCellTopPadding))
                line += QStringLiteral("+%1").arg(format.doubleProperty(QTextFormat::TableCellTopPadding + side));
        }
        return line;
    }

    QString List(const QTextList &list, const QTextBlock &block)
    {
        if (!m_lists.contains(&list))
            m_lists.append(&list);
        const QTextListFormat format = list.format();
        const bool numbered = format.style() <= QTextListFormat::ListDecimal;
        const bool hasSuffix = format.hasProperty(QTextFormat::ListNumberSuffix);
        if (format.style() == Rich_Text::Kept_Labels)
            return QStringLiteral(" list%1(%2,%3)")
                .arg(m_lists.indexOf(&list) + 1)
                .arg(format.indent())
                .arg(Rich_Text::Item_Label(block));
        return QStringLiteral(" list%1(%2,%3%4)")
            .arg(m_lists.indexOf(&list) + 1)
            .arg(format.style())
            .arg(format.indent())
            .arg(numbered ? QStringLiteral(",%1#%2").arg(format.numberPrefix(),
                                                         hasSuffix ? format.numberSuffix() : QStringLiteral("."))
                          : QString());
    }

    QString Runs(const QTextBlock &block)
    {
        QString line, last;
        QStringList places;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            const QString properties = Properties(format);
            if (properties != last)
                line += QLatin1Char('{') + properties.trimmed() + QLatin1Char('}');
            last = properties;
            if (format.anchorNames() != std::exchange(places, format.anchorNames()) && !places.isEmpty())
                line += QLatin1Char('@') + places.join(QLatin1Char(','));
            if (format.objectType() == Rich_Text::Hidden_Object)
                line += QStringLiteral("<hidden%1 %2>")
                            .arg(format.intProperty(Rich_Text::Hidden_Kind))
                            .arg(format.hasProperty(QTextFormat::ImageName)
                                     ? Picture(format.toImageFormat())
                                     : format.stringProperty(Rich_Text::Hidden_Text).replace(u'\n', u'|'))
                            .repeated(it.fragment().length());
            else
                line += format.isImageFormat() ? Picture(format.toImageFormat()).repeated(it.fragment().length())
                                               : it.fragment().text();
        }
        if (line.isEmpty() && !block.charFormat().anchorNames().isEmpty())
            line = u'@' + block.charFormat().anchorNames().join(u',');
        return line;
    }

    QString Properties(const QTextCharFormat &format) const
    {
        const QFont base = m_document.defaultFont();
        const QFont font = format.font().resolve(base);
        QString all = font.family() == base.family() ? QString() : QLatin1Char(' ') + font.family();
        all += font.pointSizeF() == 12 ? QString() : QStringLiteral(" %1pt").arg(font.pointSizeF());
        all += If(font.bold(), "b") + If(font.italic(), "i") + If(font.strikeOut(), "strike") +
               If(font.capitalization() == QFont::AllUppercase, "caps") +
               If(font.capitalization() == QFont::SmallCaps, "scaps") +
               If(format.verticalAlignment() == QTextCharFormat::AlignSuperScript, "super") +
               If(format.verticalAlignment() == QTextCharFormat::AlignSubScript, "sub");
        if (format.underlineStyle() != QTextCharFormat::NoUnderline)
            all += QStringLiteral(" u%1").arg(format.underlineStyle()) +
                   Number("kind", format.intProperty(Rich_Text::Underline_Property));
        if (format.underlineColor().isValid())
            all += Color("u", format.underlineColor());
        all += Color("color", format.foreground()) + Color("back", format.background());
        all += Number("spacing", font.letterSpacing());
        all += Number("stretch", font.stretch() == 100 ? 0 : font.stretch());
        if (format.anchorHref().isEmpty())
            return all;
        return all + QLatin1String(" ->") + format.anchorHref() + format.toolTip();
    }

    QString Picture(const QTextImageFormat &format) const
    {
        const QVariant resource = m_document.resource(QTextDocument::ImageResource, QUrl(format.name()));
        const QByteArray hash = QCryptographicHash::hash(resource.toByteArray(), QCryptographicHash::Md5);
        const QRectF part = format.property(Rich_Text::Picture_Part).toRectF();
        const QString cut = part.isEmpty() ? QString()
                                           : QStringLiteral(" %1,%2,%3,%4")
                                                 .arg(part.x(), 0, 'f', 2)
                                                 .arg(part.y(), 0, 'f', 2)
                                                 .arg(part.width(), 0, 'f', 2)
                                                 .arg(part.height(), 0, 'f', 2);
        return QStringLiteral("<picture%1%2%3 %4>")
            .arg(Number("w", format.width()), Number("h", format.height()), cut, QLatin1String(hash.toHex().left(8)));
    }

    void Table(const QTextTable &table)
    {
        const QTextTableFormat format = table.format();
        QString line = QStringLiteral("T %1x%2").arg(table.rows()).arg(table.columns());
        line += Number("border", format.border()) + Number("padding", format.cellPadding()) +
                Number("spacing", format.cellSpacing()) + Number("header", format.headerRowCount()) +
                Number("left", format.leftMargin()) +
                If(format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore, "page") +
                If(format.alignment() & Qt::AlignHCenter, "center") + If(format.alignment() & Qt::AlignRight, "right");
        line += format.border() > 0 ? Color("line", format.borderBrush()) : QString();
        for (const QTextLength &width : format.columnWidthConstraints())
            line += QStringLiteral(" w%1/%2").arg(width.rawValue()).arg(width.type());
        m_lines += m_indent + line;
        for (int row = 0; row < table.rows(); ++row) {
            for (int column = 0; column < table.columns(); ++column)
                Cell(table.cellAt(row, column), row, column);
        }
    }

    void Cell(const QTextTableCell &cell, int row, int column)
    {
        if (cell.row() != row || cell.column() != column)
            return;
        QString line = QStringLiteral("C %1,%2").arg(row).arg(column);
        if (cell.rowSpan() > 1 || cell.columnSpan() > 1)
            line += QStringLiteral(" %1x%2").arg(cell.rowSpan()).arg(cell.columnSpan());
        line += Color("back", cell.format().background()) +
                If(cell.format().verticalAlignment() == QTextCharFormat::AlignMiddle, "middle") +
                If(cell.format().verticalAlignment() == QTextCharFormat::AlignBottom, "bottom") +
                Borders(cell.format());
        m_lines += m_indent + line;
        m_indent += QLatin1Char(' ');
        Frame(cell.begin(), cell.end());
        m_indent.chop(1);
    }

    const QTextDocument &m_document;
    QStringList m_lines;
    QString m_indent;
    QList<const QTextList *> m_lists;
};

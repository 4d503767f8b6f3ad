// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/epub_page.h"

#include "exchange/xml_text.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"

#include <QFont>
#include <QMap>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <cmath>

namespace
{
constexpr int Deepest_Heading = 6;
constexpr double Pixels_Of_An_Em = 16;

QString Colour(const QBrush &brush)
{
    return brush.color().name(QColor::HexRgb);
}

/// A style attribute of these parts, those that are "" left out.
QString Style(QStringList parts)
{
    parts.removeAll({});
    return parts.isEmpty() ? QString() : QStringLiteral(" style=\"") + parts.join(u';') + u'"';
}

QString Ems(const char *property, double pixels)
{
    if (std::abs(pixels) < 1)
        return {};
    const double ems = std::clamp(pixels / Pixels_Of_An_Em, -20.0, 20.0);
    return QLatin1String(property) + QString::number(ems, 'f', 2) + QLatin1String("em");
}

QString Block_Style(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    const Qt::Alignment align = format.alignment();
    const bool isItem = block.textList() != nullptr;
    return Style({align & Qt::AlignHCenter   ? QStringLiteral("text-align:center")
                  : align & Qt::AlignJustify ? QStringLiteral("text-align:justify")
                  : align & Qt::AlignRight   ? QStringLiteral("text-align:right")
                                             : QString(),
                  isItem ? QString() : Ems("margin-left:", format.leftMargin() + format.indent() * 40.0),
                  isItem ? QString() : Ems("text-indent:", format.textIndent()),
                  format.background().style() == Qt::SolidPattern
                      ? QStringLiteral("background-color:") + Colour(format.background())
                      : QString()});
}

/// The tags around text of a format, from the outside.
QList<const char *> Tags_Of(const QTextCharFormat &format, bool isBoldAnyway)
{
    struct Tag {
        bool isSet;
        const char *name;
    };
    const bool isLink = format.isAnchor() && !format.anchorHref().isEmpty();
    const std::array<Tag, 6> tags{{{format.fontWeight() > QFont::Medium && !isBoldAnyway, "b"},
                                   {format.fontItalic(), "i"},
                                   {format.fontUnderline() && !isLink, "u"},
                                   {format.fontStrikeOut(), "s"},
                                   {format.verticalAlignment() == QTextCharFormat::AlignSubScript, "sub"},
                                   {format.verticalAlignment() == QTextCharFormat::AlignSuperScript, "sup"}}};
    QList<const char *> names;
    for (const Tag &tag : tags) {
        if (tag.isSet)
            names << tag.name;
    }
    return names;
}

/// How an ordered list counts, as its attribute says it; nullptr for one that has signs.
const char *Counting(const QTextList &list)
{
    switch (list.format().style()) {
    case QTextListFormat::ListDecimal:
        return "1";
    case QTextListFormat::ListLowerAlpha:
        return "a";
    case QTextListFormat::ListUpperAlpha:
        return "A";
    case QTextListFormat::ListLowerRoman:
        return "i";
    case QTextListFormat::ListUpperRoman:
        return "I";
    default:
        return nullptr;
    }
}

/// The size in points that most of a document's text has: the reader's own size stands for it.
double Usual_Size(const QTextDocument &document)
{
    QMap<double, qint64> lengths;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it)
            lengths[it.fragment().charFormat().fontPointSize()] += it.fragment().length();
    lengths.remove(0);
    const auto most = std::max_element(lengths.cbegin(), lengths.cend());
    return most == lengths.cend() ? std::max(document.defaultFont().pointSizeF(), 1.0) : std::max(most.key(), 1.0);
}
} // namespace

Epub_Page::Epub_Page(const QTextDocument &document, const Callbacks &callbacks)
    : m_document(document), m_callbacks(callbacks), m_usualSize(Usual_Size(document))
{
}

QString Epub_Page::Write(const QString &title, const QString &language)
{
    Note_Anchors();
    m_out = QStringLiteral("<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE html>\n"
                           "<html xmlns=\"http://www.w3.org/1999/xhtml\" xml:lang=\"%1\" lang=\"%1\">\n<head>\n"
                           "<title>%2</title>\n<link rel=\"stylesheet\" type=\"text/css\" href=\"style.css\"/>\n"
                           "</head>\n<body>\n<h1>%3</h1>\n")
                .arg(language, title.trimmed().isEmpty() ? QStringLiteral("-") : Xml_Text(title), Xml_Text(title));
    Write_Flow(m_document.rootFrame()->begin(), m_document.rootFrame()->end());
    return m_out + QLatin1String("</body>\n</html>\n");
}

/// Places get ids of their own: their names may be anything.
void Epub_Page::Note_Anchors()
{
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
        for (auto it = block.begin(); !it.atEnd(); ++it)
            for (const QString &name : it.fragment().charFormat().anchorNames()) {
                if (!name.isEmpty() && !m_anchors.contains(name))
                    m_anchors.insert(name, QStringLiteral("place-%1").arg(m_anchors.size() + 1));
            }
}

void Epub_Page::Write_Flow(QTextFrame::iterator begin, const QTextFrame::iterator &end)
{
    const QList<Open_List> around = std::exchange(m_lists, {});
    bool isBehindTable = false; // there a text document always has a paragraph
    for (; begin != end; ++begin) {
        if (const auto *table = qobject_cast<const QTextTable *>(begin.currentFrame())) {
            Close_Lists(0);
            Write_Table(*table);
        } else if (const QTextFrame *frame = begin.currentFrame()) {
            Close_Lists(0);
            Write_Flow(frame->begin(), frame->end());
        } else if (begin.currentBlock().isValid() && !(isBehindTable && begin.currentBlock().length() <= 1)) {
            Write_Block(begin.currentBlock());
        }
        isBehindTable = begin.currentFrame() != nullptr;
    }
    Close_Lists(0);
    m_lists = around;
}

void Epub_Page::Write_Table(const QTextTable &table)
{
    m_out += QLatin1String(table.format().border() > 0 ? "<table class=\"lined\">" : "<table>");
    for (int row = 0; row < table.rows(); ++row) {
        m_out += QLatin1String("<tr>");
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.row() != row || cell.column() != column)
                continue; // a part of one before
            const QString name = QLatin1String(row < table.format().headerRowCount() ? "th" : "td");
            m_out += u'<' + name;
            if (cell.columnSpan() > 1)
                m_out += QStringLiteral(" colspan=\"%1\"").arg(cell.columnSpan());
            if (cell.rowSpan() > 1)
                m_out += QStringLiteral(" rowspan=\"%1\"").arg(std::min(cell.rowSpan(), table.rows() - row));
            if (cell.format().background().style() == Qt::SolidPattern)
                m_out += Style({QStringLiteral("background-color:") + Colour(cell.format().background())});
            m_out += u'>';
            Write_Flow(cell.begin(), cell.end());
            m_out += QLatin1String("</") + name + u'>';
        }
        m_out += QLatin1String("</tr>");
    }
    m_out += QLatin1String("</table>\n");
}

void Epub_Page::Write_Block(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    if (const QTextList *list = block.textList())
        return Write_Item(block, *list);
    Close_Lists(0);
    if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth)) {
        m_out += QLatin1String("<hr/>\n");
        return;
    }
    if (block.length() <= 1 && format.boolProperty(Rich_Text::Filler))
        return;
    const int level = format.headingLevel();
    const QString name =
        level > 0 ? QStringLiteral("h%1").arg(std::min(level + 1, Deepest_Heading)) : QStringLiteral("p");
    m_out += u'<' + name + Block_Style(block) +
             QLatin1String(block.textDirection() == Qt::RightToLeft ? " dir=\"rtl\">" : ">");
    Write_Content(block);
    m_out += QLatin1String("</") + name + QLatin1String(">\n");
}

void Epub_Page::Begin_List(const QTextList &list)
{
    const char *counting = Counting(list);
    const int start = std::max(list.format().intProperty(Rich_Text::List_Start), 1);
    const bool isKept = list.format().style() == Rich_Text::Kept_Labels;
    if (counting != nullptr)
        m_out += QStringLiteral("<ol type=\"%1\"").arg(QLatin1String(counting)) +
                 (start > 1 ? QStringLiteral(" start=\"%1\">").arg(start) : QStringLiteral(">"));
    else
        m_out += QLatin1String(isKept ? "<ul class=\"labelled\">" : "<ul>");
    m_lists.append({&list, list.format().indent(), counting != nullptr ? "</ol>" : "</ul>"});
}

/// Closes the innermost lists, with the items that are open in them.
void Epub_Page::Close_Lists(qsizetype left)
{
    while (m_lists.size() > left)
        m_out += QLatin1String("</li>") + QLatin1String(m_lists.takeLast().end) +
                 QLatin1String(m_lists.isEmpty() ? "\n" : "");
}

/// An item stays open until the next one: a list that is further in stands inside it.
void Epub_Page::Write_Item(const QTextBlock &block, const QTextList &list)
{
    const int indent = list.format().indent();
    qsizetype left = m_lists.size();
    while (left > 0 && (m_lists[left - 1].indent > indent ||
                        (m_lists[left - 1].indent == indent && m_lists[left - 1].list != &list)))
        --left;
    Close_Lists(left);
    if (!m_lists.isEmpty() && m_lists.last().list == &list)
        m_out += QLatin1String("</li>");
    else
        Begin_List(list);
    m_out += QLatin1String("<li") + Block_Style(block) + u'>';
    if (list.format().style() == Rich_Text::Kept_Labels)
        m_out += Xml_Text(Rich_Text::Item_Label(block)) + u' ';
    Write_Content(block);
}

void Epub_Page::Write_Content(const QTextBlock &block)
{
    const bool isHeading = block.blockFormat().headingLevel() > 0;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QTextCharFormat format = fragment.charFormat();
        if (format.objectType() == Rich_Text::Hidden_Object)
            continue;
        Switch_Link(format.isAnchor() ? format.anchorHref() : QString(), it);
        Write_Anchors(format);
        Write_Fragment(fragment, isHeading);
    }
    Switch_Link({}, block.end());
}

void Epub_Page::Write_Anchors(const QTextCharFormat &format)
{
    for (const QString &name : format.anchorNames()) {
        const QString id = m_anchors.value(name);
        if (id.isEmpty() || m_written.contains(id))
            continue;
        m_written.insert(id);
        m_out += QStringLiteral("<span id=\"%1\"></span>").arg(id);
    }
}

QString Epub_Page::Address_Of(const QString &target, const QString &words) const
{
    if (!target.startsWith(u'#'))
        return m_callbacks.link(target, words);
    const QString id = m_anchors.value(target.mid(1));
    return id.isEmpty() ? QString() : u'#' + id;
}

/// Ends the link that is open where another one begins, or none.
void Epub_Page::Switch_Link(const QString &target, const QTextBlock::iterator &from)
{
    if (target == m_target)
        return;
    if (std::exchange(m_isLinkOpen, false))
        m_out += QLatin1String("</a>");
    m_target = target;
    if (target.isEmpty())
        return;
    QString words;
    for (auto it = from; !it.atEnd() && it.fragment().charFormat().anchorHref() == target; ++it)
        words += it.fragment().text();
    const QString address = Address_Of(target, words.remove(QChar::ObjectReplacementCharacter).simplified());
    m_isLinkOpen = !address.isEmpty();
    if (m_isLinkOpen)
        m_out += QStringLiteral("<a href=\"") + Xml_Text(address) + QLatin1String("\">");
}

void Epub_Page::Write_Fragment(const QTextFragment &fragment, bool isBoldAnyway)
{
    const QTextCharFormat format = fragment.charFormat();
    if (!format.isImageFormat())
        return Write_Text(fragment.text(), format, isBoldAnyway);
    for (int i = 0; i < fragment.length(); ++i)
        Write_Picture(format.toImageFormat());
}

void Epub_Page::Write_Text(const QString &text, const QTextCharFormat &format, bool isBoldAnyway)
{
    const double size = format.fontPointSize() / m_usualSize;
    const bool hasSize = format.fontPointSize() > 0 && std::abs(size - 1) > 0.05 && !isBoldAnyway;
    const bool isLink = format.isAnchor() && !format.anchorHref().isEmpty();
    const QString style =
        Style({format.foreground().style() == Qt::SolidPattern && !isLink
                   ? QStringLiteral("color:") + Colour(format.foreground())
                   : QString(),
               format.background().style() == Qt::SolidPattern
                   ? QStringLiteral("background-color:") + Colour(format.background())
                   : QString(),
               hasSize ? QStringLiteral("font-size:%1em").arg(std::clamp(size, 0.3, 8.0), 0, 'f', 2) : QString()});
    const QList<const char *> tags = Tags_Of(format, isBoldAnyway);
    QString shown = Xml_Text(text);
    shown.remove(QChar::ObjectReplacementCharacter).replace(QChar::LineSeparator, QLatin1String("<br/>"));
    if (shown.isEmpty())
        return;
    m_out += style.isEmpty() ? QString() : QStringLiteral("<span") + style + u'>';
    for (const char *tag : tags)
        m_out += u'<' + QLatin1String(tag) + u'>';
    m_out += shown;
    for (qsizetype i = tags.size() - 1; i >= 0; --i)
        m_out += QLatin1String("</") + QLatin1String(tags[i]) + u'>';
    m_out += QLatin1String(style.isEmpty() ? "" : "</span>");
}

void Epub_Page::Write_Picture(const QTextImageFormat &format)
{
    const QString address = m_callbacks.picture(format);
    const QString words = format.stringProperty(QTextFormat::ImageAltText);
    if (address.isEmpty()) {
        m_out += words.isEmpty() ? QString() : u'[' + Xml_Text(words) + u']';
        return;
    }
    m_out += QStringLiteral("<img src=\"%1\" alt=\"%2\"").arg(address, Xml_Text(words));
    constexpr double Largest = 10'000;
    if (format.width() >= 1 && format.height() >= 1)
        m_out += QStringLiteral(" width=\"%1\" height=\"%2\"")
                     .arg(std::lround(std::min(format.width(), Largest)))
                     .arg(std::lround(std::min(format.height(), Largest)));
    m_out += QLatin1String("/>");
}

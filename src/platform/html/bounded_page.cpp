// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/html/bounded_page.h"

#include "platform/html/style_bounds.h"
#include "platform/html/table_bounds.h"

#include <QHash>
#include <QRegularExpression>
#include <QStringList>

namespace Html
{
namespace
{
constexpr int Most_Tags = 200'000;
constexpr qsizetype Deepest = 60; // of tags within tags
constexpr qsizetype Most_Style = 32 * 1024;
constexpr qsizetype Most_Matches = 5'000'000; // every rule is held against every tag
constexpr qsizetype Least_Style = 1024;       // each sheet costs, however short it is

enum class Shape {
    Holding, ///< has an end tag
    Single,  ///< has none
    Loose,   ///< may end where another begins
    Table,
    Row,
    Cell,
    Style,  ///< its content is a style sheet
    Skipped ///< goes with its content
};

const QHash<QString, Shape> &Tags()
{
    static const QHash<QString, Shape> tags = [] {
        QHash<QString, Shape> rows;
        const auto add = [&](Shape shape, const char *names) {
            for (const QString &name : QString::fromLatin1(names).split(QLatin1Char(' ')))
                rows.insert(name, shape);
        };
        add(Shape::Holding, "a address b big blockquote body caption center cite code dfn div dl em font h1 h2 h3 h4 "
                            "h5 h6 head html i kbd nobr ol pre qt s samp small span strong sub sup title tt u ul var");
        add(Shape::Single, "br hr img meta");
        add(Shape::Loose, "p li dt dd tbody thead tfoot");
        add(Shape::Table, "table");
        add(Shape::Row, "tr");
        add(Shape::Cell, "td th");
        add(Shape::Style, "style");
        add(Shape::Skipped, "script template iframe svg math xml");
        return rows;
    }();
    return tags;
}

/// Attributes that are kept: with the largest number that they may hold, 0 for text.
const QHash<QString, double> &Attributes()
{
    static const QHash<QString, double> attributes = [] {
        QHash<QString, double> rows{{QStringLiteral("width"), 4000},     {QStringLiteral("height"), 4000},
                                    {QStringLiteral("cellpadding"), 50}, {QStringLiteral("cellspacing"), 50},
                                    {QStringLiteral("border"), 50},      {QStringLiteral("colspan"), 256},
                                    {QStringLiteral("rowspan"), 1000},   {QStringLiteral("size"), 100},
                                    {QStringLiteral("start"), 1e6},      {QStringLiteral("value"), 1e6}};
        for (const char *text : {"align", "alt", "bgcolor", "bordercolor", "class", "color", "content", "dir", "face",
                                 "href", "id", "name", "src", "style", "title", "type", "valign"})
            rows.insert(QLatin1String(text), 0);
        return rows;
    }();
    return attributes;
}

/// References that could hide a word or a number of a style: ISO 8879 and the numeric ones.
QString Without_References(const QString &text)
{
    static const struct {
        const char *name;
        char sign;
    } named[] = {{"quot", '"'}, {"apos", '\''}, {"lt", '<'}, {"gt", '>'}, {"amp", '&'}};
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype end = text[i] == QLatin1Char('&') ? text.indexOf(QLatin1Char(';'), i) : -1;
        const QString word = end < 0 || end - i > 10 ? QString() : text.mid(i + 1, end - i - 1);
        uint sign = 0;
        if (word.startsWith(QLatin1String("#x"), Qt::CaseInsensitive))
            sign = word.mid(2).toUInt(nullptr, 16);
        else if (word.startsWith(QLatin1Char('#')))
            sign = word.mid(1).toUInt();
        for (const auto &row : named)
            sign = word == QLatin1String(row.name) ? static_cast<uint>(row.sign) : sign;
        if (sign == 0 || sign > 0xFFFF) {
            plain += text[i];
            continue;
        }
        plain += QChar(static_cast<char16_t>(sign));
        i = end;
    }
    return plain;
}

bool Is_Name(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}

/// A colour's name or its hexadecimal form; the toolkit complains of anything else.
bool Is_Color(const QString &value)
{
    static const QRegularExpression color(QStringLiteral("^(#[0-9a-fA-F]{3,8}|[a-zA-Z]+)$"));
    return color.match(value.trimmed()).hasMatch();
}

/// Reads a page tag by tag and writes what stays of it.
class Bounder
{
public:
    explicit Bounder(const QString &page) : m_page(page) {}

    QString Run()
    {
        m_out.reserve(m_page.size());
        while (m_at < m_page.size()) {
            const qsizetype next = m_page.indexOf(QLatin1Char('<'), m_at);
            m_out += QStringView(m_page).mid(m_at, next < 0 ? -1 : next - m_at);
            m_at = next < 0 ? m_page.size() : next;
            if (next >= 0)
                Take_Markup();
        }
        return m_out;
    }

private:
    void Take_Markup()
    {
        const QChar after = m_at + 1 < m_page.size() ? m_page[m_at + 1] : QChar();
        if (QStringView(m_page).mid(m_at).startsWith(QLatin1String("<!--")))
            return Skip_Past(QStringLiteral("-->"));
        if (after == QLatin1Char('!') || after == QLatin1Char('?'))
            return Skip_Past(QStringLiteral(">"));
        const bool ends = after == QLatin1Char('/');
        const qsizetype name = m_at + (ends ? 2 : 1);
        if (name >= m_page.size() || !Is_Name(m_page[name]) || m_page[name].isDigit()) {
            m_out += QStringLiteral("&lt;");
            ++m_at;
            return;
        }
        qsizetype end = name;
        while (end < m_page.size() && (Is_Name(m_page[end]) || m_page[end] == QLatin1Char(':')))
            ++end;
        m_at = end;
        const QString tag = m_page.mid(name, end - name).toLower();
        ends ? End_Tag(tag) : Begin_Tag(tag);
    }

    void Skip_Past(const QString &mark)
    {
        const qsizetype found = m_page.indexOf(mark, m_at);
        m_at = found < 0 ? m_page.size() : found + mark.size();
    }

    /// Content that is no page: everything up to the end tag of that name.
    QStringView Take_Raw(const QString &tag)
    {
        qsizetype end = m_page.indexOf(QStringLiteral("</") + tag, m_at, Qt::CaseInsensitive);
        end = end < 0 ? m_page.size() : end;
        const QStringView raw = QStringView(m_page).mid(m_at, end - m_at);
        m_at = end;
        if (end < m_page.size())
            Skip_Past(QStringLiteral(">"));
        return raw;
    }

    void Begin_Tag(const QString &tag)
    {
        const QString attributes = Take_Attributes();
        const auto known = Tags().constFind(tag);
        if (known == Tags().constEnd())
            return;
        switch (*known) {
        case Shape::Skipped:
            Take_Raw(tag);
            return;
        case Shape::Style:
            return Take_Style();
        case Shape::Table:
        case Shape::Row:
        case Shape::Cell:
            return Begin_Table_Tag(tag, *known, attributes);
        default:
            break;
        }
        const bool holds = *known == Shape::Holding;
        if (++m_tags > Most_Tags || (holds && m_open.size() >= Deepest)) {
            if (holds)
                ++m_dropped[tag];
            return;
        }
        if (holds)
            m_open.append(tag);
        m_out += QLatin1Char('<') + tag + attributes + QLatin1Char('>');
    }

    /// A table that is too deep or too large goes on as text: a cell leaves a blank, a row a line's end.
    void Begin_Table_Tag(const QString &tag, Shape shape, const QString &attributes)
    {
        const bool fits = ++m_tags <= Most_Tags && m_dropped.value(QStringLiteral("table")) == 0 &&
                          (shape == Shape::Table ? m_open.size() < Deepest && m_tables.Begin_Table()
                           : shape == Shape::Row ? m_tables.Begin_Row()
                                                 : m_tables.Begin_Cell(m_columns, m_rows));
        if (!fits) {
            m_out += shape == Shape::Row ? QStringLiteral("<br>") : QStringLiteral(" ");
            ++m_dropped[tag];
            return;
        }
        if (shape == Shape::Table)
            m_open.append(tag);
        m_out += QLatin1Char('<') + tag + attributes + QLatin1Char('>');
    }

    void Take_Style()
    {
        const QStringView raw = Take_Raw(QStringLiteral("style"));
        m_style += raw.size() + Least_Style;
        m_rules += raw.count(QLatin1Char('{')) + raw.count(QLatin1Char(','));
        if (m_style > Most_Style || m_rules * m_page.count(QLatin1Char('<')) > Most_Matches)
            return;
        QString sheet = Bounded_Style(raw.toString());
        sheet.remove(QLatin1Char('<'));
        m_out += QStringLiteral("<style>") + sheet + QStringLiteral("</style>");
    }

    void End_Tag(const QString &tag)
    {
        Skip_Past(QStringLiteral(">"));
        const auto known = Tags().constFind(tag);
        if (known == Tags().constEnd() || *known == Shape::Single || *known == Shape::Skipped || *known == Shape::Style)
            return;
        if (int &dropped = m_dropped[tag]; dropped > 0) {
            --dropped;
            return;
        }
        if (*known == Shape::Holding || *known == Shape::Table) {
            const qsizetype open = m_open.lastIndexOf(tag);
            if (open < 0)
                return;
            for (qsizetype i = open; i < m_open.size(); ++i) {
                if (m_open[i] == QLatin1String("table"))
                    m_tables.End_Table();
            }
            m_open.remove(open, m_open.size() - open);
        }
        m_out += QStringLiteral("</") + tag + QLatin1Char('>');
    }

    /// Attributes up to the tag's end (HTML 4.01, 3.2.2), as they may stand in the page that is written.
    QString Take_Attributes()
    {
        m_columns = m_rows = 1;
        QString kept;
        while (m_at < m_page.size() && m_page[m_at] != QLatin1Char('>')) {
            const qsizetype begin = m_at;
            while (m_at < m_page.size() && (Is_Name(m_page[m_at]) || m_page[m_at] == QLatin1Char('-')))
                ++m_at;
            if (m_at == begin) {
                ++m_at;
                continue;
            }
            const QString name = m_page.mid(begin, m_at - begin).toLower();
            kept += Kept_Attribute(name, Take_Value());
        }
        ++m_at;
        return kept;
    }

    QString Take_Value()
    {
        const auto skipBlanks = [&] {
            while (m_at < m_page.size() && m_page[m_at].isSpace())
                ++m_at;
        };
        skipBlanks();
        if (m_at >= m_page.size() || m_page[m_at] != QLatin1Char('='))
            return {};
        ++m_at;
        skipBlanks();
        if (m_at >= m_page.size())
            return {};
        const QChar quote = m_page[m_at];
        const qsizetype begin = m_at + 1;
        const qsizetype end = quote == u'"' || quote == u'\'' ? m_page.indexOf(quote, begin) : -1;
        if (end >= 0) {
            m_at = end + 1;
            return m_page.mid(begin, end - begin);
        }
        const qsizetype first = m_at;
        while (m_at < m_page.size() && !m_page[m_at].isSpace() && m_page[m_at] != QLatin1Char('>'))
            ++m_at;
        return m_page.mid(first, m_at - first);
    }

    QString Kept_Attribute(const QString &name, const QString &written)
    {
        const auto row = Attributes().constFind(name);
        if (row == Attributes().constEnd())
            return {};
        QString value = written;
        if (*row > 0)
            value = Bounded_Number(Without_References(written), *row);
        else if (name == QLatin1String("style"))
            value = Bounded_Style(Without_References(written)).replace(QLatin1Char('&'), QLatin1String("&amp;"));
        else if (name.endsWith(QLatin1String("color")) && !Is_Color(written))
            return {};
        if (name == QLatin1String("colspan"))
            m_columns = std::max(1, value.toInt());
        if (name == QLatin1String("rowspan"))
            m_rows = std::max(1, value.toInt());
        value.replace(QLatin1Char('"'), QLatin1String("&quot;"));
        value.replace(QLatin1Char('<'), QLatin1String("&lt;"));
        return value.isEmpty() ? QString() : QStringLiteral(" %1=\"%2\"").arg(name, value);
    }

    const QString &m_page;
    qsizetype m_at = 0;
    QString m_out;
    QStringList m_open;            ///< tags that have to be ended
    QHash<QString, int> m_dropped; ///< begun tags that were left out, whose end tags go too
    Table_Bounds m_tables;
    int m_columns = 1; ///< of the tag that was read last
    int m_rows = 1;
    int m_tags = 0;
    qsizetype m_style = 0; ///< signs of the style sheets so far
    qsizetype m_rules = 0;
};
} // namespace

QString Bounded(const QString &page)
{
    return Bounder(page).Run();
}
} // namespace Html

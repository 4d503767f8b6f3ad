// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/markdown.h"

#include "exchange/markdown_line.h"
#include "exchange/outgoing_page.h"
#include "platform/richtext/kept_properties.h"
#include "platform/richtext/list_labels.h"

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>

namespace
{
/// Puts right what begins a line and would be taken for something else.
QString With_Plain_Begins(const QString &text)
{
    static const QRegularExpression sign(QStringLiteral("^(#{1,6}(?=[ \\t]|$)|[-+=](?=[-+= \\t]|$)|>)"));
    static const QRegularExpression number(QStringLiteral("^(\\d{1,9})([.)])(?=[ \\t]|$)"));
    static const QRegularExpression blanks(QStringLiteral("^[ \\t]+"));
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines) {
        if (const auto found = blanks.match(line); found.hasMatch())
            line.replace(0, found.capturedLength(), QStringLiteral("&nbsp;").repeated(found.capturedLength()));
        line.replace(sign, QStringLiteral("\\\\1"));
        line.replace(number, QStringLiteral("\\1\\\\2"));
    }
    return lines.join(QLatin1Char('\n'));
}

class Writer
{
public:
    explicit Writer(const QTextDocument &document) : m_document(document) {}
    QString Write()
    {
        Write_Frame(*m_document.rootFrame());
        for (const Mime::Picture &picture : m_pictures)
            Add(QStringLiteral("[%1]: %2").arg(picture.name, Data_Address(picture)), Part::Definition);
        return m_text.isEmpty() ? m_text : m_text + QLatin1Char('\n');
    }

private:
    enum class Part { None, Paragraph, Item, Code, Definition };

    void Add(const QString &text, Part part);
    void Write_Frame(const QTextFrame &frame);
    void Write_Block(const QTextBlock &block);
    void Write_Heading(QString line, int level);
    void Write_Item(const QTextBlock &block, const QTextList &list);
    void Write_Code(const QTextBlock &block);
    void Write_Table(const QTextTable &table);
    [[nodiscard]] QString Cell_Text(const QTextTableCell &cell);
    [[nodiscard]] QString Line(const QTextBlock &block, const QString &lineEnd);

    const QTextDocument &m_document;
    QString m_text;
    Part m_last = Part::None;
    QList<int> m_levels; ///< indentations of the list items that stand open
    QList<Mime::Picture> m_pictures;
};

/// Parts are parted by an empty line; items of a list, lines of code and definitions follow each other.
void Writer::Add(const QString &text, Part part)
{
    if (m_last == Part::Code && part != Part::Code)
        m_text += QStringLiteral("\n```");
    if (m_last != Part::None)
        m_text += part == m_last && part != Part::Paragraph ? QStringLiteral("\n") : QStringLiteral("\n\n");
    m_text += text;
    m_last = part;
    if (part != Part::Item)
        m_levels.clear();
}

void Writer::Write_Frame(const QTextFrame &frame)
{
    for (auto it = frame.begin(); !it.atEnd(); ++it) {
        if (const auto *table = qobject_cast<QTextTable *>(it.currentFrame()))
            Write_Table(*table);
        else if (it.currentFrame() != nullptr)
            Write_Frame(*it.currentFrame());
        else
            Write_Block(it.currentBlock());
    }
    if (m_last == Part::Code) {
        m_text += QStringLiteral("\n```");
        m_last = Part::Paragraph;
    }
}

QString Writer::Line(const QTextBlock &block, const QString &lineEnd)
{
    const auto picture = [this](const QTextImageFormat &format) {
        Mime::Picture shown = Shown_Picture(m_document, format.name());
        QString words = Markdown_Line::Escaped(format.stringProperty(QTextFormat::ImageAltText));
        if (shown.bytes.isEmpty())
            return words;
        const auto same = [&](const Mime::Picture &one) {
            return one.bytes == shown.bytes;
        };
        const auto known = std::find_if(m_pictures.cbegin(), m_pictures.cend(), same);
        const auto number = std::distance(m_pictures.cbegin(), known) + 1;
        shown.name = QStringLiteral("picture%1").arg(number);
        if (known == m_pictures.cend())
            m_pictures.append(shown);
        return QStringLiteral("![%1][%2]").arg(words, shown.name);
    };
    return Markdown_Line::Of(block, lineEnd, picture);
}

void Writer::Write_Block(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    if (format.nonBreakableLines() || format.hasProperty(QTextFormat::BlockCodeFence))
        return Write_Code(block);
    if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth))
        return Add(QStringLiteral("---"), Part::Paragraph);
    const QString line = Line(block, QStringLiteral("\\\n"));
    if (format.boolProperty(Rich_Text::Rest_Of_Paragraph) && m_last == Part::Paragraph) {
        m_text += line;
        return;
    }
    if (line.trimmed().isEmpty())
        return;
    if (const QTextList *list = block.textList())
        return Write_Item(block, *list);
    const int level = std::clamp(format.headingLevel(), 0, 6);
    if (level > 0)
        return Write_Heading(Line(block, QStringLiteral(" ")), level);
    const QString quote = QStringLiteral("> ").repeated(format.intProperty(QTextFormat::BlockQuoteLevel));
    QString text = With_Plain_Begins(line);
    Add(quote + text.replace(QLatin1Char('\n'), QLatin1Char('\n') + quote), Part::Paragraph);
}

/// A heading has one line, and number signs at its end would not be shown.
void Writer::Write_Heading(QString line, int level)
{
    if (line.endsWith(QLatin1Char('#')))
        line.insert(line.size() - 1, QLatin1Char('\\'));
    Add(QString(level, QLatin1Char('#')) + QLatin1Char(' ') + line, Part::Paragraph);
}

/// An item stands four blanks further in than the one above that it belongs to.
void Writer::Write_Item(const QTextBlock &block, const QTextList &list)
{
    constexpr int Step = 4;
    const int indent = list.format().indent() + block.blockFormat().indent();
    while (!m_levels.isEmpty() && m_levels.last() > indent)
        m_levels.removeLast();
    if (m_levels.isEmpty() || m_levels.last() < indent)
        m_levels.append(indent);
    const auto begin = QString(static_cast<int>(m_levels.size() - 1) * Step, QLatin1Char(' '));
    static const QRegularExpression number(QStringLiteral("(\\d{1,9})\\D*$"));
    const QString label = Rich_Text::Item_Label(block);
    const auto found = number.match(label);
    QString mark = QStringLiteral("- ");
    if (found.hasMatch())
        mark = found.captured(1) + QStringLiteral(". ");
    else if (block.blockFormat().marker() != QTextBlockFormat::MarkerType::NoMarker)
        mark += block.blockFormat().marker() == QTextBlockFormat::MarkerType::Checked ? QStringLiteral("[x] ")
                                                                                      : QStringLiteral("[ ] ");
    QString text = With_Plain_Begins(Line(block, QStringLiteral("\\\n")));
    text.replace(QLatin1Char('\n'), QLatin1Char('\n') + begin + QString(Step, QLatin1Char(' ')));
    Add(begin + mark + text, Part::Item);
}

void Writer::Write_Code(const QTextBlock &block)
{
    QString line = block.text();
    line.replace(QChar::LineSeparator, QLatin1Char('\n'));
    line.replace(QLatin1String("```"), QLatin1String("` ` `")); // nothing in it ends it
    Add(m_last == Part::Code ? line : QStringLiteral("```\n") + line, Part::Code);
}

/// All that a cell holds, on one line.
QString Writer::Cell_Text(const QTextTableCell &cell)
{
    QStringList lines;
    const int last = cell.lastCursorPosition().block().position();
    for (QTextBlock block = cell.firstCursorPosition().block(); block.isValid() && block.position() <= last;
         block = block.next()) {
        const QString line = Line(block, QStringLiteral("<br>")).trimmed();
        if (!line.isEmpty())
            lines << Rich_Text::Item_Label(block) + QString(block.textList() != nullptr ? 1 : 0, QLatin1Char(' ')) +
                         line;
    }
    return lines.join(QStringLiteral("<br>")).replace(QLatin1Char('|'), QLatin1String("\\|"));
}

void Writer::Write_Table(const QTextTable &table)
{
    const QString edge = QStringLiteral("|");
    QStringList rows;
    for (int row = 0; row < table.rows(); ++row) {
        QString text = edge;
        QString rule = edge;
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            const bool isOwn = cell.row() == row && cell.column() == column; // not the rest of one that spans more
            text += QLatin1Char(' ') + (isOwn ? Cell_Text(cell) : QString()) + QStringLiteral(" |");
            const Qt::Alignment align = cell.firstCursorPosition().blockFormat().alignment();
            rule += align & Qt::AlignHCenter ? QStringLiteral(" :---: |")
                    : align & Qt::AlignRight ? QStringLiteral(" ---: |")
                                             : QStringLiteral(" --- |");
        }
        rows << text;
        if (row == 0)
            rows << rule;
    }
    Add(rows.join(QLatin1Char('\n')), Part::Paragraph);
}
} // namespace

QString Markdown_Of(const QTextDocument &document)
{
    return Writer(document).Write();
}

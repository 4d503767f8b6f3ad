// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_fields.h"

#include "platform/richtext/rich_text.h"
#include "platform/richtext/rtf_page_texts.h"

#include <utility>

namespace Rtf
{
namespace
{
constexpr qsizetype longestSymbol = 200; // characters of a SYMBOL field's instruction

struct Symbol {
    int code = -1; ///< of Unicode or of a glyph, -1 for none
    bool isUnicode = false;
    QString font;
};

/// Arguments of a field's instruction: words apart by blanks, or in quotes, where "\" makes the next character plain.
QStringList Arguments(QStringView instruction)
{
    QStringList arguments;
    bool quoted = false, begun = false;
    for (qsizetype i = 0; i < instruction.size(); ++i) {
        const QChar c = instruction[i];
        if (c == u'"') {
            quoted = !quoted;
            if (quoted)
                arguments.append(QString());
            begun = quoted;
        } else if (!quoted && c.isSpace()) {
            begun = false;
        } else {
            if (!begun)
                arguments.append(QString());
            begun = true;
            const bool escape = quoted && c == u'\\' && i + 1 < instruction.size();
            arguments.last() += escape ? instruction[++i] : c;
        }
    }
    return arguments;
}

/// The sign that a SYMBOL field asks for. Its switches are in ECMA-376, part 1, 17.16.5.66.
Symbol Symbol_Of(const QString &instruction)
{
    Symbol symbol;
    if (instruction.size() > longestSymbol ||
        !QStringView(instruction).trimmed().startsWith(QLatin1String("SYMBOL "), Qt::CaseInsensitive))
        return symbol;
    const QStringList arguments = Arguments(instruction);
    bool isNumber = false;
    const int code = arguments.value(1).toInt(&isNumber, 0);
    if (!isNumber || code < 0x20 || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000))
        return symbol;
    symbol.code = code;
    symbol.isUnicode = arguments.contains(QLatin1String("\\u"), Qt::CaseInsensitive);
    if (const qsizetype font = arguments.indexOf(QLatin1String("\\f")); font >= 0)
        symbol.font = arguments.value(font + 1);
    return symbol;
}
} // namespace

void Field_Reader::Begin_Field()
{
    m_state.field = static_cast<int>(m_fields.size());
    m_fields.push_back({.instruction = {}, .outside = m_state.destination});
    if (m_state.closer == Closer::None)
        m_state.closer = Closer::Field;
}

void Field_Reader::Add_Instruction(QStringView text)
{
    if (m_state.field >= 0)
        m_fields[static_cast<std::size_t>(m_state.field)].instruction += text;
}

void Field_Reader::Field_Result()
{
    if (m_state.field < 0)
        return;
    Field &field = m_fields[static_cast<std::size_t>(m_state.field)];
    m_state.destination = field.outside;
    if (const char16_t mark = Page_Mark_Of(field.instruction); mark != 0 && field.outside == Destination::Page_Text) {
        m_page.Add_Mark(mark);
        return m_flow.Skip();
    }
    if (const Symbol symbol = Symbol_Of(field.instruction); symbol.code >= 0)
        return m_flow.Skip(); // the closer shows it
    if (!field.instruction.isEmpty()) {
        field.link = Link_Of(std::exchange(field.instruction, {}));
        m_model.losses |= field.link < 0 ? Rich_Text::Other_Fields : 0;
    }
    if (field.link >= 0)
        m_state.chr.link = field.link;
}

/// A field without a result that means anything shows a sign.
void Field_Reader::End_Field(const State &inner)
{
    const Symbol symbol = Symbol_Of(m_fields[static_cast<std::size_t>(inner.field)].instruction);
    if (symbol.code < 0)
        return;
    const bool isGlyph = !symbol.isUnicode && symbol.code < 0x100;
    const char16_t glyph = isGlyph ? Symbol_Glyph(static_cast<unsigned char>(symbol.code), symbol.font) : u'\0';
    if (isGlyph && (glyph & 0xF000) != 0xF000)
        return m_flow.Emit(QStringView(&glyph, 1));
    if (!isGlyph)
        return m_flow.Emit(QString::fromUcs4(reinterpret_cast<const char32_t *>(&symbol.code), 1));
    const char byte = static_cast<char>(symbol.code);
    QString text;
    Code_Pages().Append(text, QByteArrayView(&byte, 1), 1252);
    m_flow.Emit(text);
}

/// Index of the target of a HYPERLINK field, or -1. Its switches are in ECMA-376, part 1, 17.16.5.25.
int Field_Reader::Link_Of(const QString &instruction)
{
    const QStringList arguments = Arguments(instruction);
    if (arguments.isEmpty() || arguments.first().compare(QLatin1String("HYPERLINK"), Qt::CaseInsensitive) != 0)
        return -1;
    QString target, place, tip;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString &argument = arguments[i];
        if (argument == QLatin1String("\\l"))
            place = u'#' + arguments.value(++i);
        else if (argument == QLatin1String("\\o"))
            tip = arguments.value(++i);
        else if (argument == QLatin1String("\\t"))
            ++i;
        else if (!argument.startsWith(u'\\') || argument.size() > 2)
            target += argument;
    }
    target += place;
    if (target.isEmpty())
        return -1;
    const QString key = target + u'\n' + tip;
    const auto known = m_links.constFind(key);
    if (known != m_links.constEnd())
        return *known;
    const int index = static_cast<int>(m_model.links.size());
    m_model.links.push_back({.target = target, .tip = tip});
    m_links.insert(key, index);
    return index;
}
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/richtext/rtf_notes.h"

#include "platform/richtext/kept_properties.h"
#include "platform/richtext/rtf_writer.h"

#include <QDateTime>
#include <QTextCharFormat>
#include <QTextFragment>

#include <utility>

namespace Rtf
{
namespace
{
/// A date as RTF 1.9.1 packs it ("DTTM"): minute, hour, day, month, year from 1900, from the lowest bit.
QString Date_Text(const QString &packed)
{
    const auto bits = static_cast<quint32>(packed.toInt());
    const auto part = [bits](int from, int count) {
        return static_cast<int>(bits >> from & ((1U << count) - 1));
    };
    const QDateTime date(QDate(1900 + part(20, 9), part(16, 4), part(11, 5)), QTime(part(6, 5), part(0, 6)));
    return date.isValid() ? date.toString(QStringLiteral("yyyy-MM-dd hh:mm")) : QString();
}

/// Whether a note begins here that ends in the same paragraph, before its "]"; what is left of another is text.
bool Begins_Note(QTextBlock::iterator at)
{
    const int number = at.fragment().charFormat().intProperty(Rich_Text::Note_Number);
    if (number == 0 || !at.fragment().text().startsWith(Note_Opening))
        return false;
    while (!at.atEnd() && at.fragment().charFormat().intProperty(Rich_Text::Note_Number) == number)
        ++at;
    return !at.atEnd() && at.fragment().text().startsWith(u']');
}
} // namespace

void Set_Note(const Note &note, int number, QTextCharFormat &format)
{
    format.setProperty(Rich_Text::Note_Number, number);
    format.setProperty(Rich_Text::Note_Kind, static_cast<int>(note.kind));
    if (note.kind != Note_Kind::Comment)
        return;
    format.setProperty(Rich_Text::Note_Origin, QStringList(note.origin.begin(), note.origin.end()));
    if (!format.hasProperty(QTextFormat::AnchorHref))
        format.setToolTip(QString(note.origin[1] + u' ' + Date_Text(note.origin[2])).trimmed());
}

/// Opens or closes the group of a note. @returns how many characters its brackets are at the beginning of the fragment
qsizetype Writer::Switch_Note(const QTextBlock::iterator &at)
{
    const QTextFragment fragment = at.fragment();
    const int number = fragment.charFormat().intProperty(Rich_Text::Note_Number);
    if (number == std::exchange(m_note, number))
        return 0;
    const bool ends = std::exchange(m_inNote, false);
    if (ends)
        End_Note();
    m_inNote = Begins_Note(at);
    if (m_inNote)
        Begin_Note(fragment);
    return m_inNote ? Note_Opening.size() : ends ? 1 : 0;
}

void Writer::Begin_Note(const QTextFragment &bracket)
{
    const QTextCharFormat format = bracket.charFormat();
    const auto kind = static_cast<Note_Kind>(format.intProperty(Rich_Text::Note_Kind));
    Switch_Link({});
    Select(format, bracket.charFormatIndex());
    if (kind == Note_Kind::Comment) {
        const QStringList origin = format.property(Rich_Text::Note_Origin).toStringList();
        for (qsizetype i = 0; i < origin.size() && i < qsizetype(std::size(Note_Origin_Words)) - 1; ++i)
            Write_Origin(i, origin[i]);
        m_out += "\\chatn{\\*\\annotation";
        Write_Origin(2, origin.value(2));
        m_out += "\\pard\\plain";
    } else {
        m_out += kind == Note_Kind::Endnote ? "{\\super\\chftn}{\\footnote\\ftnalt" : "{\\super\\chftn}{\\footnote";
        m_out += "\\pard\\plain{\\super\\chftn}";
    }
    m_selected.clear(); // a group of its own in the one of the bracket
}

void Writer::End_Note()
{
    Switch_Link({});
    Close_Look();
    m_out += "}}";
}

void Writer::Write_Origin(qsizetype field, const QString &text)
{
    if (text.isEmpty())
        return;
    m_out += QByteArray("{\\*\\") + Note_Origin_Words[field] + ' ';
    Append_Escaped(m_out, text);
    m_out += '}';
}
} // namespace Rtf

// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/profile/profile.h"

#include "platform/errors/run_time_error.h"
#include "platform/files/paths.h"

#include <QStringConverter>
#include <algorithm>
#include <optional>

namespace Profile
{
namespace
{
const QByteArray Utf8_Mark = QByteArrayLiteral("\xEF\xBB\xBF");
const QString Line_End = QStringLiteral("\r\n");

/// Only these are blanks here: an ideographic space is a character of a value like any other.
bool Is_Blank(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\r';
}

QStringView Without_Blanks(QStringView text)
{
    while (!text.isEmpty() && Is_Blank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && Is_Blank(text.back()))
        text.chop(1);
    return text;
}

bool Same_Name(QStringView one, QStringView other)
{
    return one.compare(other, Qt::CaseInsensitive) == 0;
}

/// The lines of a text one after the other, told apart as section heads, keys and the rest.
class Line_Reader
{
public:
    enum class Kind { Section, Key, Other, Blank };

    explicit Line_Reader(QStringView text) : m_text(text) {}

    bool Next()
    {
        if (m_end >= m_text.size())
            return false;
        m_begin = m_end;
        const qsizetype feed = m_text.indexOf(u'\n', m_begin);
        m_end = feed < 0 ? m_text.size() : feed + 1;
        Tell_Kind(Without_Blanks(Content()));
        return true;
    }

    [[nodiscard]] Kind What() const { return m_kind; }
    [[nodiscard]] QStringView Name() const { return m_name; }
    /// Behind the line, its end included.
    [[nodiscard]] qsizetype End() const { return m_end; }
    /// Behind the equals sign of a key.
    [[nodiscard]] qsizetype Value_Begin() const { return m_begin + Content().indexOf(u'=') + 1; }
    /// Behind the last character that belongs to neither the line's end nor the next line.
    [[nodiscard]] qsizetype Value_End() const
    {
        const QStringView content = Content();
        return m_begin + content.size() - (content.endsWith(u'\r') ? 1 : 0);
    }
    [[nodiscard]] QString Value() const
    {
        QStringView value = Without_Blanks(m_text.sliced(Value_Begin(), Value_End() - Value_Begin()));
        const bool quoted =
            value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
        return (quoted ? value.sliced(1, value.size() - 2) : value).toString();
    }

private:
    [[nodiscard]] QStringView Content() const
    {
        QStringView line = m_text.sliced(m_begin, m_end - m_begin);
        if (line.endsWith(u'\n'))
            line.chop(1);
        return line;
    }

    void Tell_Kind(QStringView line)
    {
        m_kind = line.isEmpty() ? Kind::Blank : Kind::Other;
        if (line.isEmpty() || line.front() == u';')
            return;
        const bool head = line.front() == u'[';
        const qsizetype stop = line.indexOf(head ? u']' : u'=');
        if (stop < 0)
            return;
        m_kind = head ? Kind::Section : Kind::Key;
        m_name = Without_Blanks(head ? line.sliced(1, stop - 1) : line.first(stop));
    }

    QStringView m_text;
    QStringView m_name;
    qsizetype m_begin = 0;
    qsizetype m_end = 0;
    Kind m_kind = Kind::Other;
};

using Kind = Line_Reader::Kind;

bool Go_To_Section(Line_Reader &lines, QStringView section)
{
    while (lines.Next()) {
        if (lines.What() == Kind::Section && Same_Name(lines.Name(), section))
            return true;
    }
    return false;
}

/// What fits into one line: line ends become blanks, and what no text file holds is dropped.
QString One_Line(QString text)
{
    text.remove(QChar(u'\0'));
    text.replace(u'\r', u' ');
    text.replace(u'\n', u' ');
    return text;
}

QString As_Name(const QString &name)
{
    return Without_Blanks(One_Line(name)).toString();
}

/// `line` put in as a line of its own at `place`, which is a line's begin or the end of the text.
QString With_Line(QString text, qsizetype place, const QString &line)
{
    const bool open = place > 0 && text.at(place - 1) != u'\n';
    return text.insert(place, open ? Line_End + line + Line_End : line + Line_End);
}

QString With_Key(QString text, const QString &section, const QString &key, const QString &value)
{
    Line_Reader lines(text);
    if (!Go_To_Section(lines, section))
        return With_Line(text, text.size(),
                         QLatin1Char('[') + section + QLatin1Char(']') + Line_End + key + u'=' + value);
    qsizetype sectionEnd = lines.End(); // behind its last line that is not blank
    while (lines.Next() && lines.What() != Kind::Section) {
        if (lines.What() == Kind::Key && Same_Name(lines.Name(), key)) {
            const qsizetype begin = lines.Value_Begin();
            return text.replace(begin, lines.Value_End() - begin, value);
        }
        if (lines.What() != Kind::Blank)
            sectionEnd = lines.End();
    }
    return With_Line(text, sectionEnd, key + u'=' + value);
}

std::optional<QByteArray> Bytes_If_Present(const QString &path)
{
    try {
        return Files::Read_Bytes(path);
    } catch (const Run_Time_Error &error) {
        if (error.number == Error_Number::File_Not_Found)
            return std::nullopt;
        throw;
    }
}

bool Is_Utf8(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    static_cast<void>(QString(utf8(bytes)));
    return !utf8.hasError();
}

/// The text of a file. A stray byte spoils its own line only: where most lines beyond ASCII are UTF-8, each one that is
/// not is read by itself, and keeps its bytes when the file is written.
class Decoded_File
{
public:
    explicit Decoded_File(const QByteArray &bytes)
    {
        const QList<QByteArray> lines = bytes.split('\n');
        const auto foreign = std::count_if(lines.begin(), lines.end(), [](const auto &line) { return !Is_Utf8(line); });
        const auto beyond = std::count_if(lines.begin(), lines.end(), [](const QByteArray &line) {
            return std::any_of(line.begin(), line.end(), [](char letter) { return (letter & 0x80) != 0; });
        });
        if (foreign == 0 || 2 * foreign > beyond) {
            m_text = Files::Decode_Text(bytes);
            return;
        }
        QStringList texts;
        for (const QByteArray &line : lines) {
            texts << Files::Decode_Text(line);
            if (!Is_Utf8(line))
                m_kept.insert(texts.last(), line);
        }
        m_text = texts.join(u'\n');
    }

    [[nodiscard]] const QString &Text() const { return m_text; }
    /// The bytes of the text as it was changed.
    [[nodiscard]] QByteArray Bytes(const QString &text) const
    {
        if (m_kept.isEmpty())
            return text.toUtf8();
        QByteArrayList lines;
        for (const QString &line : text.split(u'\n'))
            lines << m_kept.value(line, line.toUtf8());
        return lines.join('\n');
    }

private:
    QString m_text;
    QHash<QString, QByteArray> m_kept; ///< by what was read in them
};

QString Text_If_Readable(const QString &path)
{
    try {
        return Decoded_File(Files::Read_Bytes(path)).Text();
    } catch (const Run_Time_Error &) {
        return {}; // to a reader of one key such a file has no keys
    }
}
} // namespace

QString Read(const QString &path, const QString &section, const QString &key)
{
    const QString text = Text_If_Readable(path);
    const QStringView wanted = Without_Blanks(key);
    Line_Reader lines(text);
    if (!Go_To_Section(lines, Without_Blanks(section)))
        return {};
    while (lines.Next() && lines.What() != Kind::Section) {
        if (lines.What() == Kind::Key && Same_Name(lines.Name(), wanted))
            return lines.Value();
    }
    return {};
}

void Write(const QString &path, const QString &section, const QString &key, const QString &value)
{
    const std::optional<QByteArray> old = Bytes_If_Present(path);
    const QByteArray before = old.value_or(QByteArray());
    const Decoded_File file(before);
    const QString text = With_Key(file.Text(), As_Name(section), As_Name(key), One_Line(value));
    const QByteArray after = (before.startsWith(Utf8_Mark) ? Utf8_Mark : QByteArray()) + file.Bytes(text);
    if (!old || after != before)
        Files::Write_Bytes(path, after);
}

Snapshot::Snapshot(const QString &path)
{
    const Decoded_File file(Files::Read_Bytes(path));
    Line_Reader lines(file.Text());
    Section *current = nullptr;
    while (lines.Next()) {
        if (lines.What() == Kind::Section) {
            const QString folded = lines.Name().toString().toCaseFolded();
            current = nullptr;
            if (m_sections.contains(folded))
                continue; // the first section of a name counts
            m_order += lines.Name().toString();
            current = &m_sections[folded];
            current->name = m_order.last();
        } else if (lines.What() == Kind::Key && current) {
            const QString name = lines.Name().toString();
            const QString folded = name.toCaseFolded();
            if (current->values.contains(folded))
                continue;
            current->keys += name;
            current->values.insert(folded, lines.Value());
        }
    }
}

QString Snapshot::Value(const QString &section, const QString &key) const
{
    const auto found = m_sections.constFind(section.toCaseFolded());
    return found == m_sections.constEnd() ? QString() : found->values.value(key.toCaseFolded());
}

bool Snapshot::Contains(const QString &section, const QString &key) const
{
    const auto found = m_sections.constFind(section.toCaseFolded());
    return found != m_sections.constEnd() && found->values.contains(key.toCaseFolded());
}

QStringList Snapshot::Sections() const
{
    return m_order;
}

QStringList Snapshot::Keys(const QString &section) const
{
    const auto found = m_sections.constFind(section.toCaseFolded());
    return found == m_sections.constEnd() ? QStringList() : found->keys;
}
} // namespace Profile

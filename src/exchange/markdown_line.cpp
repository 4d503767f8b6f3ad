// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/markdown_line.h"

#include <QTextBlock>
#include <QTextFragment>

namespace
{
/// How a run of text looks, as far as Markdown can say it.
struct Look {
    bool bold = false;
    bool italic = false;
    bool struck = false;
    bool underlined = false;
    bool fixed = false;
    QTextCharFormat::VerticalAlignment place = QTextCharFormat::AlignNormal;
    QString address; ///< of a link
    bool operator==(const Look &) const = default;
};

struct Run {
    Look look;
    QString text;
    bool isReady = false; ///< the text is Markdown
};

Look Look_Of(const QTextCharFormat &format, bool isHeading)
{
    Look look;
    look.bold = format.fontWeight() >= QFont::DemiBold && !isHeading;
    look.italic = format.fontItalic();
    look.struck = format.fontStrikeOut();
    look.address = format.isAnchor() ? format.anchorHref() : QString();
    look.underlined = format.fontUnderline() && look.address.isEmpty();
    look.fixed = format.fontFixedPitch() || format.fontFamilies().toStringList().contains(QLatin1String("monospace"));
    look.place = format.verticalAlignment();
    return look;
}

/// Signs stand for a look only between letters and digits: beside punctuation they may mean nothing, and beside
/// another sign something else.
bool Takes_Signs(const QString &text, const QString &before)
{
    const bool isFree = before.isEmpty() || !QStringView(u"*_~`\\").contains(before.back());
    return isFree && text.front().isLetterOrNumber() && text.back().isLetterOrNumber();
}

struct Sign {
    bool Look::*has;
    const char *sign; ///< "" for none
    const char *tag;
};
constexpr Sign Signs[] = {
    {&Look::italic, "*", "i"},
    {&Look::bold, "**", "b"},
    {&Look::struck, "~~", "s"},
    {&Look::underlined, "", "u"},
};

QString Tagged(const QString &text, const QString &tag)
{
    return QStringLiteral("<%1>%2</%1>").arg(tag, text);
}

QString As_Code(const QString &text)
{
    qsizetype longest = 0;
    qsizetype run = 0;
    for (const QChar sign : text) {
        run = sign == QLatin1Char('`') ? run + 1 : 0;
        longest = std::max(longest, run);
    }
    const QString fence(longest + 1, QLatin1Char('`'));
    const QString gap(longest > 0 ? 1 : 0, QLatin1Char(' '));
    return fence + gap + text + gap + fence;
}

/// The text of a run, without the blanks around it.
QString Dressed(const Look &look, const QString &text, const QString &before)
{
    if (look.fixed && !text.contains(QChar::LineSeparator))
        return As_Code(text);
    QString dressed = Markdown_Line::Escaped(text);
    const bool takesSigns = Takes_Signs(dressed, before);
    bool isFirst = true; // of several looks at most one is said with signs, the inmost
    for (const Sign &row : Signs) {
        if (!(look.*row.has))
            continue;
        const QString sign = QLatin1String(row.sign);
        const bool isSign = takesSigns && isFirst && !sign.isEmpty();
        dressed = isSign ? sign + dressed + sign : Tagged(dressed, QLatin1String(row.tag));
        isFirst = false;
    }
    if (look.place == QTextCharFormat::AlignSuperScript || look.place == QTextCharFormat::AlignSubScript)
        dressed = Tagged(dressed, look.place == QTextCharFormat::AlignSuperScript ? QStringLiteral("sup")
                                                                                  : QStringLiteral("sub"));
    return dressed;
}

/// An address between angle brackets; what ends it there is written in percent.
QString Address(QString address)
{
    const struct {
        char sign;
        const char *code;
    } rows[] = {{'<', "%3C"}, {'>', "%3E"}, {'\\', "%5C"}, {'\n', "%0A"}, {'\r', "%0D"}};
    for (const auto &row : rows)
        address.replace(QLatin1Char(row.sign), QLatin1String(row.code));
    return QLatin1Char('<') + address + QLatin1Char('>');
}

QList<Run> Runs_Of(const QTextBlock &block, const std::function<QString(const QTextImageFormat &)> &picture)
{
    const bool isHeading = block.blockFormat().headingLevel() > 0;
    QList<Run> runs;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (format.isImageFormat()) {
            const QString one = picture(format.toImageFormat());
            runs.append({{.address = Look_Of(format, isHeading).address}, one.repeated(it.fragment().length()), true});
            continue;
        }
        const Look look = Look_Of(format, isHeading);
        QString text = it.fragment().text();
        text.remove(QChar::ObjectReplacementCharacter);
        if (!runs.isEmpty() && runs.last().look == look && !runs.last().isReady)
            runs.last().text += text;
        else if (!text.isEmpty())
            runs.append({look, text});
    }
    return runs;
}

/// Adds a run; blanks at its ends have no look.
void Add_Run(QString &line, const Run &run)
{
    const QString core = run.text.trimmed();
    if (run.isReady || core.isEmpty()) {
        line += run.text;
        return;
    }
    const qsizetype at = run.text.indexOf(core);
    line += run.text.left(at);
    line += Dressed(run.look, core, line);
    line += run.text.mid(at + core.size());
}
} // namespace

QString Markdown_Line::Escaped(const QString &text)
{
    QString escaped;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar sign = text[i];
        const bool isInWord =
            i > 0 && i + 1 < text.size() && text[i - 1].isLetterOrNumber() && text[i + 1].isLetterOrNumber();
        const bool isReference = sign == QLatin1Char('&') && i + 1 < text.size() &&
                                 (text[i + 1].isLetter() || text[i + 1] == QLatin1Char('#'));
        if (QStringView(u"\\`*[]<~").contains(sign) || (sign == QLatin1Char('_') && !isInWord) || isReference)
            escaped += QLatin1Char('\\');
        escaped += sign;
    }
    return escaped;
}

QString Markdown_Line::Of(const QTextBlock &block, const QString &lineEnd,
                          const std::function<QString(const QTextImageFormat &)> &picture)
{
    QString line;
    QString address;
    const auto end_link = [&] {
        if (!address.isEmpty())
            line += QStringLiteral("](") + Address(address) + QLatin1Char(')');
    };
    for (const Run &run : Runs_Of(block, picture)) {
        if (run.look.address != address) {
            end_link();
            address = run.look.address;
            if (!address.isEmpty())
                line += QLatin1Char('[');
        }
        Add_Run(line, run);
    }
    end_link();
    return line.replace(QChar::LineSeparator, lineEnd);
}

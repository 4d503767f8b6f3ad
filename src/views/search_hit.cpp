// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/search_hit.h"

#include "core/process_state.h"
#include "core/sql_text.h"
#include "platform/database/recordset.h"
#include "platform/database/text_fold.h"
#include "views/search.h"
#include "views/search_sql.h"

#include <algorithm>

namespace
{
constexpr qsizetype Characters_Before = 60;
constexpr qsizetype Characters_Behind = 140;
const QString Cut = QStringLiteral("…");

/// One line: what is shown of a text keeps its words, not its line ends. Blanks at the ends join it to the key.
QString In_One_Line(QString text)
{
    for (QChar &c : text)
        c = c.isSpace() || !c.isPrint() ? (c.isSurrogate() ? c : QChar(u' ')) : c;
    return text;
}

/// A place at or shortly behind `at` where a text may be cut: a blank where one is near, never within a character.
qsizetype Cut_Near(const QString &text, qsizetype at)
{
    constexpr qsizetype Longest_Word = 16;
    if (at <= 0 || at >= text.size())
        return at;
    for (qsizetype i = at; i < std::min(at + Longest_Word, text.size()); ++i) {
        if (text.at(i).isSpace())
            return i;
    }
    return text.at(at).isLowSurrogate() ? at + 1 : at;
}

Search_Hit Words_Around(const QString &text, qsizetype at, qsizetype length)
{
    const qsizetype from = std::min(at, Cut_Near(text, std::max<qsizetype>(0, at - Characters_Before)));
    const qsizetype behind = at + length;
    const qsizetype end = Cut_Near(text, std::min(text.size(), behind + Characters_Behind));
    return {{},
            (from > 0 ? Cut : QString()) + In_One_Line(text.mid(from, at - from)),
            In_One_Line(text.mid(at, length)),
            In_One_Line(text.mid(behind, end - behind)) + (end < text.size() ? Cut : QString())};
}

const Search_Field *Field_Of(const QString &column)
{
    const auto fields = Search_Fields();
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const Search_Field &field) { return column == QLatin1String(field.column); });
    return found == fields.end() ? &fields.front() : &*found;
}
} // namespace

std::optional<Search_Hit> Hit_Of(const QString &codeId, const QString &key, const QStringList &fields, qint64 place)
{
    QStringList columns = fields;
    if (place >= 0)
        columns = QStringList(QStringLiteral("Code_Content"));
    else if (columns.isEmpty())
        columns << QLatin1String(Search_Fields().front().column);
    const QString sought = Text_Fold::Folded(key);
    Recordset row;
    row.Open(Sql_Text(Sql::Searched_Fields, Sql_Part(columns.join(u',')), codeId), App().Conn_Str);
    for (int i = 0; !row.Eof() && i < columns.size(); ++i) {
        const QString text = row[i].Text();
        const qsizetype at = Text_Fold::Folded(text).indexOf(sought, std::max<qint64>(place, 0));
        if (at < 0 || (place >= 0 && at != place))
            continue;
        Search_Hit hit = Words_Around(text, at, sought.size());
        hit.field = Caption_Of(*Field_Of(columns.at(i)));
        return hit;
    }
    return std::nullopt;
}

QString Hit_Tip(const Search_Hit &hit)
{
    return QStringLiteral("<table width=\"420\"><tr><td><small>%1</small><br>%2<b>%3</b>%4</td></tr></table>")
        .arg(hit.field.toHtmlEscaped(), hit.before.toHtmlEscaped(), hit.key.toHtmlEscaped(), hit.after.toHtmlEscaped());
}

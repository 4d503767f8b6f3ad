// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/text_search.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace
{
// Scripts that are written without blanks have no words to be whole: their letters bound a word like a blank does.
const QString Word_Letter = QStringLiteral("(?![\\p{Han}\\p{Hiragana}\\p{Katakana}\\p{Thai}])[\\p{L}\\p{M}\\p{N}_]");

QString Expression(const Text_Search::Wish &wish)
{
    QString text = wish.pattern ? wish.text : QRegularExpression::escape(wish.text);
    if (!wish.wholeWord)
        return text;
    return QStringLiteral("(?:(?<!%1)|(?!%1))(?:%2)(?:(?!%1)|(?<!%1))").arg(Word_Letter, text);
}
} // namespace

Text_Search::Text_Search(const Wish &wish) : m_pattern(wish.pattern)
{
    if (wish.text.isEmpty())
        return;
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    if (!wish.matchCase)
        options |= QRegularExpression::CaseInsensitiveOption;
    const QRegularExpression alone(wish.text, options);
    if (wish.pattern && !alone.isValid()) {
        m_trouble = alone.errorString();
        return;
    }
    m_expression = QRegularExpression(Expression(wish), options);
    m_valid = m_expression.isValid();
}

QList<Text_Search::Match> Text_Search::All(const QTextDocument &document) const
{
    QList<Match> found;
    if (!m_valid)
        return found;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto matches = Matches_In(block.text()); matches.hasNext();) {
            const QRegularExpressionMatch match = matches.next();
            if (match.capturedLength() > 0)
                found.append({block.position() + static_cast<int>(match.capturedStart()),
                              static_cast<int>(match.capturedLength())});
        }
    }
    return found;
}

int Text_Search::Replace_All(QTextDocument &document, const QString &with) const
{
    if (!m_valid)
        return 0;
    int count = 0;
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    // From the end on, so that the places before stay where they are, whatever is put in.
    for (QTextBlock block = document.lastBlock(); block.isValid();) {
        const QTextBlock before = block.previous();
        QList<QRegularExpressionMatch> matches;
        for (auto it = Matches_In(block.text()); it.hasNext();) {
            matches << it.next();
            if (matches.last().capturedLength() == 0)
                matches.removeLast();
        }
        const int start = block.position();
        for (auto match = matches.rbegin(); match != matches.rend(); ++match) {
            cursor.setPosition(start + static_cast<int>(match->capturedStart()) + 1);
            const QTextCharFormat format = cursor.charFormat();
            cursor.setPosition(start + static_cast<int>(match->capturedStart()));
            cursor.setPosition(start + static_cast<int>(match->capturedEnd()), QTextCursor::KeepAnchor);
            cursor.insertText(Filled_In(*match, with), format);
            ++count;
        }
        block = before;
    }
    cursor.endEditBlock();
    return count;
}

bool Text_Search::Replace_Selected(QTextCursor &cursor, const QString &with) const
{
    const QTextBlock block = cursor.document()->findBlock(cursor.selectionStart());
    const int from = cursor.selectionStart() - block.position();
    if (!m_valid || !cursor.hasSelection())
        return false;
    for (auto matches = Matches_In(block.text()); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedStart() != from || block.position() + match.capturedEnd() != cursor.selectionEnd())
            continue;
        QTextCursor inside(cursor.document());
        inside.setPosition(cursor.selectionStart() + 1);
        cursor.insertText(Filled_In(match, with), inside.charFormat());
        return true;
    }
    return false;
}

QString Text_Search::Filled_In(const QRegularExpressionMatch &match, const QString &with) const
{
    if (!m_pattern)
        return with;
    QString text;
    for (qsizetype i = 0; i < with.size(); ++i) {
        if (with[i] != u'\\' || i + 1 == with.size()) {
            text += with[i];
            continue;
        }
        const QChar after = with[++i];
        if (after >= u'0' && after <= u'9')
            text += match.captured(after.unicode() - u'0');
        else
            text += after == u't' ? QChar(u'\t') : after == u'n' ? QChar(QChar::ParagraphSeparator) : after;
    }
    return text;
}

QRegularExpressionMatchIterator Text_Search::Matches_In(const QString &paragraph) const
{
    return m_expression.globalMatch(paragraph);
}

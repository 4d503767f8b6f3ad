// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>

class QTextCursor;
class QTextDocument;

/// Finding and replacing in a document, paragraph by paragraph.
class Text_Search
{
public:
    struct Wish {
        QString text;
        bool matchCase = false;
        bool wholeWord = false;
        bool pattern = false; ///< the text is a regular expression
        bool operator==(const Wish &) const = default;
    };
    struct Match {
        int position = 0;
        int length = 0;
        bool operator==(const Match &) const = default;
    };

    explicit Text_Search(const Wish &wish);

    /// False for an empty text and for an expression that is none; nothing is found then.
    [[nodiscard]] bool Is_Valid() const { return m_valid; }
    [[nodiscard]] const QString &Trouble() const { return m_trouble; }

    /// Every match in the order of the text, none of them empty.
    [[nodiscard]] QList<Match> All(const QTextDocument &document) const;
    /// Replaces every match as one undo step, keeping the format that each had at its beginning.
    /// @param with  in a search for a pattern, "\1" to "\9" and "\0" stand for what the groups found
    /// @returns how many
    int Replace_All(QTextDocument &document, const QString &with) const;
    /// Replaces what the cursor selects if it is a match. @returns whether it was
    bool Replace_Selected(QTextCursor &cursor, const QString &with) const;

private:
    [[nodiscard]] QString Filled_In(const QRegularExpressionMatch &match, const QString &with) const;
    [[nodiscard]] QRegularExpressionMatchIterator Matches_In(const QString &paragraph) const;

    QRegularExpression m_expression;
    bool m_valid = false;
    bool m_pattern = false;
    QString m_trouble;
};

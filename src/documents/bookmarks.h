// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <optional>
#include <vector>

/// A bookmark of a document (a row of tab_tag): a line under a name.
struct Bookmark {
    QString name;
    QString line;     ///< number from 1, as typed
    QString selected; ///< the text that was selected
    QString title;    ///< the document's title at the time
};

/// Why a bookmark is not taken.
enum class Bookmark_Refusal { None, No_Name, No_Line, Too_Long };
/// What to tell the user, "" for None.
QString Refusal_Text(Bookmark_Refusal refusal);

/// The list LV_Tag of the bookmark dialog; the database is touched when it is read and when it is stored. Errors go to
/// Error.log under "Frm_BookMark_Admin\" and the procedure's name; Last_Trouble (core/trouble.h) tells them.
class Bookmark_List
{
public:
    /// Reads a document's bookmarks in their order. @returns false after an error; storing would lose them then
    bool Load(const QString &code_id);
    /// Puts the list in the place of what is stored, in one commit. @returns whether it was stored
    bool Store(const QString &code_id) const;

    [[nodiscard]] const std::vector<Bookmark> &Rows() const { return m_rows; }
    /// Tests what was typed.
    static Bookmark_Refusal Check(const Bookmark &bookmark);
    /// The row of a name, `except` left out; -1 when there is none. The user is asked before it is replaced.
    [[nodiscard]] int Find(const QString &name, int except = -1) const;
    /// Adds a bookmark at the end, or in the place of the one of its name. @returns its row
    int Add(const Bookmark &bookmark);
    /// Changes a row; another one of the new name goes. @returns the row where it stands then
    int Update(int row, const Bookmark &bookmark);
    void Delete(int row);
    /// Swaps a row with the one above or below it. @returns where it stands then: the same row at the list's end
    int Up(int row) { return Swap(row, row - 1); }
    int Down(int row) { return Swap(row, row + 1); }

private:
    int Swap(int row, int other);
    [[nodiscard]] bool Is_Row(int row) const { return row >= 0 && row < static_cast<int>(m_rows.size()); }

    std::vector<Bookmark> m_rows;
};

/// The line that a text names; no value for one that is no number or beyond the document's lines.
std::optional<int> Line_Of_Text(const QString &text, int lines);

// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/bookmarks.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "documents/document_store.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"

#include <algorithm>

namespace
{
constexpr const char16_t *Bookmarks_Of = u"select  * from tab_tag where code_id ='%1'";
constexpr const char16_t *Delete_Bookmarks = u"delete  * from tab_tag where code_id ='%1'";
/// Characters of a name, and of the selected text that is kept.
constexpr qsizetype Longest_Text = 255;

Recordset Open_Rows(const QString &code_id)
{
    Recordset rows;
    rows.CursorLocation = Cursor_Location::Client;
    rows.CursorType = Cursor_Type::Static;
    rows.LockType = Lock_Type::Batch_Optimistic;
    rows.Open(Sql_Text(Bookmarks_Of, code_id), App().Conn_Str);
    return rows;
}

/// Names and selected text may hold any character, so they go in as fields.
void Queue_Row(Recordset &rows, const QString &code_id, int order, const Bookmark &bookmark)
{
    rows.AddNew();
    rows[QStringLiteral("code_id")].Set(code_id);
    rows[QStringLiteral("order_id")].Set(order);
    rows[QStringLiteral("tag_name")].Set(bookmark.name);
    rows[QStringLiteral("code_title")].Set(bookmark.title.left(Longest_Text));
    rows[QStringLiteral("tag_date")].Set(Store_Time());
    rows[QStringLiteral("tag_lineno")].Set(bookmark.line);
    rows[QStringLiteral("tag_var1")].Set(bookmark.selected.left(Longest_Text));
}
} // namespace

QString Refusal_Text(Bookmark_Refusal refusal)
{
    switch (refusal) {
    case Bookmark_Refusal::No_Name:
        return Pack_Text("Frm_BookMark_Admin", "_InputName");
    case Bookmark_Refusal::No_Line:
        return Pack_Text("Frm_BookMark_Admin", "_LineNo");
    case Bookmark_Refusal::Too_Long:
        return Pack_Text("Frm_BookMark_Admin", "_NameTooLong");
    case Bookmark_Refusal::None:
        break;
    }
    return {};
}

bool Bookmark_List::Load(const QString &code_id)
{
    m_rows.clear();
    return Trap_Told(QStringLiteral("Frm_BookMark_Admin\\Load"), [&] {
        std::vector<std::pair<qint64, Bookmark>> read;
        Recordset rows;
        rows.Open(Sql_Text(Bookmarks_Of, code_id), App().Conn_Str);
        for (; !rows.Eof(); rows.MoveNext())
            read.emplace_back(
                rows[QStringLiteral("order_id")].Number(),
                Bookmark{rows[QStringLiteral("tag_name")].Text(), rows[QStringLiteral("tag_lineno")].Text(),
                         rows[QStringLiteral("tag_var1")].Text(), rows[QStringLiteral("code_title")].Text()});
        std::stable_sort(read.begin(), read.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
        for (auto &[order, bookmark] : read)
            m_rows.push_back(std::move(bookmark));
        return true;
    });
}

bool Bookmark_List::Store(const QString &code_id) const
{
    return Trap_Told(QStringLiteral("Frm_BookMark_Admin\\Store"), [&] {
        Recordset rows = Open_Rows(code_id);
        int order = 0;
        for (const Bookmark &bookmark : m_rows) // a field that is refused is met before the old set goes
            Queue_Row(rows, code_id, ++order, bookmark);
        Database_Engine::One_Action(App().Conn_Str, [&] {
            Run_Statement(Sql_Text(Delete_Bookmarks, code_id), App().Conn_Str);
            if (order > 0)
                rows.UpdateBatch();
        });
        return true;
    });
}

Bookmark_Refusal Bookmark_List::Check(const Bookmark &bookmark)
{
    if (bookmark.name.trimmed().isEmpty())
        return Bookmark_Refusal::No_Name;
    if (bookmark.name.size() > Longest_Text)
        return Bookmark_Refusal::Too_Long;
    bool number = false;
    return bookmark.line.toInt(&number) > 0 && number ? Bookmark_Refusal::None : Bookmark_Refusal::No_Line;
}

int Bookmark_List::Find(const QString &name, int except) const
{
    for (int row = 0; Is_Row(row); ++row) {
        if (row != except && m_rows[static_cast<size_t>(row)].name == name)
            return row;
    }
    return -1;
}

int Bookmark_List::Add(const Bookmark &bookmark)
{
    const int same = Find(bookmark.name);
    if (same >= 0)
        return Update(same, bookmark);
    m_rows.push_back(bookmark);
    return static_cast<int>(m_rows.size()) - 1;
}

int Bookmark_List::Update(int row, const Bookmark &bookmark)
{
    if (!Is_Row(row))
        return -1;
    m_rows[static_cast<size_t>(row)] = bookmark;
    const int same = Find(bookmark.name, row);
    Delete(same);
    return same >= 0 && same < row ? row - 1 : row;
}

void Bookmark_List::Delete(int row)
{
    if (Is_Row(row))
        m_rows.erase(m_rows.begin() + row);
}

int Bookmark_List::Swap(int row, int other)
{
    if (!Is_Row(row) || !Is_Row(other))
        return row;
    std::swap(m_rows[static_cast<size_t>(row)], m_rows[static_cast<size_t>(other)]);
    return other;
}

std::optional<int> Line_Of_Text(const QString &text, int lines)
{
    bool number = false;
    const int line = text.trimmed().toInt(&number);
    return number && line >= 1 && line <= lines ? std::optional(line) : std::nullopt;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tag_care.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "views/tag_text.h"
#include "views/tagged_documents.h"
#include "views/tags.h"
#include "views/tags_sql.h"

#include <QHash>
#include <algorithm>
#include <functional>

namespace
{
constexpr int Name_Column = 0;
constexpr int Count_Column = 1;

void For_Each_Tagged(const std::function<void(const QString &codeId, const QString &tags)> &visit)
{
    Recordset documents;
    documents.Open(Sql_Text(Sql::All_Tagged), App().Conn_Str);
    for (; !documents.Eof(); documents.MoveNext())
        visit(documents[0].Text(), documents[1].Text());
}

bool Holds_Any(const QString &field, const QList<int> &tags)
{
    return std::any_of(tags.begin(), tags.end(), [&](int tag) { return field.contains(Tag_Token(tag)); });
}

qint64 Count_Of(const List_Row &row)
{
    return row.texts.value(Count_Column).toLongLong();
}

/// Those with a like one, like ones together in the order of the first of them.
std::vector<List_Row> Alike_Rows(const std::vector<List_Row> &rows)
{
    std::vector<List_Row> alike;
    std::vector<bool> taken(rows.size());
    for (size_t first = 0; first < rows.size(); ++first) {
        if (taken[first])
            continue;
        const size_t group = alike.size();
        for (size_t other = first + 1; other < rows.size(); ++other) {
            if (taken[other] || !Are_Alike(rows[first].texts[Name_Column], rows[other].texts[Name_Column]))
                continue;
            if (alike.size() == group)
                alike.push_back(rows[first]);
            alike.push_back(rows[other]);
            taken[other] = true;
        }
    }
    return alike;
}

struct New_Field {
    QString codeId;
    QString tags;
};

std::vector<New_Field> Plan_Merge(const QList<int> &from, int into)
{
    std::vector<New_Field> plan;
    For_Each_Tagged([&](const QString &codeId, const QString &tags) {
        if (Holds_Any(tags, from))
            plan.push_back({codeId, Merged_Tags(tags, from, into)});
    });
    return plan;
}

void Merge(const std::vector<New_Field> &plan, const QList<int> &from, int into)
{
    Database_Engine::One_Action(App().Conn_Str, [&] {
        for (const New_Field &field : plan)
            Run_Statement(Sql_Text(Sql::Set_Document_Tags, field.tags, field.codeId), App().Conn_Str);
        for (const int tag : from)
            Run_Statement(Sql_Text(Sql::Delete_Tag, tag), App().Conn_Str);
        Count_Tag(into);
    });
}

/// The counters that are wrong, with their right numbers.
QHash<int, int> Wrong_Counts()
{
    QHash<int, int> counted;
    For_Each_Tagged([&](const QString &, const QString &tags) {
        for (const int tag : Tags_In(tags))
            ++counted[tag];
    });
    QHash<int, int> wrong;
    Recordset tags;
    tags.Open(Sql_Text(Sql::Tags_By_Name), App().Conn_Str);
    for (; !tags.Eof(); tags.MoveNext()) {
        const int id = static_cast<int>(tags[QStringLiteral("tags_Id")].Number());
        if (tags[QStringLiteral("tags_Count")].Number() != counted.value(id))
            wrong.insert(id, counted.value(id));
    }
    return wrong;
}
} // namespace

void Show_Tags(List_Model &list, Tag_Filter filter, Tag_Order order)
{
    List_Model all;
    Load_Tags(all);
    std::vector<List_Row> rows;
    for (int i = 0; i < all.Row_Count(); ++i) {
        const qint64 count = Count_Of(all.Row(i));
        if ((filter == Tag_Filter::Unused && count != 0) || (filter == Tag_Filter::Once && count != 1))
            continue;
        rows.push_back(all.Row(i));
    }
    if (order == Tag_Order::Count)
        std::stable_sort(rows.begin(), rows.end(),
                         [](const List_Row &a, const List_Row &b) { return Count_Of(a) > Count_Of(b); });
    list.Replace(filter == Tag_Filter::Alike ? Alike_Rows(rows) : std::move(rows));
}

int Documents_Of_Tags(const QList<int> &tags)
{
    int documents = 0;
    For_Each_Tagged([&](const QString &, const QString &field) { documents += Holds_Any(field, tags) ? 1 : 0; });
    return documents;
}

bool Merge_Tags(const QList<int> &from, int into)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Merge_Tags"), [&] {
        Recordset tag;
        tag.Open(Sql_Text(Sql::Tag_By_Id, into), App().Conn_Str);
        if (tag.Eof()) {
            Set_Trouble(Pack_Text("Frm_Main", "_Tag_Gone"));
            return false;
        }
        QList<int> others = from;
        others.removeAll(into);
        const std::vector<New_Field> plan = Plan_Merge(others, into);
        const auto full = std::count_if(plan.begin(), plan.end(),
                                        [](const New_Field &field) { return field.tags.size() > Longest_Tags; });
        if (full > 0) {
            Set_Trouble(Pack_Text("Frm_Main", "_Tags_Full").arg(full));
            return false;
        }
        Merge(plan, others, into);
        return true;
    });
}

int Refresh_Tag_Counts()
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Refresh_Tag_Counts"), [&] {
        const QHash<int, int> wrong = Wrong_Counts();
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (auto tag = wrong.begin(); tag != wrong.end(); ++tag)
                Run_Statement(Sql_Text(Sql::Set_Tag_Count, tag.value(), tag.key()), App().Conn_Str);
        });
        return static_cast<int>(wrong.size());
    });
}

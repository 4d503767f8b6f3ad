// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tagged_documents.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "views/tag_text.h"
#include "views/tags.h"
#include "views/tags_sql.h"

#include <QHash>
#include <optional>

namespace
{
/// No value when there is no such document.
std::optional<QString> Tags_Of(const QString &codeId)
{
    Recordset document;
    document.Open(Sql_Text(Sql::Tags_Of_Document, codeId), App().Conn_Str);
    return document.Eof() ? std::nullopt : std::optional(document[0].Text());
}

QList<int> Existing(const QList<int> &tags)
{
    QList<int> there;
    for (const int tag : tags) {
        Recordset row;
        row.Open(Sql_Text(Sql::Tag_By_Id, tag), App().Conn_Str);
        if (!row.Eof())
            there << tag;
    }
    return there;
}

void Change_One(const QString &codeId, const QList<int> &give, const QList<int> &take, Tagging &tagging)
{
    const std::optional<QString> old = Tags_Of(codeId);
    if (!old) {
        tagging.gone << codeId;
        return;
    }
    const QString changed = Changed_Tags(*old, give, take);
    if (changed.size() > Longest_Tags) {
        tagging.full << codeId;
    } else if (changed != *old) {
        Run_Statement(Sql_Text(Sql::Set_Document_Tags, changed, codeId), App().Conn_Str);
        ++tagging.changed;
    }
}

void Tell_What_Stayed(const Tagging &tagging, bool tagGone)
{
    if (!tagging.full.isEmpty())
        Set_Trouble(Pack_Text("Frm_Main", "_Tags_Full").arg(tagging.full.size()));
    else if (tagGone)
        Set_Trouble(Pack_Text("Frm_Main", "_Tag_Gone"));
}

QList<int> Tags_Of_Keys(const QStringList &keys)
{
    QList<int> tags;
    for (const QString &key : keys)
        tags << Tag_Of_Key(key);
    return tags;
}
} // namespace

void Count_Tag(int tagId)
{
    Recordset count;
    count.Open(Sql_Text(Sql::Count_Of_Tag, tagId), App().Conn_Str);
    const qint64 number = count[0].Number();
    count.Close();
    Run_Statement(Sql_Text(Sql::Set_Tag_Count, number, tagId), App().Conn_Str);
}

void Load_Selection_Tags(Check_Model &list, const QStringList &codeIds)
{
    std::vector<Check_Item> items;
    Trap_Told(QStringLiteral("Mod_Tags\\Load_Selection_Tags"), [&] {
        QHash<int, int> holders;
        int documents = 0;
        for (const QString &codeId : codeIds) {
            const std::optional<QString> tags = Tags_Of(codeId);
            documents += tags ? 1 : 0;
            for (const int tag : Tags_In(tags.value_or(QString())))
                ++holders[tag];
        }
        Recordset tags;
        tags.Open(Sql_Text(Sql::Tags_For_Document), App().Conn_Str);
        for (; !tags.Eof(); tags.MoveNext()) {
            const int id = static_cast<int>(tags[QStringLiteral("tags_Id")].Number());
            const int have = holders.value(id);
            items.push_back({Tag_Key(id), tags[QStringLiteral("tags_Name")].Text(),
                             have == 0           ? Qt::Unchecked
                             : have == documents ? Qt::Checked
                                                 : Qt::PartiallyChecked});
        }
    });
    list.Replace(std::move(items));
}

Tagging Change_Tags(const QStringList &codeIds, const QList<int> &give, const QList<int> &take)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Change_Tags"), [&] {
        Tagging tagging;
        const QList<int> given = Existing(give);
        Database_Engine::One_Action(App().Conn_Str, [&] {
            for (const QString &codeId : codeIds)
                Change_One(codeId, given, take, tagging);
            for (const int tag : given + take)
                Count_Tag(tag);
        });
        Tell_What_Stayed(tagging, given.size() < give.size());
        tagging.done = given.size() == give.size() && tagging.full.isEmpty();
        return tagging;
    });
}

Tagging Apply_Selection_Tags(const Check_Model &list, const QStringList &codeIds)
{
    return Change_Tags(codeIds, Tags_Of_Keys(list.Changed_To(Qt::Checked)),
                       Tags_Of_Keys(list.Changed_To(Qt::Unchecked)));
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "views/tags.h"

#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "core/trouble.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_ids.h"
#include "views/tagged_documents.h"
#include "views/tags_sql.h"

namespace
{
const QString Document_Drop = QStringLiteral("LIST");

List_Row Tag_Row(int tagId, const QString &name, qint64 count)
{
    List_Row row;
    row.tag = Tag_Key(tagId);
    row.texts = {name, QString::number(count)};
    return row;
}

int Id_Of(Recordset &tag)
{
    return static_cast<int>(tag[QStringLiteral("tags_Id")].Number());
}

/// A new row, whose number becomes the id that documents know it by.
int New_Tag(const QString &name)
{
    int index = 0;
    Database_Engine::One_Action(App().Conn_Str, [&] {
        Recordset row;
        row.CursorType = Cursor_Type::Keyset;
        row.LockType = Lock_Type::Optimistic;
        row.Open(Sql_Text(Sql::Tag_Named, name), App().Conn_Str);
        row.AddNew();
        row[QStringLiteral("tags_name")].Set(name);
        row.Update();
        index = static_cast<int>(row[QStringLiteral("tags_Index")].Number());
        Run_Statement(Sql_Text(Sql::Set_Tag_Id, index, index), App().Conn_Str);
    });
    return index;
}

int Id_Of_Name(const QString &name)
{
    Recordset tag;
    tag.Open(Sql_Text(Sql::Tag_Named, name), App().Conn_Str);
    return tag.Eof() ? 0 : Id_Of(tag);
}

bool Is_Tag(int tagId)
{
    Recordset tag;
    tag.Open(Sql_Text(Sql::Tag_By_Id, tagId), App().Conn_Str);
    if (tag.Eof())
        Set_Trouble(Pack_Text("Frm_Main", "_Tag_Gone"));
    return !tag.Eof();
}

/// A field that has no room for another token is told in words of its own.
void Keep_Tag_Trouble()
{
    if (Err().failure == Failure::Too_Long)
        Set_Trouble(Pack_Text("Frm_Main", "_Tags_Full").arg(1));
    else
        Keep_Trouble();
}

void Add_Token(int tagId, const QString &codeId)
{
    Recordset document;
    document.Open(Sql_Text(Sql::Tags_Of_Document, codeId), App().Conn_Str);
    if (document.Eof())
        return;
    const QString old = document[0].Text();
    document.Close();
    if (!old.contains(Tag_Token(tagId)))
        Run_Statement(Sql_Text(Sql::Set_Document_Tags, old + Tag_Token(tagId), codeId), App().Conn_Str);
}

void Remove_Tokens(int tagId, const QString &statement)
{
    Recordset documents;
    documents.CursorLocation = Cursor_Location::Client;
    documents.CursorType = Cursor_Type::Static;
    documents.LockType = Lock_Type::Optimistic;
    documents.Open(statement, App().Conn_Str);
    for (; !documents.Eof(); documents.MoveNext()) {
        Field tags = documents[QStringLiteral("code_tags")];
        tags.Set(tags.Text().remove(Tag_Token(tagId)));
        documents.Update();
    }
}
} // namespace

QString Tag_Key(int tagId)
{
    return QStringLiteral("T_%1").arg(tagId);
}

int Tag_Of_Key(const QString &key)
{
    return GetKeyPart(key, Key_Part::After_Underscore).toInt();
}

void Load_Tags(List_Model &list)
{
    std::vector<List_Row> rows;
    Trap_Told(QStringLiteral("Mod_Tags\\Load_Tags"), [&] {
        Recordset tags;
        tags.Open(Sql_Text(Sql::Tags_By_Name), App().Conn_Str);
        for (; !tags.Eof(); tags.MoveNext())
            rows.push_back(Tag_Row(Id_Of(tags), tags[QStringLiteral("tags_Name")].Text(),
                                   tags[QStringLiteral("tags_Count")].Number()));
    });
    list.Replace(std::move(rows));
}

void Load_Doc_Tags(Check_Model &list, const QString &codeId, bool showAll)
{
    std::vector<Check_Item> items;
    Trap_Told(QStringLiteral("Mod_Tags\\Load_Doc_Tags"), [&] {
        Recordset document;
        document.Open(Sql_Text(Sql::Tags_Of_Document, codeId), App().Conn_Str);
        const QList<int> own = document.Eof() ? QList<int>() : Tag_Ids(document[0].Text());
        Recordset tags;
        tags.Open(Sql_Text(Sql::Tags_For_Document), App().Conn_Str);
        for (; !tags.Eof(); tags.MoveNext()) {
            const bool has = own.contains(Id_Of(tags));
            if (has || showAll)
                items.push_back({Tag_Key(Id_Of(tags)), tags[QStringLiteral("tags_Name")].Text(),
                                 has ? Qt::Checked : Qt::Unchecked});
        }
    });
    list.Replace(std::move(items));
}

int Get_Tag_Id(const QString &name)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Get_Tag_Id"), [&] { return Id_Of_Name(Tag_Name(name)); });
}

int Add_Tag(const QString &name)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Add_Tag"), [&] {
        const QString stored = Tag_Name(name);
        if (stored.isEmpty())
            return 0;
        const int id = Id_Of_Name(stored);
        return id != 0 ? id : New_Tag(stored);
    });
}

bool Add_Doc_Tag(int tagId, const QString &codeId)
{
    Forget_Trouble();
    return Trap(
        QStringLiteral("Mod_Tags\\Add_Doc_Tag"),
        [&] {
            if (!Is_Tag(tagId))
                return false;
            Database_Engine::One_Action(App().Conn_Str, [&] {
                Add_Token(tagId, codeId);
                Count_Tag(tagId);
            });
            return true;
        },
        Keep_Tag_Trouble);
}

bool Remove_Doc_Tag(int tagId, const QString &codeId)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Remove_Doc_Tag"), [&] {
        if (!Is_Tag(tagId))
            return false;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            Remove_Tokens(tagId, Sql_Text(Sql::Document_With_Tag, tagId, codeId));
            Count_Tag(tagId);
        });
        return true;
    });
}

bool Rename_Tag(int tagId, const QString &newName)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Rename_Tag"), [&] {
        const QString name = Tag_Name(newName);
        Recordset other;
        other.Open(Sql_Text(Sql::Other_Tag_Named, name), App().Conn_Str);
        if (name.isEmpty() || !Is_Tag(tagId))
            return false;
        if (!other.Eof()) {
            Set_Trouble(Pack_Text("Frm_Main", "_Tag_Exists"));
            return false;
        }
        Run_Statement(Sql_Text(Sql::Set_Tag_Name, name, tagId), App().Conn_Str);
        return true;
    });
}

bool Delete_Tag(int tagId)
{
    return Trap_Told(QStringLiteral("Mod_Tags\\Delete_Tag"), [&] {
        if (!Is_Tag(tagId))
            return false;
        Database_Engine::One_Action(App().Conn_Str, [&] {
            Run_Statement(Sql_Text(Sql::Delete_Tag, tagId), App().Conn_Str);
            Remove_Tokens(tagId, Sql_Text(Sql::Documents_Of_Tag, tagId));
        });
        return true;
    });
}

QString Tag_Where(int tagId)
{
    return Sql_Text(Sql::List_Of_Tag, tagId);
}

QList<int> Add_Tag_Words(const QString &words, List_Model &list)
{
    QList<int> ids;
    QString trouble;
    for (const QString &word : words.trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int id = Add_Tag(word);
        if (id == 0) {
            trouble = Last_Trouble();
            continue;
        }
        ids << id;
        if (list.Find(Tag_Key(id)) < 0)
            list.Add(Tag_Row(id, Tag_Name(word), 0));
    }
    Set_Trouble(trouble);
    return ids;
}

bool Is_Document_Drop(const QString &text)
{
    return text.startsWith(Document_Drop);
}

int Drop_On_Tags(List_Model &tags, const QString &text, const QString &tagKey, const QString &openDocument)
{
    if (Is_Document_Drop(text)) {
        const int id = Tag_Of_Key(tagKey);
        const QStringList documents =
            text.mid(Document_Drop.size()).trimmed().split(QLatin1Char('/'), Qt::SkipEmptyParts);
        return id != 0 && Change_Tags(documents, {id}, {}).done ? id : 0;
    }
    const int id = Add_Tag(text);
    if (id != 0 && tags.Find(Tag_Key(id)) < 0)
        tags.Add(Tag_Row(id, Tag_Name(text), 0));
    if (id != 0 && !openDocument.isEmpty() && !Add_Doc_Tag(id, openDocument))
        return 0;
    return id;
}

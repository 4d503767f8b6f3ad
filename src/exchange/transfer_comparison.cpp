// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/transfer_comparison.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "core/sql_text.h"
#include "exchange/transfer_sql.h"
#include "platform/database/recordset.h"

#include <QSet>

using namespace Mod_DataBaseExport;

namespace
{
/// The date comes second, what the user sees and what is stored is the rest.
constexpr const char *Compared[] = {"Code_Title",   "Code_Content", "Code_Content_IO", "Code_Memo",
                                    "Code_Memo_IO", "Code_Sum",     "Code_Sum_IO"};

bool Same_Content(Recordset &one, Recordset &other)
{
    return std::all_of(std::begin(Compared), std::end(Compared), [&](const char *column) {
        const QString name = QLatin1String(column);
        return one[name].Value() == other[name].Value();
    });
}

Known Compare(const QString &id, const QString &target, const QString &source)
{
    const QString statement = Sql_Text(Sql::Compared_Document, id);
    Recordset here;
    here.Open(statement, target);
    if (here.Eof())
        return Known::Nothing;
    Recordset there;
    there.Open(statement, source);
    if (Same_Content(here, there))
        return Known::Same;
    const QString date = QStringLiteral("Code_Update");
    const QString mine = here[date].Text();
    const QString others = there[date].Text();
    return mine == others ? Known::Changed : mine < others ? Known::Older : Known::Newer;
}

/// Names by id of a table.
QHash<QString, QString> Names(const char16_t *statement, const char *id, const char *name, const QString &connection)
{
    QHash<QString, QString> names;
    Recordset rows;
    for (rows.Open(Sql_Text(statement), connection); !rows.Eof(); rows.MoveNext())
        names.insert(rows[QLatin1String(id)].Text(), rows[QLatin1String(name)].Text());
    return names;
}

QStringList Tag_Ids(const QString &tags)
{
    QString text = tags;
    return text.remove(QLatin1Char('{')).split(QLatin1Char('}'), Qt::SkipEmptyParts);
}

/// What documents refer to, each id once, in the order in which it was met.
class References
{
public:
    References(const QString &target, const QString &source);
    void Add(const QString &document);
    [[nodiscard]] const QList<Conflict> &Conflicts() const { return m_conflicts; }

private:
    using Names_By_Id = QHash<QString, QString>;
    void Look_At_Folder(const QString &id);
    void Look_At(Conflict::Kind kind, const QString &id, const Names_By_Id &here, const Names_By_Id &there);
    [[nodiscard]] bool Is_New(Conflict::Kind kind, const QString &id);

    QString m_target;
    QString m_source;
    Names_By_Id m_tagsHere, m_tagsThere, m_groupsHere, m_groupsThere;
    QSet<QString> m_seen;
    QList<Conflict> m_conflicts;
};

References::References(const QString &target, const QString &source) : m_target(target), m_source(source)
{
    Resume_Next([&] { m_tagsHere = Names(Sql::All_Tags, "tags_Id", "tags_Name", target); });
    Resume_Next([&] { m_tagsThere = Names(Sql::All_Tags, "tags_Id", "tags_Name", source); });
    Resume_Next([&] { m_groupsHere = Names(Sql::All_Groups, "Gene_Id", "Gene_Name", target); });
    Resume_Next([&] { m_groupsThere = Names(Sql::All_Groups, "Gene_Id", "Gene_Name", source); });
}

bool References::Is_New(Conflict::Kind kind, const QString &id)
{
    const qsizetype before = m_seen.size();
    m_seen.insert(QString::number(static_cast<int>(kind)) + id);
    return m_seen.size() > before;
}

void References::Add(const QString &document)
{
    Recordset here;
    here.Open(Sql_Text(Sql::Places_Of_Document, document), m_target);
    if (!here.Eof())
        return;
    Recordset there;
    there.Open(Sql_Text(Sql::Places_Of_Document, document), m_source);
    if (there.Eof())
        return;
    constexpr qsizetype Segment = 3;
    for (QString id = there[0].Text(); !id.isEmpty(); id = id.size() <= Segment ? QString() : id.chopped(Segment))
        Look_At_Folder(id);
    for (const QString &tag : Tag_Ids(there[1].Text()))
        Look_At(Conflict::Kind::Tag, tag, m_tagsHere, m_tagsThere);
    if (const qint64 group = there[2].Number(); group != 0)
        Look_At(Conflict::Kind::Group, QString::number(group), m_groupsHere, m_groupsThere);
}

/// A folder that is missing comes along; one of another name stays.
void References::Look_At_Folder(const QString &id)
{
    if (!Is_New(Conflict::Kind::Folder, id))
        return;
    const QString statement = Sql_Text(Sql::Name_Of_Candidates_Folder, id);
    Recordset here;
    here.Open(statement, m_target);
    Recordset there;
    there.Open(statement, m_source);
    if (!here.Eof() && !there.Eof() && here[0].Text() != there[0].Text())
        m_conflicts.append({Conflict::Kind::Folder, id, there[0].Text(), here[0].Text()});
}

/// Tags and groups come along only into a target that has none.
void References::Look_At(Conflict::Kind kind, const QString &id, const Names_By_Id &here, const Names_By_Id &there)
{
    if (!here.isEmpty() && there.contains(id) && here.value(id) != there.value(id) && Is_New(kind, id))
        m_conflicts.append({kind, id, there.value(id), here.value(id)});
}
} // namespace

namespace Mod_DataBaseExport
{
QString Known_Text(Known known)
{
    constexpr const char *keys[] = {"", "_Known_Same", "_Known_Older", "_Known_Newer", "_Known_Changed"};
    return known == Known::Nothing ? QString() : Pack_Text("Frm_DataExport_Ex", keys[static_cast<int>(known)]);
}

QHash<QString, Known> Compare_Documents(const QString &target, const QString &source, const QStringList &ids,
                                        Work &work)
{
    QHash<QString, Known> known;
    for (qsizetype i = 0; i < ids.size() && work.Next(i, ids.size(), ids[i]); ++i)
        Resume_Next([&] { known.insert(ids[i], Compare(ids[i], target, source)); });
    Clear_Pending();
    return known;
}

QList<Conflict> Find_Conflicts(const QString &target, const QString &source, const QStringList &ids, Work &work)
{
    References references(target, source);
    for (qsizetype i = 0; i < ids.size() && work.Next(i, ids.size(), ids[i]); ++i)
        Resume_Next([&] { references.Add(ids[i]); });
    Clear_Pending();
    return references.Conflicts();
}

QString Conflict_Text(const Conflict &conflict)
{
    struct Words {
        const char *other;   ///< %1 there, %2 here
        const char *missing; ///< %1 there
    };
    constexpr Words kinds[] = {
        {"_Other_Folder", "_Other_Folder"}, {"_Other_Tag", "_Missing_Tag"}, {"_Other_Group", "_Missing_Group"}};
    const Words &words = kinds[static_cast<int>(conflict.kind)];
    return conflict.here.isEmpty() ? Pack_Text("Frm_DataExport_Ex", words.missing).arg(conflict.there)
                                   : Pack_Text("Frm_DataExport_Ex", words.other).arg(conflict.there, conflict.here);
}
} // namespace Mod_DataBaseExport

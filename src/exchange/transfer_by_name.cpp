// SPDX-License-Identifier: GPL-3.0-or-later
#include "exchange/transfer_by_name.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/sql_text.h"
#include "documents/document_ids.h"
#include "exchange/transfer_comparison.h"
#include "exchange/transfer_rows.h"
#include "exchange/transfer_sql.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "tree/folder_editing.h"
#include "tree/folder_ids.h"
#include "views/tag_text.h"
#include "views/tags.h"

#include <QCryptographicHash>

using namespace Transfer_Rows;
using namespace Mod_DataBaseExport;

namespace
{
/// Where documents go whose folder nobody knows.
const QString Unknown_Folder = QStringLiteral("--");

[[noreturn]] void Throw_Pending()
{
    throw Run_Time_Error(Err().number, Err().description, Err().failure);
}

/// What numbers of the source mean in the target. Each one is looked up once.
class Meanings
{
public:
    explicit Meanings(const QString &source) : m_source(source) {}

    /// @throws Run_Time_Error when the folder cannot be made.
    QString Folder(const QString &id)
    {
        if (id.isEmpty() || In_Recycle_Bin(id))
            return id.isEmpty() ? id : Recycle_Bin_Id;
        if (!m_folders.contains(id))
            m_folders.insert(id, Make_Folder(id));
        return m_folders.value(id);
    }
    QString Tags(const QString &field)
    {
        QString tags;
        for (const int id : Tag_Ids(field)) {
            if (!m_tags.contains(id))
                m_tags.insert(id, Find_Tag(id));
            if (m_tags.value(id) != 0)
                tags += Tag_Token(m_tags.value(id));
        }
        return tags;
    }
    qint64 Group(qint64 id)
    {
        if (id == 0)
            return 0;
        if (!m_groups.contains(id))
            m_groups.insert(id, Find_Group(id));
        return m_groups.value(id);
    }

private:
    QString Make_Folder(const QString &id)
    {
        Recordset row;
        row.Open(Sql_Text(Sql::Name_Of_Candidates_Folder, id), m_source);
        QString parent = Folder(Parent_Id(id));
        if (row.Eof() && !parent.isEmpty())
            return parent;
        QString made = MakeExistCateId(parent, row.Eof() ? Unknown_Folder : row[0].Text());
        if (made.isEmpty())
            throw Run_Time_Error(Error_Number::Db_Failed, Pack_Text("Frm_FileImport", "_No_Folder"));
        return made;
    }
    [[nodiscard]] int Find_Tag(int id) const
    {
        Recordset row;
        row.Open(Sql_Text(Sql::Tag_By_Id, id), m_source);
        return row.Eof() ? 0 : Add_Tag(row[QStringLiteral("tags_Name")].Text());
    }
    /// A group that the target lacks comes along under a number of its own.
    [[nodiscard]] qint64 Find_Group(qint64 id) const
    {
        Recordset from;
        from.Open(Sql_Text(Sql::Source_Group, id), m_source);
        if (from.Eof())
            return 0;
        Recordset known;
        known.Open(Sql_Text(Sql::Group_By_Name, from[QStringLiteral("Gene_Name")].Text()), App().Conn_Str);
        if (!known.Eof())
            return known[QStringLiteral("Gene_Id")].Number();
        Recordset to;
        Open_For_Adding(to, Sql_Text(Sql::All_Groups), App().Conn_Str);
        if (!Copy_Row(from, to, Groups, {{QStringLiteral("Gene_Default"), QString()}}))
            Throw_Pending();
        const qint64 number = to[QStringLiteral("Gene_Index")].Number();
        Run_Statement(Sql_Text(Sql::Number_Group, number, number), App().Conn_Str);
        return number;
    }

    QString m_source;
    QHash<QString, QString> m_folders;
    QHash<int, int> m_tags;
    QHash<qint64, qint64> m_groups;
};

/// An id for what a document of the source holds now: the same content gets the same one again.
QString Second_Id(Recordset &document)
{
    QCryptographicHash digest(QCryptographicHash::Sha256);
    for (const char *column :
         {"Code_ID", "Code_Title", "Code_Update", "Code_Content", "Code_Content_IO", "Code_Memo_IO", "Code_Sum_IO"})
        digest.addData(document[QLatin1String(column)].Bytes());
    std::array<std::uint8_t, 16> bytes = {};
    const QByteArray result = digest.result();
    std::copy_n(result.begin(), bytes.size(), bytes.begin());
    return QLatin1Char('{') + GUID_ToText(bytes) + QLatin1Char('}');
}

bool Is_Here(const QString &id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::Compared_Document, id), App().Conn_Str);
    return !row.Eof();
}

/// One run.
class Name_Transfer
{
public:
    explicit Name_Transfer(const QString &source) : m_source(source), m_meanings(source) {}

    void Copy_Document(const Transfer_Row &row);
    Transfer_Result result;

private:
    /// @returns the id under which the document comes in, "" when it is there
    QString Id_For(const QString &id, Recordset &document);
    void Copy(const Transfer_Row &row);
    void Copy_Rows(const Table &table, const Transfer_Row &row, const QString &newId);
    void Fail(const Transfer_Row &row, const QString &reason = {})
    {
        result.failed.append({row.title, reason.isEmpty() ? Error_Text(Err()) : reason});
    }

    QString m_source;
    Meanings m_meanings;
};

QString Name_Transfer::Id_For(const QString &id, Recordset &document)
{
    if (!Is_Here(id))
        return id;
    Unwatched_Work work;
    if (Compare_Documents(App().Conn_Str, m_source, {id}, work).value(id) == Known::Same)
        return {};
    QString second = Second_Id(document);
    return Is_Here(second) ? QString() : second;
}

/// Attachments, bookmarks and memberships of one document.
void Name_Transfer::Copy_Rows(const Table &table, const Transfer_Row &row, const QString &newId)
{
    const QString folder = QStringLiteral("Cate_ID");
    const bool namesFolders = std::any_of(table.columns.begin(), table.columns.end(),
                                          [&](const char *column) { return folder == QLatin1String(column); });
    const bool read = Resume_Next([&] {
        Recordset from;
        Recordset to;
        from.Open(Sql_Text(table.rows, row.code_id), m_source);
        Open_For_Adding(to, Sql_Text(table.rows, newId), App().Conn_Str);
        for (; !from.Eof(); from.MoveNext()) {
            Own_Values own{{QStringLiteral("code_id"), newId}, {QStringLiteral("Code_id"), newId}};
            if (namesFolders)
                own.insert(folder, m_meanings.Folder(from[folder].Text()));
            if (!Copy_Row(from, to, table, own))
                Fail(row);
        }
    });
    if (!read)
        Fail(row);
}

void Name_Transfer::Copy(const Transfer_Row &row)
{
    Recordset from;
    from.Open(Sql_Text(Sql::Transferred_Document, row.code_id), m_source);
    if (from.Eof())
        return Fail(row, Pack_Text("Frm_DataExport_Ex", "_Gone"));
    const QString id = Id_For(row.code_id, from);
    if (id.isEmpty())
        return void(++result.present);
    const Own_Values own{{QStringLiteral("Code_ID"), id},
                         {QStringLiteral("Cate_ID"), m_meanings.Folder(from[QStringLiteral("Cate_ID")].Text())},
                         {QStringLiteral("Code_Tags"), m_meanings.Tags(from[QStringLiteral("Code_Tags")].Text())},
                         {QStringLiteral("Code_ReadDate_gene_Id"),
                          m_meanings.Group(from[QStringLiteral("Code_ReadDate_gene_Id")].Number())}};
    Recordset to;
    Open_For_Adding(to, Sql_Text(Sql::Transferred_Document, id), App().Conn_Str);
    if (!Copy_Row(from, to, Document, own))
        return Fail(row);
    ++result.done;
    for (const Table *table : {&Files, &Bookmarks, &Memberships})
        Copy_Rows(*table, row, id);
}

void Name_Transfer::Copy_Document(const Transfer_Row &row)
{
    const qint64 copied = result.done;
    if (Resume_Next([&] { Database_Engine::One_Action(App().Conn_Str, [&] { Copy(row); }); }))
        return;
    result.done = copied;
    Fail(row);
}
} // namespace

namespace Mod_DataBaseExport
{
Transfer_Result Transfer_By_Name(const QString &source, const QList<Transfer_Row> &rows, Work &work)
{
    Name_Transfer transfer(source);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        if (!work.Next(i, rows.size(), rows[i].title)) {
            transfer.result.stopped = true;
            break;
        }
        transfer.Copy_Document(rows[i]);
    }
    Clear_Pending();
    return transfer.result;
}
} // namespace Mod_DataBaseExport

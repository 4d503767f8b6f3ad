// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/all_attachments.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/sql_text.h"
#include "documents/attachment_place.h"
#include "documents/attachments_sql.h"
#include "documents/file_content.h"
#include "documents/staging.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"

#include <QFileInfo>
#include <QHash>
#include <algorithm>

namespace
{
const QString Source = QStringLiteral("Frm_File_Admin");

/// Gives each of them to `body` until the work is called off; what fails is told with its name.
template <class Body>
Found_Attachments Look_Through(const QList<Attachment> &all, Work &work, Body &&body)
{
    Found_Attachments found;
    const QString saying = Pack_Text("Frm_File_Admin", "_Process");
    for (qsizetype i = 0; i < all.size() && !found.stopped; ++i) {
        found.stopped = !work.Next(i, all.size(), saying + all[i].name);
        if (found.stopped)
            break;
        Trap(
            Source, [&] { body(all[i], found); },
            [&] {
                found.failed << Failed_Item{all[i].name, Error_Text(Err())};
            });
    }
    return found;
}

/// Work inside one item, of which only the end is asked.
class Inner_Work : public Work
{
public:
    Inner_Work(Work &outer, qint64 done, qint64 all, QString name)
        : m_outer(outer), m_done(done), m_all(all), m_name(std::move(name))
    {
    }
    bool Next(qint64 /*done*/, qint64 /*all*/, const QString & /*name*/) override
    {
        return m_outer.Next(m_done, m_all, m_name);
    }

private:
    Work &m_outer;
    qint64 m_done;
    qint64 m_all;
    QString m_name;
};

bool Is_Dangling(const Attachment &attachment)
{
    if (attachment.type != Attachment_Type::External)
        return false;
    const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
    if (place.kind == Attachment_Place::Kind::Page)
        return false;
    const QFileInfo target(place.target);
    return place.kind == Attachment_Place::Kind::Folder ? !target.isDir() : !target.exists();
}

/// Internal files whose size another one has too, in groups of one size.
QList<Attachment> Of_Same_Size(const QList<Attachment> &all)
{
    QHash<QString, int> counts;
    QList<Attachment> files;
    for (const Attachment &file : all)
        counts[file.size] += file.type == Attachment_Type::Internal ? 1 : 0;
    for (const Attachment &file : all) {
        if (file.type == Attachment_Type::Internal && counts[file.size] > 1)
            files << file;
    }
    std::stable_sort(files.begin(), files.end(), [](const Attachment &one, const Attachment &other) {
        return Attachment_Bytes(one) > Attachment_Bytes(other);
    });
    return files;
}

Found_Attachments Find_Twice(const QList<Attachment> &all, Work &work)
{
    const QList<Attachment> files = Of_Same_Size(all);
    QHash<QByteArray, QList<Attachment>> same;
    QList<QByteArray> order;
    qint64 done = 0;
    Found_Attachments found = Look_Through(files, work, [&](const Attachment &file, Found_Attachments &sofar) {
        Inner_Work inner(work, done++, files.size(), file.name);
        const QByteArray digest = Attachment_Digest(file.id, inner, file.name);
        sofar.stopped = digest.isEmpty();
        if (!same.contains(digest))
            order << digest;
        same[digest] << file;
    });
    for (const QByteArray &digest : order) {
        const QList<Attachment> &group = same[digest];
        if (digest.isEmpty() || group.size() < 2)
            continue;
        found.files += group;
        for (const Attachment &file : group.sliced(1))
            found.repeated << file.id;
    }
    return found;
}

/// The text of an attachment's file.
QString Content_Of(const Attachment &attachment, Work &work)
{
    const QString type = QFileInfo(attachment.name).suffix();
    if (attachment.type == Attachment_Type::External) {
        const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
        return place.kind == Attachment_Place::Kind::File && Files::Is_File(place.target)
                   ? Text_In_File(place.target, type)
                   : QString();
    }
    if (!May_Hold_Text(type))
        return {};
    const QString file = QStringLiteral("seek.bin");
    const Staging staging(10000, {file});
    QString text;
    if (Write_Attachment(attachment.id, staging.Path(file), work, Files::Durability::Scratch))
        text = Text_In_File(staging.Path(file), type);
    staging.Drop(file);
    return text;
}
} // namespace

QList<Attachment> All_Attachments()
{
    QList<Attachment> all;
    Recordset rows;
    for (rows.Open(Sql_Text(Sql::All_Attachments), App().Conn_Str); !rows.Eof(); rows.MoveNext()) {
        all.append(Attachment_From(rows));
        all.back().document = rows[QStringLiteral("code_id")].Text();
        all.back().title = rows[QStringLiteral("code_title")].Text();
    }
    for (rows.Open(Sql_Text(Sql::Attachments_Without_Document), App().Conn_Str); !rows.Eof(); rows.MoveNext()) {
        all.append(Attachment_From(rows));
        all.back().document = rows[QStringLiteral("code_id")].Text();
        all.back().has_document = false;
    }
    return all;
}

Attachment Read_Attachment(qint64 id)
{
    Recordset row;
    row.Open(Sql_Text(Sql::One_Attachment, id), App().Conn_Str);
    if (row.Eof())
        return {};
    Attachment file = Attachment_From(row);
    file.document = row[QStringLiteral("code_id")].Text();
    return file;
}

Attachment_Sum Sum_Of(const QList<Attachment> &attachments)
{
    Attachment_Sum sum;
    for (const Attachment &file : attachments) {
        const bool inside = file.type == Attachment_Type::Internal;
        ++(inside ? sum.inside : sum.outside);
        sum.bytes += inside ? Attachment_Bytes(file) : 0;
    }
    return sum;
}

Found_Attachments Attachments_With(Attachment_Trait trait, const QList<Attachment> &all, Work &work)
{
    if (trait == Attachment_Trait::Twice)
        return Find_Twice(all, work);
    return Look_Through(all, work, [&](const Attachment &file, Found_Attachments &found) {
        if (trait == Attachment_Trait::Any || (trait == Attachment_Trait::Dangling && Is_Dangling(file)) ||
            (trait == Attachment_Trait::Without_Document && !file.has_document))
            found.files << file;
    });
}

Found_Attachments Search_Attachments(const Attachment_Search &search, const QList<Attachment> &all, Work &work)
{
    const auto stands = [&](const QString &text) {
        return text.contains(search.text, Qt::CaseInsensitive);
    };
    qint64 done = 0;
    return Look_Through(all, work, [&](const Attachment &file, Found_Attachments &found) {
        Inner_Work inner(work, done++, all.size(), file.name);
        if ((search.name && stands(file.name)) || (search.remark && stands(file.remark)) ||
            (search.content && stands(Content_Of(file, inner))))
            found.files << file;
    });
}

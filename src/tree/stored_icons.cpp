// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/stored_icons.h"

#include "core/error_log.h"
#include "core/process_state.h"
#include "core/runtime_files.h"
#include "core/sql_text.h"
#include "platform/database/database.h"
#include "platform/database/recordset.h"
#include "platform/files/door.h"
#include "platform/files/paths.h"
#include "platform/machine/machine.h"
#include "tree/folder_ids.h"
#include "tree/folder_sql.h"

#include <QDir>
#include <QFileInfo>
#include <QSet>

namespace
{
constexpr qsizetype Longest_Name = 20; // characters of Cate_Info.Icon_Name
constexpr qint32 Bad_File_Name = 52;
constexpr qsizetype Largest_Icon = 1024 * 1024;
constexpr qsizetype Most_Icons = 2000; // that one start writes
constexpr qsizetype Most_Bytes = 64 * 1024 * 1024;

QString Free_Name(const QString &base, const QString &ending)
{
    QStringList known = Icon_Names();
    for (int number = 1;; ++number) {
        const QString mark = number == 1 ? QString() : QString::number(number);
        QString name = base.left(Longest_Name - ending.size() - mark.size()) + mark + ending;
        if (!known.contains(name, Qt::CaseInsensitive))
            return name;
    }
}

void Write_Row(const QString &name, const QByteArray &picture)
{
    Recordset row;
    row.LockType = Lock_Type::Optimistic;
    row.Open(Sql_Text(Sql::One_File), App().Conn_Str);
    row.AddNew();
    row[QStringLiteral("code_id")].Set(QString());
    row[QStringLiteral("file_name")].Set(name);
    row[QStringLiteral("file_type")].Set(3);
    row[QStringLiteral("file_date")].Set(Machine::Now());
    row[QStringLiteral("file_cont")].AppendChunk(picture);
    row.Update();
}

void Write_Out(const QString &name, const QByteArray &picture)
{
    if (!Files::Is_Plain_Name(name))
        throw Run_Time_Error(Bad_File_Name, QStringLiteral("Bad file name: ") + name, Failure::Path_Access);
    if (picture.size() > Largest_Icon)
        throw Run_Time_Error(Bad_File_Name, QStringLiteral("Too large for an icon: ") + name, Failure::Too_Large);
    const QString path = Icon_Directory() + name;
    // The first start after a change writes; later ones find the same bytes.
    const std::optional<Files::Entry> there = Files::Look(path);
    if (!there || there->size != picture.size() || Files::Read_Bytes(path) != picture)
        Files::Write_Bytes(path, picture, Files::Durability::Staging); // the next start has it again
}
} // namespace

QStringList Icon_Names()
{
    const QStringList patterns{QStringLiteral("*.ico"), QStringLiteral("*.png"), QStringLiteral("*.bmp"),
                               QStringLiteral("*.gif"), QStringLiteral("*.jpg")};
    QStringList names;
    for (const Files::Entry &entry : Files::Entries(Icon_Directory())) {
        if (!entry.is_folder && entry.name.size() <= Longest_Name && !entry.name.contains(u'\'') &&
            QDir::match(patterns, entry.name))
            names << entry.name;
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

QString Add_Stored_Icon(const QString &name, const QByteArray &picture)
{
    const QFileInfo file(Clean_Name(name).remove(u'\''));
    const QString ending = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix().toLower();
    const QString base = file.completeBaseName().isEmpty() ? QStringLiteral("icon") : file.completeBaseName();
    QString kept = Free_Name(base, ending);
    Write_Out(kept, picture);
    Write_Row(kept, picture);
    return kept;
}

void Write_Stored_Icons()
{
    const QString source = QStringLiteral("Main\\Write_Stored_Icons");
    QSet<QString> done;
    qsizetype bytes = 0;
    for (const char16_t *query : {Sql::Used_Icons, Sql::Stored_Icons}) {
        Trap(source, [&] {
            Recordset rows;
            rows.Open(Sql_Text(query), App().Conn_Str);
            for (; !rows.Eof() && done.size() < Most_Icons && bytes < Most_Bytes; rows.MoveNext()) {
                const QString name = rows[0].Text();
                if (done.contains(name))
                    continue;
                done.insert(name);
                const QByteArray picture = rows[1].Bytes();
                bytes += picture.size();
                Trap(source, [&] { Write_Out(name, picture); });
            }
        });
    }
}

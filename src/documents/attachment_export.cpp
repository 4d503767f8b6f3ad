// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachment_export.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "documents/attachment_place.h"
#include "documents/watched_copy.h"
#include "platform/files/paths.h"

#include <QFileInfo>

namespace
{
/// @returns false when it was called off. @throws Run_Time_Error
bool Write_Out(const Attachment &attachment, const QString &path, Work &work)
{
    if (attachment.type == Attachment_Type::Internal)
        return Write_Attachment(attachment.id, path, work);
    return Copy_File_Watched(Attachment_Place::Expanded(attachment.path).target, path, Files::Durability::Given, work);
}

/// A plain name that no file of the folder has.
QString Free_Path(const QString &folder, const QString &name)
{
    if (!Files::Is_Plain_Name(name))
        throw Run_Time_Error(Error_Number::Path_Access, QStringLiteral("Bad file name: ") + name);
    const QFileInfo file(name);
    const QString suffix = file.suffix().isEmpty() ? QString() : QLatin1Char('.') + file.suffix();
    QString path = folder + name;
    for (int i = 2; QFileInfo(path).exists() || QFileInfo(path).isSymLink(); ++i)
        path = QStringLiteral("%1%2 (%3)%4").arg(folder, name.chopped(suffix.size())).arg(i).arg(suffix);
    return path;
}

/// Takes one attachment into the result.
template <class Path>
void Export_One(Work_Result &result, const Attachment &attachment, Work &work, Path &&path)
{
    const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
    if (attachment.type == Attachment_Type::External && !QFileInfo::exists(place.target)) {
        result.failed << Failed_Item{attachment.name, place.target + Pack_Text("Frm_Main", "_NoExist")};
        return;
    }
    Trap(
        QStringLiteral("Mod_File\\Export"),
        [&] {
            result.stopped = !Write_Out(attachment, path(), work);
            result.done += result.stopped ? 0 : 1;
        },
        [&] {
            result.failed << Failed_Item{attachment.name, Error_Text(Err())};
        });
}
} // namespace

bool Is_Exportable(const Attachment &attachment)
{
    return attachment.type == Attachment_Type::Internal ||
           Attachment_Place::Expanded(attachment.path).kind == Attachment_Place::Kind::File;
}

Work_Result Export_Attachment(const Attachment &attachment, const QString &path, Work &work)
{
    Work_Result result;
    Export_One(result, attachment, work, [&] { return path; });
    return result;
}

Work_Result Export_Attachments(const QList<Attachment> &attachments, const QString &folder, Work &work)
{
    Work_Result result;
    const QString directory = Files::With_Final_Separator(folder);
    for (const Attachment &attachment : attachments) {
        if (!result.stopped && work.Next(result.done, attachments.size(), attachment.name))
            Export_One(result, attachment, work, [&] { return Free_Path(directory, attachment.name); });
        else
            result.stopped = true;
    }
    return result;
}

QList<QUrl> Lay_Out_Attachments(const QList<Attachment> &attachments, const QString &folder, Work &work)
{
    QList<QUrl> urls;
    const QString directory = Files::With_Final_Separator(folder);
    for (const Attachment &attachment : attachments) {
        const Attachment_Place::Place place = Attachment_Place::Expanded(attachment.path);
        if (attachment.type != Attachment_Type::Internal) {
            urls << (place.kind == Attachment_Place::Kind::Page ? QUrl(place.target)
                                                                : QUrl::fromLocalFile(place.target));
            continue;
        }
        Files::Make_Directory(folder);
        const QString path = Free_Path(directory, attachment.name);
        if (!Write_Attachment(attachment.id, path, work, Files::Durability::Staging))
            return {};
        urls << QUrl::fromLocalFile(path);
    }
    return urls;
}

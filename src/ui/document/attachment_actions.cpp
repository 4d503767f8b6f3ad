// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/document/attachment_actions.h"

#include "core/error_log.h"
#include "core/error_text.h"
#include "core/language_pack.h"
#include "core/system_log.h"
#include "documents/attachment_export.h"
#include "platform/prompts/prompts.h"
#include "ui/kit/numbers.h"
#include "ui/kit/work_window.h"

#include <QFileInfo>
#include <QWidget>
#include <algorithm>

namespace
{
QString Text(const char *key)
{
    return Pack_Text("Frm_File_Admin", key);
}

/// Where the files go; "" when the user gave up.
QString Ask_Target(const QList<Attachment> &files)
{
    if (files.size() > 1)
        return Prompts::Folder(Pack_Text("Frm_Main", "_Seldb"), {});
    const QString suffix = QFileInfo(files.first().name).suffix();
    const QString kind = suffix.isEmpty() ? QString() : QStringLiteral("%1(*.%2)|*.%2|").arg(Text("_File"), suffix);
    return Prompts::Save_File(Text("_SaveAs"), files.first().name,
                              kind + Text("_AllFile") + QStringLiteral("(*.*)|*.*"));
}
} // namespace

void Attachment_Actions::Report(const QString &text)
{
    Prompts::Message(text, App().App_Title, Prompts::Icon::Exclamation);
}

void Attachment_Actions::Report_Failures(const QList<Failed_Item> &failed)
{
    constexpr qsizetype Most_Named = 8;
    QStringList lines;
    for (const Failed_Item &item : failed.first(std::min(failed.size(), Most_Named)))
        lines << item.name + QStringLiteral(": ") + item.reason;
    if (failed.size() > Most_Named)
        lines << QStringLiteral("… (%1)").arg(failed.size());
    if (!lines.isEmpty())
        Report(lines.join(QLatin1Char('\n')));
}

void Attachment_Actions::Export(QWidget &window, const QList<Attachment> &files)
{
    const auto linked = [](const Attachment &file) {
        return file.type != Attachment_Type::Internal;
    };
    if (files.isEmpty() || !std::all_of(files.begin(), files.end(), Is_Exportable))
        return Report(Text("_ExpType"));
    if (std::any_of(files.begin(), files.end(), linked) &&
        Prompts::Ask(Text("_ExportFileOut"), App().App_Title, Prompts::Choice::Yes_No) != Prompts::Answer::Yes)
        return;
    const QString target = Ask_Target(files);
    if (target.isEmpty())
        return;
    Work_Result result;
    Long_Work::Run(&window, Text("_SaveAs"), [&](Work &work) {
        result = files.size() == 1 ? Export_Attachment(files.first(), target, work)
                                   : Export_Attachments(files, target, work);
    });
    Report_Failures(result.failed);
    if (!result.stopped && result.failed.isEmpty())
        Prompts::Message(Text("_ExportFile"), App().App_Title);
}

bool Attachment_Actions::Delete_After_Question(QWidget &window, const QList<Attachment> &files)
{
    QString question = Text("_DeleteFile");
    if (files.size() > 1)
        question += QLatin1Char('\n') + Text("_How_Many").arg(Grouped(files.size()));
    if (files.isEmpty() ||
        Prompts::Ask(question, App().App_Title, Prompts::Choice::Yes_No, Prompts::Answer::No) != Prompts::Answer::Yes)
        return false;
    QList<qint64> ids;
    for (const Attachment &file : files)
        ids << file.id;
    Long_Work::Run_To_End(&window, Text("_Deleting"), [&] { Delete_Attachments(ids); });
    const QString more = files.size() > 1 ? QStringLiteral(" … (%1)").arg(files.size()) : QString();
    Add_Log(Log_Type::Deleted, files.first().name + more + Pack_Text("Frm_Main", "_DelOk"));
    return true;
}

bool Attachment_Actions::Edit_Remark(const Attachment &file)
{
    QString remark = file.remark;
    for (bool stored = false; !stored;) { // what was typed comes back for another try
        remark =
            Prompts::Input(Pack_Text("Frm_Main", "_IsModifyContent"), Pack_Text("Frm_Main", "_IsModifyTitle"), remark);
        if (remark.isNull())
            return false;
        stored = Trap(
            QStringLiteral("Frm_Doc_Standard\\Attachments"),
            [&] {
                Set_Attachment_Remark(file.id, remark);
                return true;
            },
            [] { Report(Error_Text(Err())); });
    }
    return true;
}

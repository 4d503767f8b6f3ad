// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/tool_text.h"

#include "platform/programs/outside_program.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace ExtractText
{
namespace
{
int Tool_Time = 30'000;

struct Command {
    QString program;
    QStringList arguments; ///< before the path
    QStringList after;     ///< behind it
};

Command Command_For(Tool tool)
{
    const auto text = [](const char *latin) {
        return QString::fromLatin1(latin);
    };
    switch (tool) {
    case Tool::Pdf:
        return {text("pdftotext"), {text("-q"), text("-enc"), text("UTF-8"), text("-nopgbrk")}, {text("-")}};
    case Tool::Words: // no wrapping, and bytes of old Chinese files as their code page
        return {text("catdoc"), {text("-w"), text("-s"), text("cp936"), text("-d"), text("utf-8")}, {}};
    case Tool::Sheets:
        return {text("xls2csv"), {text("-q0"), text("-c\t"), text("-s"), text("cp936"), text("-d"), text("utf-8")}, {}};
    case Tool::Slides:
    case Tool::None:
        break;
    }
    return {};
}

} // namespace

void Set_Tool_Time(int milliseconds)
{
    Tool_Time = milliseconds;
}

QString Text_By_Tool(Tool tool, const QString &path, qint64 limit)
{
    const Command command = Command_For(tool);
    const QString program = command.program.isEmpty() ? QString() : Programs::Find({command.program});
    if (program.isEmpty())
        return {};
    constexpr qint64 Most_Bytes_Of_A_Character = 3;
    // A tool that goes wild meets its own bounds. An absolute path is never taken for an option.
    const Programs::Bounds bounds{
        .time = Tool_Time, .memory = Q_INT64_C(1) << 30, .output = limit * Most_Bytes_Of_A_Character};
    const QStringList path_and_after = QStringList(QFileInfo(path).absoluteFilePath()) + command.after;
    const Programs::Outcome outcome =
        Programs::Run({program, command.arguments + path_and_after, {}, {}, {}}, bounds, [] {
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
            return true;
        });
    if (outcome.end != Programs::End::Well)
        return {};
    return QString::fromUtf8(outcome.output).left(limit);
}
} // namespace ExtractText

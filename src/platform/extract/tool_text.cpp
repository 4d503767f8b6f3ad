// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/extract/tool_text.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

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

/// A tool that goes wild meets its own bounds, whatever becomes of this program.
void Bound_Child()
{
#ifdef Q_OS_UNIX
    const rlimit memory{rlim_t(1) << 30, rlim_t(1) << 30};
    const rlimit seconds{60, 60};
    const rlimit written{0, 0};
    setrlimit(RLIMIT_AS, &memory);
    setrlimit(RLIMIT_CPU, &seconds);
    setrlimit(RLIMIT_FSIZE, &written);
#endif
}

/// What the process writes, until it ends, has written enough or is out of time. @returns whether it ended well
bool Collect(QProcess &process, qint64 mostBytes, QByteArray &output)
{
    const QDeadlineTimer deadline(Tool_Time);
    while (process.state() != QProcess::NotRunning && output.size() < mostBytes && !deadline.hasExpired()) {
        process.waitForReadyRead(50);
        output += process.readAllStandardOutput();
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    }
    const bool enough = output.size() >= mostBytes;
    if (process.state() != QProcess::NotRunning) {
        process.kill();
        process.waitForFinished(1000);
        return enough;
    }
    output += process.readAllStandardOutput();
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}
} // namespace

void Set_Tool_Time(int milliseconds)
{
    Tool_Time = milliseconds;
}

QString Text_By_Tool(Tool tool, const QString &path, qint64 limit)
{
    const Command command = Command_For(tool);
    const QString program = command.program.isEmpty() ? QString() : QStandardPaths::findExecutable(command.program);
    if (program.isEmpty())
        return {};
    constexpr qint64 Most_Bytes_Of_A_Character = 3;
    QProcess process;
    process.setProcessChannelMode(QProcess::SeparateChannels);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setChildProcessModifier(Bound_Child);
    // An absolute path is never taken for an option.
    process.start(program, command.arguments + QStringList(QFileInfo(path).absoluteFilePath()) + command.after);
    QByteArray output;
    if (!process.waitForStarted(5000) || !Collect(process, limit * Most_Bytes_Of_A_Character, output))
        return {};
    return QString::fromUtf8(output).left(limit);
}
} // namespace ExtractText

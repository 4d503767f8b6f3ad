// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/programs/outside_program.h"

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

namespace
{
constexpr int Start_Time = 5'000; // milliseconds
constexpr int Look_Every = 50;    // milliseconds
constexpr int Death_Time = 1'000; // milliseconds

/// In the new process: bounds, and a group of its own, so that all of it can be ended together.
void Bound_Child(const Programs::Bounds &bounds)
{
#ifdef Q_OS_UNIX
    const auto limit = [](auto resource, qint64 most) {
        const rlimit both{static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
        setrlimit(resource, &both);
    };
    setpgid(0, 0);
    if (bounds.memory > 0)
        limit(RLIMIT_AS, bounds.memory);
    limit(RLIMIT_CPU, bounds.processor_seconds);
    limit(RLIMIT_FSIZE, bounds.file_size);
    limit(RLIMIT_CORE, 0);
#endif
}

void End_All(QProcess &process)
{
#ifdef Q_OS_UNIX
    if (const auto group = static_cast<pid_t>(process.processId()); group > 1)
        ::kill(-group, SIGKILL);
#endif
    process.kill();
    process.waitForFinished(Death_Time);
}

QProcessEnvironment Environment(const Programs::Call &call)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : call.not_environment)
        environment.remove(name);
    for (const QString &setting : call.environment)
        environment.insert(setting.section(QLatin1Char('='), 0, 0), setting.section(QLatin1Char('='), 1));
    return environment;
}
} // namespace

QString Programs::Find(const QStringList &names)
{
    for (const QString &name : names) {
        if (QString path = QStandardPaths::findExecutable(name); !path.isEmpty())
            return path;
    }
    return {};
}

Programs::Outcome Programs::Run(const Call &call, const Bounds &bounds, const std::function<bool()> &goOn)
{
    Outcome outcome;
    QProcess process;
    process.setProcessEnvironment(Environment(call));
    process.setWorkingDirectory(call.folder);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    const bool isHeard = bounds.output > 0;
    if (!isHeard)
        process.setStandardOutputFile(QProcess::nullDevice());
    process.setChildProcessModifier([bounds] { Bound_Child(bounds); });
    const QDeadlineTimer deadline(bounds.time);
    process.start(call.program, call.arguments);
    if (!process.waitForStarted(Start_Time))
        return outcome;
    bool goesOn = true;
    while (process.state() != QProcess::NotRunning && (!isHeard || outcome.output.size() < bounds.output) &&
           !deadline.hasExpired() && (goesOn = goOn())) {
        if (!isHeard) {
            process.waitForFinished(Look_Every);
            continue;
        }
        process.waitForReadyRead(Look_Every);
        outcome.output += process.readAllStandardOutput();
    }
    if (process.state() == QProcess::NotRunning) {
        outcome.output += isHeard ? process.readAllStandardOutput() : QByteArray();
        const bool isWell = process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
        outcome.end = isWell ? End::Well : End::Badly;
        return outcome;
    }
    End_All(process);
    const bool hasEnough = isHeard && outcome.output.size() >= bounds.output;
    outcome.end = hasEnough ? End::Well : goesOn ? End::Out_Of_Time : End::Stopped;
    return outcome;
}

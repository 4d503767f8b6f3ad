// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace
{
QString Output_Of(const QString &program, const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.waitForFinished(5000);
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void Copy_Directory(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QFileInfo &entry : QDir(from).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString target = to + QLatin1Char('/') + entry.fileName();
        if (entry.isDir())
            Copy_Directory(entry.filePath(), target);
        else
            QFile::copy(entry.filePath(), target);
    }
}
} // namespace

Desktop::Desktop()
{
    // The server picks a free display and writes its number.
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                    QStringLiteral("1280x860x24")});
    if (!m_server.waitForStarted() || !m_server.waitForReadyRead(20000))
        return;
    m_display = QLatin1Char(':') + QString::fromLatin1(m_server.readAllStandardOutput()).trimmed();
    m_manager.setProcessEnvironment(Environment());
    m_manager.start(QStringLiteral("openbox"), QStringList());
    m_manager.waitForStarted();
}

Desktop::~Desktop()
{
    for (QProcess *process : {&m_manager, &m_server}) {
        process->kill();
        process->waitForFinished();
    }
}

QProcessEnvironment Desktop::Environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    environment.insert(QStringLiteral("LANG"), QStringLiteral("zh_CN.UTF-8"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("LC_ALL"));
    return environment;
}

QString Desktop::Do(const QStringList &arguments) const
{
    return Output_Of(QStringLiteral("xdotool"), arguments, Environment());
}

void Desktop::Shoot(const QString &path) const
{
    Output_Of(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), path}, Environment());
}

Program::Program(const Desktop &desktop) : m_desktop(desktop)
{
    Copy_Directory(QStringLiteral(ZELQOR_APP) + QStringLiteral("/Lang"), Path(QStringLiteral("Lang")));
    QFile::copy(QStringLiteral(ZELQOR_APP "/zelqor"), Path(QStringLiteral("zelqor")));
}

Program::~Program()
{
    Kill();
}

void Program::Start(const QStringList &extraEnvironment)
{
    m_process = std::make_unique<QProcess>();
    QProcessEnvironment environment = m_desktop.Environment();
    for (const QString &entry : extraEnvironment)
        environment.insert(entry.section(QLatin1Char('='), 0, 0), entry.section(QLatin1Char('='), 1));
    m_process->setProcessEnvironment(environment);
    m_process->start(Path(QStringLiteral("zelqor")), QStringList());
    m_process->waitForStarted();
}

QString Program::Visible_Window() const
{
    const QString found = m_desktop.Do(
        {QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("--onlyvisible"), QStringLiteral("--pid"),
         QString::number(m_process->processId()), QStringLiteral("--name"), QStringLiteral("Zelqor  ")});
    return found.section(QLatin1Char('\n'), -1);
}

QString Program::Wait_For_Window(int milliseconds) const
{
    QString window;
    Wait_Until(
        [&] {
            window = Visible_Window();
            return !window.isEmpty();
        },
        milliseconds);
    if (window.isEmpty())
        return window;
    m_desktop.Do({QStringLiteral("windowactivate"), window});
    Wait_Until([&] { return m_desktop.Do({QStringLiteral("getactivewindow")}) == window; }, 3000);
    return window;
}

void Program::Kill()
{
    if (!Is_Running())
        return;
    m_process->kill();
    m_process->waitForFinished();
}

bool Program::Leave(int milliseconds)
{
    // A window that has just come up may not have the keyboard yet.
    for (int waited = 0; Is_Running() && waited < milliseconds; waited += 700) {
        Wait_For_Window(0);
        m_desktop.Key(QStringLiteral("ctrl+q"));
        m_process->waitForFinished(700);
    }
    return !Is_Running();
}

void Program::Set(const QStringList &settings) const
{
    QFile file(Path(QStringLiteral("Config.ini")));
    if (!file.open(QIODevice::ReadWrite))
        return;
    const QByteArray lines = (QStringList{QStringLiteral("[Col]")} + settings).join(QStringLiteral("\r\n")).toUtf8();
    const QByteArray text = file.readAll().replace("[Col]", lines);
    file.seek(0);
    file.write(text);
}

QString Program::Sql(const QString &statement) const
{
    const QString database = Path(QStringLiteral("data/Zelqor.db"));
    if (!QFile::exists(database))
        return {};
    return Output_Of(QStringLiteral("sqlite3"),
                     {QStringLiteral("-cmd"), QStringLiteral(".timeout 5000"), database, statement},
                     m_desktop.Environment());
}

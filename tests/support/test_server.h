// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <csignal>
#include <unistd.h>

/// A PostgreSQL server of this test program's own, which is reached through a socket in a directory of
/// its own. It is made when the first database is wanted, and ends with the program.
class Test_Server
{
public:
    static Test_Server &The_One()
    {
        static Test_Server server;
        return server;
    }
    /// A new empty database; the text of the connection to it.
    [[nodiscard]] QString New_Database()
    {
        const QString name = QStringLiteral("t%1").arg(++m_databases);
        Run("createdb", {"-h", m_folder.path(), "-p", "5432", "-U", "zelqor", "-T", "template0", name});
        return Connection_Text(name);
    }
    /// Runs a statement of the server's own, as another program would.
    void Sql(const QString &link, const QString &statement) const
    {
        QFile file(link.section(u'=', 1));
        static_cast<void>(file.open(QIODevice::ReadOnly));
        const QString database =
            QString::fromUtf8(file.readAll()).section(QStringLiteral("DATABASE="), 1).section(u';', 0, 0);
        Run("psql", {"-h", m_folder.path(), "-p", "5432", "-U", "zelqor", "-d", database, "-q", "-c", statement});
    }
    /// Takes all tables out of a database.
    void Empty(const QString &database) const
    {
        Run("psql", {"-h", m_folder.path(), "-p", "5432", "-U", "zelqor", "-d", database, "-q", "-c",
                     "SET client_min_messages = error; DROP SCHEMA public CASCADE; CREATE SCHEMA public"});
    }
    [[nodiscard]] QString Connection_Text(const QString &database) const
    {
        return QStringLiteral("DRIVER=PostgreSQL Unicode;SERVER=%1;PORT=5432;DATABASE=%2;UID=zelqor;")
            .arg(m_folder.path(), database);
    }
    /// Writes a data link to a new database into a file; its connection string.
    [[nodiscard]] QString New_Link(const QString &path)
    {
        Write_Link(path, New_Database());
        return QStringLiteral("File Name=") + path;
    }
    static void Write_Link(const QString &path, const QString &text)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("the data link cannot be written");
        file.write("[oledb]\nProvider=MSDASQL.1;Extended Properties=\"" + text.toUtf8() + "\"\n");
    }
    void Restart()
    {
        Stop();
        Start();
    }
    void Stop()
    {
        ::kill(static_cast<pid_t>(m_postgres.processId()), SIGQUIT); // at once, and its processes with it
        m_postgres.waitForFinished();
    }
    void Start()
    {
        const QStringList arguments{"-D", Data(),      "-k", m_folder.path(),
                                    "-p", "5432",      "-c", "listen_addresses=",
                                    "-c", "fsync=off", "-c", "full_page_writes=off"};
        m_postgres.setWorkingDirectory(QStringLiteral("/tmp"));
        m_postgres.setStandardErrorFile(QProcess::nullDevice());
        m_postgres.start(QStringLiteral("setpriv"),
                         As_Its_User() + QStringList{"--pdeathsig", "KILL", Path("postgres")} + arguments);
        for (int tries = 0; tries < 200 && !Run("pg_isready", {"-h", m_folder.path(), "-p", "5432", "-q"}, true);
             ++tries)
            QTest::qWait(25);
    }

private:
    /// The folder has a short path, as the name of a socket has at most 107 bytes.
    Test_Server() : m_folder(QStringLiteral("/tmp/zelqor-server-XXXXXX"))
    {
        if (geteuid() == 0 && QProcess::execute(QStringLiteral("chown"), {"postgres", m_folder.path()}) != 0)
            qFatal("there is no user for the server");
        Run("initdb", {"-D", Data(), "-E", "UTF8", "--locale=C.UTF-8", "-A", "trust", "-U", "zelqor", "--no-sync",
                       "--no-instructions"});
        Start();
    }
    ~Test_Server() { Stop(); }
    Test_Server(const Test_Server &) = delete;
    Test_Server &operator=(const Test_Server &) = delete;

    [[nodiscard]] QString Data() const { return m_folder.filePath(QStringLiteral("data")); }
    static QString Path(const char *program)
    {
        const QDir versions(QStringLiteral("/usr/lib/postgresql"));
        const QStringList found = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        if (found.isEmpty())
            qFatal("PostgreSQL is not installed");
        return versions.filePath(found.last() + QStringLiteral("/bin/") + QLatin1String(program));
    }
    /// The server refuses to work for root.
    static QStringList As_Its_User()
    {
        return geteuid() == 0 ? QStringList{"--reuid=postgres", "--regid=postgres", "--init-groups"} : QStringList();
    }
    static bool Run(const char *program, const QStringList &arguments, bool mayFail = false)
    {
        QProcess process;
        process.setWorkingDirectory(QStringLiteral("/tmp"));
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setStandardOutputFile(QProcess::nullDevice());
        process.start(QStringLiteral("setpriv"), As_Its_User() + QStringList{Path(program)} + arguments);
        const bool good = process.waitForFinished(60000) && process.exitCode() == 0;
        if (!good && !mayFail)
            qFatal("%s failed", program);
        return good;
    }

    QTemporaryDir m_folder;
    QProcess m_postgres;
    int m_databases = 0;
};

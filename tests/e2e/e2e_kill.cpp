// SPDX-License-Identifier: GPL-3.0-or-later
//
// Kills the program at random points of start, save and exit, and starts it again: every stored document is there,
// the database is sound and the settings file is whole. ZELQOR_KILL_ROUNDS sets the number of rounds.

#include "desktop.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

namespace
{
constexpr int Default_Rounds = 50;

QString Config_Of(const Program &program)
{
    QFile file(program.Path(QStringLiteral("Config.ini")));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

QStringList Stored_Ids(const Program &program)
{
    return program.Sql(QStringLiteral("select Code_ID from Code_Info order by 1"))
        .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

int Random(int below)
{
    return QRandomGenerator::global()->bounded(below);
}
} // namespace

class E2e_Kill : public QObject
{
    Q_OBJECT

private slots:
    void First_Starts_Survive_A_Kill();
    void Saves_And_Exits_Survive_A_Kill();

private:
    void Write_And_Save(const Program &program, int round) const;
    [[nodiscard]] int Rounds() const
    {
        const int asked = qEnvironmentVariableIntValue("ZELQOR_KILL_ROUNDS");
        return asked > 0 ? asked : Default_Rounds;
    }

    Desktop m_desktop;
};

/// A third of the rounds: a new directory each, killed while the program makes its files.
void E2e_Kill::First_Starts_Survive_A_Kill()
{
    QVERIFY(m_desktop.Is_Up());
    for (int round = 0; round < Rounds() / 3; ++round) {
        Program program(m_desktop);
        program.Start();
        QThread::msleep(static_cast<unsigned long>(Random(500)));
        program.Kill();
        const QString config = Config_Of(program);
        QVERIFY2(config.isEmpty() || config.contains(QStringLiteral("[RegKey]")), qPrintable(config));
        program.Start();
        QVERIFY2(!program.Wait_For_Window().isEmpty(), "the program did not come up after a kill");
        QCOMPARE(program.Sql(QStringLiteral("pragma integrity_check")), QStringLiteral("ok"));
    }
}

void E2e_Kill::Write_And_Save(const Program &program, int round) const
{
    m_desktop.Key(QStringLiteral("ctrl+n"));
    m_desktop.Type(QStringLiteral("Round %1").arg(round));
    m_desktop.Key(QStringLiteral("ctrl+s"));
    // A kill may come before, in the middle of or after the save.
    if (Random(2) == 0)
        Wait_Until([&] { return Stored_Ids(program).size() > round; }, 150);
}

void E2e_Kill::Saves_And_Exits_Survive_A_Kill()
{
    QVERIFY(m_desktop.Is_Up());
    Program program(m_desktop);
    program.Start();
    QVERIFY(!program.Wait_For_Window().isEmpty());
    program.Kill();
    program.Sql(QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name,Order_Id,Cate_Exp,Cate_pass) "
                               "values('001','Rounds',1,'1','')"));
    program.Set({QStringLiteral("Tree_LastKey=001"), QStringLiteral("Backup_Num=0")});

    QStringList known;
    for (int round = 0; round < Rounds() - Rounds() / 3; ++round) {
        program.Start();
        QVERIFY2(!program.Wait_For_Window().isEmpty(), qPrintable(QStringLiteral("no window in round %1").arg(round)));
        // What the killed one had decoded is gone.
        QStringList left = QDir(program.Path(QStringLiteral("data/temp"))).entryList(QDir::Files);
        left.removeAll(QStringLiteral("second.start")); // by which another start calls this one
        QCOMPARE(left, QStringList());
        QCOMPARE(program.Sql(QStringLiteral("pragma integrity_check")), QStringLiteral("ok"));
        const QStringList stored = Stored_Ids(program);
        for (const QString &id : known)
            QVERIFY2(stored.contains(id), qPrintable(id + QStringLiteral(" was lost")));
        Write_And_Save(program, round);
        if (round % 3 == 2)
            m_desktop.Key(QStringLiteral("ctrl+q"));
        QThread::msleep(static_cast<unsigned long>(Random(120)));
        known = Stored_Ids(program);
        program.Kill();
        QVERIFY(Config_Of(program).contains(QStringLiteral("[RegKey]")));
    }
    QVERIFY2(!known.isEmpty(), "no round stored a document");
}

QTEST_GUILESS_MAIN(E2e_Kill)
#include "e2e_kill.moc"

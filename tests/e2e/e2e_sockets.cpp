// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop.h"

#include <QDir>
#include <QFile>
#include <QSet>
#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Bytes_Of(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A process and all that it has started, as far as they live.
QStringList Family_Of(qint64 process)
{
    QStringList family{QString::number(process)};
    const QStringList all = QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs);
    for (qsizetype known = 0; known < family.size(); ++known) {
        for (const QString &other : all) {
            const QByteArray stat = Bytes_Of(u"/proc/%1/stat"_s.arg(other));
            const QByteArray parent = stat.mid(stat.lastIndexOf(')') + 4).split(' ').value(0);
            if (QString::fromLatin1(parent) == family.at(known))
                family << other;
        }
    }
    return family;
}

/// The sockets of some processes that reach beyond this machine's own files: "table local remote state" of each.
QStringList Network_Sockets(const QStringList &processes)
{
    QSet<QByteArray> sockets;
    for (const QString &process : processes) {
        const QDir open(u"/proc/%1/fd"_s.arg(process));
        for (const QString &file : open.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
            const QString target = QFile(open.filePath(file)).symLinkTarget();
            const qsizetype mark = target.indexOf(u"socket:["_s);
            if (mark >= 0)
                sockets << target.mid(mark + 8).chopped(1).toLatin1();
        }
    }
    QStringList found;
    for (const char *table : {"tcp", "tcp6", "udp", "udp6", "udplite", "raw", "raw6"}) {
        for (const QByteArray &line : Bytes_Of(u"/proc/net/"_s + QLatin1String(table)).split('\n')) {
            const QList<QByteArray> words = line.simplified().split(' ');
            if (sockets.contains(words.value(9)))
                found << QLatin1String(table) + u' ' + QString::fromLatin1(words.mid(1, 3).join(' '));
        }
    }
    return found;
}
} // namespace

/// The program opens no socket to any network, and the window without a display is for this machine only.
class E2e_Sockets : public QObject
{
    Q_OBJECT

private slots:
    void The_Program_Opens_None()
    {
        const Desktop desktop;
        QVERIFY(desktop.Is_Up());
        Program program(desktop);
        program.Start();
        QVERIFY(!program.Wait_For_Window().isEmpty());
        QStringList found;
        for (const char *keys : {"ctrl+n", "ctrl+f", "Escape", "F1"}) {
            desktop.Key(QLatin1String(keys));
            for (int look = 0; look < 10; ++look) {
                found << Network_Sockets(Family_Of(program.Process_Id()));
                QThread::msleep(20);
            }
        }
        QCOMPARE(found, QStringList());
    }

    void A_Window_Without_A_Display_Is_For_This_Machine()
    {
        const Desktop desktop;
        const Program program(desktop);
        QProcess run;
        QProcessEnvironment environment = desktop.Environment();
        environment.remove(u"DISPLAY"_s);
        environment.remove(u"WAYLAND_DISPLAY"_s);
        run.setProcessEnvironment(environment);
        run.setProcessChannelMode(QProcess::MergedChannels);
        run.start(QStringLiteral(ZELQOR_DEV), {u"run"_s, program.Path(u"zelqor"_s)});
        QByteArray said;
        QVERIFY2(Wait_Until(
                     [&] {
                         run.waitForReadyRead(10);
                         said += run.readAll();
                         return QFile::exists(program.Path(u"data/Zelqor.db"_s));
                     },
                     60000),
                 said.constData());
        const QStringList family = Family_Of(run.processId());
        const QStringList sockets = Network_Sockets(family);
        QVERIFY2(family.size() > 3 && sockets.size() == 1, qPrintable(sockets.join(u'\n')));
        const QString address = sockets.first().section(u' ', 1, 1);
        QCOMPARE(address.section(u':', 0, 0), u"0100007F"_s); // 127.0.0.1

        QTcpSocket viewer; // RFC 6143, 7.1: the version, then the kinds of security that the server offers
        viewer.connectToHost(u"127.0.0.1"_s, address.section(u':', 1).toUShort(nullptr, 16));
        QVERIFY(viewer.waitForConnected() && viewer.waitForReadyRead());
        QVERIFY(viewer.readAll().startsWith("RFB 003.008"));
        viewer.write("RFB 003.008\n");
        QVERIFY(viewer.waitForReadyRead());
        constexpr char By_Password = 2;
        QCOMPARE(viewer.readAll(), QByteArray("\x01").append(By_Password));
        viewer.abort();

        run.terminate();
        QVERIFY(run.waitForFinished());
        QVERIFY(Wait_Until([&] { return Network_Sockets(family).isEmpty(); }));
    }
};

QTEST_GUILESS_MAIN(E2e_Sockets)
#include "e2e_sockets.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
//
// What is at hand while the window is out of sight, on an X server and a session bus of their own.

#include "desktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class E2e_Hand : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(m_desktop.Is_Up());
        m_program = std::make_unique<Program>(m_desktop);
        m_program->Start();
        QVERIFY(!m_program->Wait_For_Window().isEmpty());
    }
    void cleanup() { m_program.reset(); }
    void The_Key_Shows_And_Hides();
    void A_Script_Sends_A_Note();
    void A_Quick_Note_Outlives_A_Kill();
    void The_Floating_Window_Is_Moved_And_Takes_Files();

private:
    /// The window of a name that is on screen, "" for none. The tool's own search knows names of one alphabet only.
    [[nodiscard]] QString Window(const QString &name) const
    {
        for (const QString &window :
             m_desktop.Do({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"."_s}).split(u'\n')) {
            if (m_desktop.Do({u"getwindowname"_s, window}) == name)
                return window;
        }
        return {};
    }
    /// Whether the main window comes to be on screen, or off it.
    [[nodiscard]] bool Becomes(bool visible) const
    {
        return Wait_Until([&] { return m_program->Visible_Window().isEmpty() != visible; }, 5000);
    }
    /// Presses a key until something has happened: a busy machine may not have bound it yet.
    template <class Condition>
    [[nodiscard]] bool Presses(const QString &keys, Condition &&happened) const
    {
        m_desktop.Key(keys);
        return Wait_Until(happened, 5000);
    }
    /// @returns its exit code, and what it printed
    [[nodiscard]] int Send(const QStringList &arguments, const QByteArray &input, QString *printed = nullptr) const
    {
        QProcess client;
        client.setProcessEnvironment(m_desktop.Environment());
        client.start(QStringLiteral(ZELQOR_APP "/zelqor-send"), arguments);
        client.write(input);
        client.closeWriteChannel();
        client.waitForFinished(60'000);
        if (printed != nullptr)
            *printed = QString::fromUtf8(client.readAllStandardOutput()).trimmed();
        return client.exitCode();
    }

    Desktop m_desktop;
    std::unique_ptr<Program> m_program;
};

void E2e_Hand::The_Key_Shows_And_Hides()
{
    const auto gone = [&] {
        return m_program->Visible_Window().isEmpty();
    };
    QVERIFY(Presses(u"alt+i"_s, gone));
    QVERIFY(Presses(u"alt+i"_s, [&] { return !gone(); }));
    m_desktop.Key(u"Num_Lock"_s); // which changes nothing for a user
    m_desktop.Key(u"Caps_Lock"_s);
    QVERIFY(Presses(u"alt+i"_s, gone));
    QVERIFY(Presses(u"alt+i"_s, [&] { return !gone(); }));
    m_desktop.Key(u"Num_Lock"_s);
    m_desktop.Key(u"Caps_Lock"_s);

    // Another program holds it: this one says so, and that one goes on hearing it.
    Program other(m_desktop);
    other.Start();
    QVERIFY(Wait_Until([&] { return !other.Visible_Window().isEmpty(); }, 20000));
    QVERIFY(Wait_Until([&] {
        QFile log(other.Path(u"Error.log"_s));
        return log.open(QIODevice::ReadOnly) && log.readAll().contains("Hand_Keys");
    }));
    QVERIFY(Presses(u"alt+i"_s, gone));
    QVERIFY(!other.Visible_Window().isEmpty());

    m_program->Kill(); // and is free again with it
    QVERIFY(other.Leave());
    other.Start();
    QVERIFY(!other.Wait_For_Window().isEmpty());
    QVERIFY(Presses(u"alt+i"_s, [&] { return other.Visible_Window().isEmpty(); }));
}

void E2e_Hand::A_Script_Sends_A_Note()
{
    QString id;
    QVERIFY(Wait_Until([&] { return Send({u"--title"_s, u"From a script"_s}, "text\nin lines\n", &id) == 0; }));
    QCOMPARE(m_program->Sql(u"select Code_Title,Cate_ID,Code_Content from Code_Info where Code_ID='%1'"_s.arg(id)),
             u"From a script|000|text\nin lines"_s);
    QCOMPARE(Send({}, "\n"), 1);
    QCOMPARE(Send({}, QByteArray(16 * 1024 * 1024 + 1, 'x')), 1);
    QCOMPARE(Send({u"--nonsense"_s}, {}), 2);
    QCOMPARE(m_program->Sql(u"select count(*) from Code_Info"_s), u"1"_s);
    QCOMPARE(Send({u"--toggle"_s}, {}), 0);
    QVERIFY(Becomes(false));
    QCOMPARE(Send({u"--show"_s}, {}), 0);
    QVERIFY(Becomes(true));
    m_program->Kill();
    QCOMPARE(Send({}, "text"), 3);
}

void E2e_Hand::A_Quick_Note_Outlives_A_Kill()
{
    QVERIFY(Presses(u"alt+i"_s, [&] { return m_program->Visible_Window().isEmpty(); }));
    QVERIFY(Presses(u"alt+shift+i"_s, [&] { return !Window(u"速记"_s).isEmpty(); }));
    m_desktop.Do({u"windowfocus"_s, u"--sync"_s, Window(u"速记"_s)});
    m_desktop.Type(u"kept words"_s);
    QVERIFY(Wait_Until([&] {
        for (const QString &folder : QDir(m_program->Path(u"data"_s)).entryList({u"*-drafts"_s})) {
            for (const QString &name : QDir(m_program->Path(u"data/"_s + folder)).entryList({u"*.draft"_s})) {
                QFile draft(m_program->Path(u"data/%1/%2"_s.arg(folder, name)));
                if (draft.open(QIODevice::ReadOnly) && draft.readAll().contains("kept words"))
                    return true;
            }
        }
        return false;
    }));
    m_program->Kill();
    m_program->Start();
    QVERIFY(Wait_Until([&] { return !Window(u"Zelqor"_s).isEmpty(); }, 20000)); // the question
    m_desktop.Key(u"Return"_s);
    QVERIFY(Wait_Until([&] { return Window(u"Zelqor"_s).isEmpty(); }));
}

void E2e_Hand::The_Floating_Window_Is_Moved_And_Takes_Files()
{
    const QString floating = Window(u"悬浮窗"_s);
    QVERIFY(!floating.isEmpty());
    const auto place = [&] {
        const QStringList words = m_desktop.Do({u"getwindowgeometry"_s, u"--shell"_s, floating}).split(u'\n');
        return QPoint(words.value(1).section(u'=', 1).toInt(), words.value(2).section(u'=', 1).toInt());
    };
    const auto mouse = [&](const QPoint &point) {
        m_desktop.Do({u"mousemove"_s, QString::number(point.x()), QString::number(point.y())});
        QThread::msleep(100);
    };
    const auto drag = [&](const QPoint &from, const QPoint &to) {
        mouse(from);
        m_desktop.Do({u"mousedown"_s, u"1"_s});
        mouse(from + QPoint(-6, -6)); // from here on the desktop moves it
        mouse(from + QPoint(-12, -12));
        for (int step = 1; step <= 8; ++step)
            mouse(from + (to - from) * step / 8);
        m_desktop.Do({u"mouseup"_s, u"1"_s});
    };
    const QPoint middle(26, 26);
    const QPoint before = place();
    drag(before + middle, QPoint(500, 300));
    QVERIFY(Wait_Until([&] { return (place() + middle - QPoint(500, 300)).manhattanLength() < 60; }, 5000));
    QVERIFY(Wait_Until([&] {
        QFile settings(m_program->Path(u"Config.ini"_s));
        return settings.open(QIODevice::ReadOnly) &&
               settings.readAll().contains("OnTop_Left=" + QByteArray::number(place().x() * 15));
    }));

    QFile file(m_program->Path(u"dropped.txt"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("dropped");
    file.close();
    QProcess source;
    source.setProcessEnvironment(m_desktop.Environment());
    source.start(QStringLiteral(DRAG_SOURCE), {file.fileName()});
    QVERIFY(Wait_Until([&] { return !Window(u"drag source"_s).isEmpty(); }));
    for (int tries = 0; tries < 3 && m_program->Sql(u"select count(*) from Code_Info"_s) != u"1"; ++tries) {
        drag(QPoint(20, 20), place() + middle);
        Wait_Until([&] { return m_program->Sql(u"select count(*) from Code_Info"_s) == u"1"; }, 4000);
    }
    source.kill();
    source.waitForFinished();
    QCOMPARE(m_program->Sql(u"select Code_Title,Code_Type,Code_Content from Code_Info"_s),
             u"dropped.txt|TXT|dropped"_s);
}

QTEST_GUILESS_MAIN(E2e_Hand)
#include "e2e_hand.moc"

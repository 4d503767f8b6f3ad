// SPDX-License-Identifier: GPL-3.0-or-later
//
// The road of one document: files are dropped on the list, opened, edited, saved, closed, and are all there after the
// next start.

#include "desktop.h"

#include <QFile>
#include <QTest>

class E2e_Road : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void Dropped_Files_Are_Edited_And_Found_Again();
    void A_Second_Start_Brings_The_First_Forward();

private:
    /// Drags files onto the list. @returns whether the database then holds `documents`
    [[nodiscard]] bool Drop(const QStringList &files, int documents) const;
    [[nodiscard]] bool Drag_Once(const QStringList &files, int documents) const;
    void Open_First_Row() const;

    Desktop m_desktop;
    std::unique_ptr<Program> m_program;
};

/// A picture of what a failed test saw, where ZELQOR_E2E_SHOTS names a folder.
void E2e_Road::cleanup()
{
    const QString folder = qEnvironmentVariable("ZELQOR_E2E_SHOTS");
    if (QTest::currentTestFailed() && !folder.isEmpty())
        m_desktop.Shoot(folder + QLatin1Char('/') + QLatin1String(QTest::currentTestFunction()) +
                        QStringLiteral(".png"));
    m_program.reset();
}

namespace
{
/// Where Place puts the window, and a column of the screen inside its document list.
constexpr int Left = 20;
constexpr int Top = 60;
const QString List_X = QString::number(Left + 500);

void Place(const Desktop &desktop, const QString &window)
{
    desktop.Do({QStringLiteral("windowsize"), window, QStringLiteral("1180"), QStringLiteral("740")});
    desktop.Do({QStringLiteral("windowmove"), window, QString::number(Left), QString::number(Top)});
}

void Write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}
} // namespace

bool E2e_Road::Drop(const QStringList &files, int documents) const
{
    // A drag is a talk between three processes; on a busy machine one may come too late for the mouse.
    constexpr int Tries = 3;
    for (int i = 0; i < Tries; ++i) {
        if (Drag_Once(files, documents))
            return true;
    }
    return false;
}

bool E2e_Road::Drag_Once(const QStringList &files, int documents) const
{
    QProcess source;
    source.setProcessEnvironment(m_desktop.Environment());
    source.start(QStringLiteral(DRAG_SOURCE), files);
    Wait_Until([&] {
        return !m_desktop
                    .Do({QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                         QStringLiteral("drag source")})
                    .isEmpty();
    });
    const auto mouse = [&](const QString &x, const QString &y) {
        m_desktop.Do({QStringLiteral("mousemove"), x, y});
        QThread::msleep(150);
    };
    mouse(QStringLiteral("20"), QStringLiteral("20"));
    m_desktop.Do({QStringLiteral("mousedown"), QStringLiteral("1")});
    for (const char *step : {"40", "120", "300"})
        mouse(QLatin1String(step), QLatin1String(step));
    for (const char *y : {"400", "410", "420"})
        mouse(List_X, QLatin1String(y));
    m_desktop.Do({QStringLiteral("mouseup"), QStringLiteral("1")});
    const bool stored = Wait_Until(
        [&] { return m_program->Sql(QStringLiteral("select count(*) from Code_Info")) == QString::number(documents); },
        5000);
    source.kill();
    source.waitForFinished();
    return stored;
}

void E2e_Road::Open_First_Row() const
{
    m_desktop.Do(
        {QStringLiteral("mousemove"), List_X, QStringLiteral("420"), QStringLiteral("click"), QStringLiteral("1")});
    m_desktop.Key(QStringLiteral("Home"));
    m_desktop.Key(QStringLiteral("Return"));
}

void E2e_Road::Dropped_Files_Are_Edited_And_Found_Again()
{
    QVERIFY(m_desktop.Is_Up());
    m_program = std::make_unique<Program>(m_desktop);
    Program &program = *m_program;
    program.Start();
    QVERIFY(!program.Wait_For_Window().isEmpty());
    QVERIFY(program.Leave());
    program.Sql(QStringLiteral("insert into Cate_Info(Cate_ID,Cate_Name,Order_Id,Cate_Exp,Cate_pass) "
                               "values('001','Road',1,'1','')"));
    program.Set({QStringLiteral("Tree_LastKey=001")});
    Write(program.Path(QStringLiteral("gbk.txt")),
          QByteArray::fromHex("b9fab1eab1e0c2ebb5c4cec4b1be0d0a")); // 国标编码的文本
    Write(program.Path(QStringLiteral("rich.rtf")), "{\\rtf1\\ansi{\\b Bold} and \\u20013?\\u25991? text\\par}");

    program.Start();
    QString window = program.Wait_For_Window();
    Place(m_desktop, window);
    QVERIFY(Drop({program.Path(QStringLiteral("gbk.txt"))}, 1));
    QCOMPARE(program.Sql(QStringLiteral("select Code_Title,Code_Type,Cate_ID from Code_Info")),
             QStringLiteral("gbk|TXT|001"));
    QVERIFY(
        program.Sql(QStringLiteral("select Code_Content from Code_Info")).startsWith(QStringLiteral("国标编码的文本")));

    Open_First_Row();
    QVERIFY(Wait_Until(
        [&] { return program.Sql(QStringLiteral("select Code_ReadNum from Code_Info")) == QLatin1String("1"); }));
    m_desktop.Key(QStringLiteral("ctrl+End"));
    m_desktop.Type(QStringLiteral("typed in the window"));
    m_desktop.Key(QStringLiteral("ctrl+s"));
    QVERIFY(Wait_Until(
        [&] { return program.Sql(QStringLiteral("select Code_UpdateNum from Code_Info")) == QLatin1String("1"); }));
    QVERIFY(program.Sql(QStringLiteral("select Code_Content from Code_Info"))
                .contains(QStringLiteral("typed in the window")));
    QCOMPARE(program.Sql(QStringLiteral("select Code_Type from Code_Info")), QStringLiteral("RTF"));
    m_desktop.Key(QStringLiteral("ctrl+w"));
    QVERIFY(Drop({program.Path(QStringLiteral("rich.rtf"))}, 2));
    QVERIFY(program.Leave());

    program.Start();
    window = program.Wait_For_Window();
    QVERIFY(!window.isEmpty());
    QCOMPARE(program.Sql(QStringLiteral("select Code_Content from Code_Info where Code_Title='rich'")),
             QStringLiteral("Bold and 中文 text"));
    QCOMPARE(program.Sql(QStringLiteral("pragma integrity_check")), QStringLiteral("ok"));
    QVERIFY(!QFile::exists(program.Path(QStringLiteral("Error.log"))));
}

void E2e_Road::A_Second_Start_Brings_The_First_Forward()
{
    m_program = std::make_unique<Program>(m_desktop);
    Program &program = *m_program;
    program.Start();
    QVERIFY(!program.Wait_For_Window().isEmpty());
    // The file by which it is called is there.
    QVERIFY(Wait_Until([&] { return QFile::exists(program.Path(QStringLiteral("data/temp/second.start"))); }));
    QVERIFY(Wait_Until([&] {
        const QString window = program.Visible_Window();
        if (!window.isEmpty())
            m_desktop.Do({QStringLiteral("windowminimize"), QStringLiteral("--sync"), window});
        return window.isEmpty();
    }));
    QProcess second;
    second.setProcessEnvironment(m_desktop.Environment());
    second.start(program.Path(QStringLiteral("zelqor")), QStringList());
    QVERIFY(second.waitForFinished(5000));
    QCOMPARE(second.exitCode(), 0);
    QVERIFY(program.Is_Running());
    QVERIFY(Wait_Until([&] {
        const QString window = program.Visible_Window();
        return !window.isEmpty() && m_desktop.Do({QStringLiteral("getactivewindow")}) == window;
    }));
}

QTEST_GUILESS_MAIN(E2e_Road)
#include "e2e_road.moc"

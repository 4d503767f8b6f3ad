// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/language_pack.h"
#include "core/settings.h"
#include "editor/command_table.h"
#include "editor/composition.h"
#include "editor/desk.h"
#include "editor/editor_commands.h"
#include "editor/links.h"
#include "editor/paragraph_commands.h"
#include "editor/pictures.h"
#include "platform/prompts/prompts.h"
#include "platform/richtext/rich_text.h"

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMenu>
#include <QMimeData>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace
{
QByteArray Red_Picture(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    return Pictures::As_File(image);
}
} // namespace

class Test_Editor_Commands : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Load_Built_In_Language(); }
    void The_Table_Is_Sound();
    void Paragraphs_data();
    void Paragraphs();
    void Characters_data();
    void Characters();
    void A_Locked_Pane_Runs_Only_What_Reads();
    void Undo_Follows_The_Document();
    void Links_Are_Made_And_Taken_Away();
    void Links_Open_Safely_data();
    void Links_Open_Safely();
    void Paths_May_Be_Escaped_data();
    void Paths_May_Be_Escaped();
    void Pastes_data();
    void Pastes();
    void Foreign_Looks_Follow_The_Setting();
    void Settings_Reach_The_Pane();
    void Copies_As_Rtf();
    void Pictures_Come_Into_The_Document();
    void Composed_Text_Is_Committed();
    void Keys_Reach_The_Editor_First();
    void Hidden_Text_Outlives_Editing();
};

void Test_Editor_Commands::The_Table_Is_Sound()
{
    QSet<QString> names, keys;
    for (const Command_Row &row : Command_Table()) {
        QVERIFY2(!names.contains(QLatin1String(row.name)), row.name);
        names << QLatin1String(row.name);
        QVERIFY2((row.run != nullptr) != (row.request != Command_Request::None), row.name);
        for (const QKeySequence &key : QKeySequence::listFromString(QLatin1String(row.shortcut))) {
            if (key.isEmpty())
                continue;
            QVERIFY2(key.count() == 1 && !keys.contains(key.toString()), row.name);
            keys << key.toString();
        }
    }
    // These belong to the tree and to the tabs.
    for (const char *taken : {"F2", "F11", "F12", "Del", "Ctrl+W", "Ctrl+Tab", "Ctrl+S", "Ctrl+N", "Ctrl+P", "F5"})
        QVERIFY2(!keys.contains(QLatin1String(taken)), taken);
}

void Test_Editor_Commands::Paragraphs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("selection");
    QTest::addColumn<QStringList>("run");
    QTest::addColumn<QString>("outline");

    const QList whole{0, 5};
    QTest::newRow("heading") << u"A\nB"_s << QList{0, 0} << QStringList{u"Cmd_Heading_2"_s} << u"h2:A|B"_s;
    QTest::newRow("heading away") << u"A\nB"_s << QList{0, 0} << QStringList{u"Cmd_Heading_2"_s, u"Cmd_Heading_0"_s}
                                  << u"A|B"_s;
    QTest::newRow("a selection up to a line's start leaves that line")
        << u"A\nB\nC"_s << QList{0, 2} << QStringList{u"Cmd_Heading_1"_s} << u"h1:A|B|C"_s;
    QTest::newRow("bullets") << u"A\nB\nC"_s << whole << QStringList{u"Cmd_Bullets"_s} << u"b1:A|b1:B|b1:C"_s;
    QTest::newRow("bullets off") << u"A\nB\nC"_s << whole << QStringList{u"Cmd_Bullets"_s, u"Cmd_Bullets"_s}
                                 << u"A|B|C"_s;
    QTest::newRow("numbers instead") << u"A\nB\nC"_s << whole << QStringList{u"Cmd_Bullets"_s, u"Cmd_Numbers"_s}
                                     << u"n1:A|n1:B|n1:C"_s;
    QTest::newRow("indent") << u"A\nB\nC"_s << QList{2, 2} << QStringList{u"Cmd_Indent"_s, u"Cmd_Indent"_s}
                            << u"A|i2:B|C"_s;
    QTest::newRow("outdent stops") << u"A"_s << QList{0, 0} << QStringList{u"Cmd_Outdent"_s} << u"A"_s;
    QTest::newRow("up") << u"A\nB\nC"_s << QList{2, 2} << QStringList{u"Cmd_Move_Up"_s} << u"B|A|C"_s;
    QTest::newRow("up keeps its format") << u"A\nB\nC"_s << QList{2, 2}
                                         << QStringList{u"Cmd_Heading_1"_s, u"Cmd_Move_Up"_s} << u"h1:B|A|C"_s;
    QTest::newRow("down twice") << u"A\nB\nC"_s << QList{0, 0} << QStringList{u"Cmd_Move_Down"_s, u"Cmd_Move_Down"_s}
                                << u"B|C|A"_s;
    QTest::newRow("two down") << u"A\nB\nC"_s << QList{0, 3} << QStringList{u"Cmd_Move_Down"_s} << u"C|A|B"_s;
    QTest::newRow("not over the end") << u"A\nB"_s << QList{2, 2} << QStringList{u"Cmd_Move_Down"_s} << u"A|B"_s;
    QTest::newRow("sorted") << u"b10\nb9\na"_s << QList{0, 8} << QStringList{u"Cmd_Sort"_s} << u"a|b9|b10"_s;
    QTest::newRow("sorted by sound") << u"中\n北\n安"_s << whole << QStringList{u"Cmd_Sort"_s} << u"安|北|中"_s;
}

void Test_Editor_Commands::Paragraphs()
{
    QFETCH(QString, text);
    QFETCH(QList<int>, selection);
    QFETCH(QStringList, run);
    Desk desk;
    desk.editor.setPlainText(text);
    desk.Select(selection[0], selection[1]);
    for (const QString &command : run)
        desk.Run(command);
    QTEST(desk.Outline(), "outline");
    for (qsizetype i = 0; i < run.size(); ++i)
        desk.editor.undo();
    QCOMPARE(desk.editor.toPlainText(), text);
}

void Test_Editor_Commands::Characters_data()
{
    QTest::addColumn<QStringList>("run");
    QTest::addColumn<int>("property");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("bold") << QStringList{u"Cmd_Bold"_s} << int(QTextFormat::FontWeight) << QVariant(int(QFont::Bold));
    QTest::newRow("bold off") << QStringList{u"Cmd_Bold"_s, u"Cmd_Bold"_s} << int(QTextFormat::FontWeight)
                              << QVariant(int(QFont::Normal));
    QTest::newRow("struck") << QStringList{u"Cmd_Strike"_s} << int(QTextFormat::FontStrikeOut) << QVariant(true);
    QTest::newRow("superscript") << QStringList{u"Cmd_Sub"_s, u"Cmd_Super"_s} << int(QTextFormat::TextVerticalAlignment)
                                 << QVariant(int(QTextCharFormat::AlignSuperScript));
    QTest::newRow("colour") << QStringList{u"Cmd_Color_Red"_s} << int(QTextFormat::ForegroundBrush)
                            << QVariant(QBrush(QColor(0xE0, 0x31, 0x31)));
    QTest::newRow("colour off") << QStringList{u"Cmd_Color_Red"_s, u"Cmd_Color_Auto"_s}
                                << int(QTextFormat::ForegroundBrush) << QVariant();
    QTest::newRow("highlight off") << QStringList{u"Cmd_Mark_Yellow"_s, u"Cmd_Mark_None"_s}
                                   << int(QTextFormat::BackgroundBrush) << QVariant();
    QTest::newRow("cleared") << QStringList{u"Cmd_Bold"_s, u"Cmd_Color_Red"_s, u"Cmd_Mark_Yellow"_s,
                                            u"Cmd_Clear_Format"_s}
                             << int(QTextFormat::FontWeight) << QVariant();
    QTest::newRow("larger") << QStringList{u"Cmd_Larger"_s} << int(QTextFormat::FontPointSize) << QVariant(14.0);
    QTest::newRow("smaller") << QStringList{u"Cmd_Smaller"_s} << int(QTextFormat::FontPointSize) << QVariant(11.0);
}

void Test_Editor_Commands::Characters()
{
    QFETCH(QStringList, run);
    QFETCH(int, property);
    Desk desk;
    desk.editor.Start_In(u"Serif"_s, 12, 100);
    desk.editor.insertPlainText(u"one two three"_s);
    desk.Select(4, 7);
    for (const QString &command : run)
        desk.Run(command);
    QTEST(desk.Format_At(5).property(property), "value");
    QVERIFY(desk.Format_At(2).fontWeight() != QFont::Bold);
    QCOMPARE(desk.Format_At(2).fontPointSize(), 12.0);
}

void Test_Editor_Commands::A_Locked_Pane_Runs_Only_What_Reads()
{
    Desk desk;
    desk.editor.setPlainText(u"text"_s);
    desk.editor.selectAll();
    QVERIFY(desk.commands.Action(u"Cmd_Bold"_s)->isEnabled());
    desk.editor.setReadOnly(true);
    for (const char *writes : {"Cmd_Bold", "Cmd_Cut", "Cmd_Paste", "Cmd_Replace", "Cmd_Bullets", "Cmd_Undo"})
        QVERIFY2(!desk.commands.Action(QLatin1String(writes))->isEnabled(), writes);
    for (const char *reads : {"Cmd_Copy", "Cmd_Find", "Cmd_Select_All", "Cmd_Go_To"})
        QVERIFY2(desk.commands.Action(QLatin1String(reads))->isEnabled(), reads);
    desk.editor.Paste_Plain();
    QTest::keyClick(&desk.editor, Qt::Key_Tab);
    QCOMPARE(desk.editor.toPlainText(), u"text"_s);
}

void Test_Editor_Commands::Undo_Follows_The_Document()
{
    Desk desk;
    QVERIFY(!desk.commands.Action(u"Cmd_Undo"_s)->isEnabled());
    desk.editor.insertPlainText(u"typed"_s);
    QVERIFY(desk.commands.Action(u"Cmd_Undo"_s)->isEnabled());
    desk.window.hide(); // as in a tab behind another one
    desk.window.show();
    desk.Run(u"Cmd_Undo"_s);
    QCOMPARE(desk.editor.toPlainText(), QString());
    QVERIFY(desk.commands.Action(u"Cmd_Redo"_s)->isEnabled());
    desk.Run(u"Cmd_Redo"_s);
    QCOMPARE(desk.editor.toPlainText(), u"typed"_s);
}

void Test_Editor_Commands::Links_Are_Made_And_Taken_Away()
{
    Desk desk;
    Prompt_Script script;
    desk.editor.setPlainText(u"see here now"_s);
    desk.Select(4, 8);
    script.Expect(Pack_Text("Editor_Bar", "_Link_Target"), u"www.example.org"_s);
    desk.Run(u"Cmd_Link"_s);
    QCOMPARE(desk.Format_At(5).anchorHref(), u"https://www.example.org"_s);
    QVERIFY(desk.Format_At(2).anchorHref().isEmpty());
    QVERIFY(desk.Format_At(9).anchorHref().isEmpty());
    desk.Select(6, 6);
    script.Expect(Pack_Text("Editor_Bar", "_Link_Target"), u""_s);
    desk.Run(u"Cmd_Link"_s);
    QVERIFY(desk.Format_At(5).anchorHref().isEmpty());
    QCOMPARE(script.Problems(), QStringList());
}

void Test_Editor_Commands::Links_Open_Safely_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("question"); ///< key of the text that is shown, "" for none
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("opened");

    QTest::newRow("page") << u"https://example.org/a?b=c"_s << u""_s << u""_s << true;
    QTest::newRow("mail") << u"mailto:a@example.org"_s << u""_s << u""_s << true;
    QTest::newRow("file, yes") << u"file:///tmp/a.txt"_s << u"_Link_File"_s << u"yes"_s << true;
    QTest::newRow("file, no") << u"file:///tmp/a.sh"_s << u"_Link_File"_s << u"no"_s << false;
    QTest::newRow("path") << u"/tmp/a.sh"_s << u"_Link_File"_s << u"no"_s << false;
    QTest::newRow("script") << u"javascript:alert(1)"_s << u"_Link_Refused"_s << u"ok"_s << false;
    QTest::newRow("settings") << u"ms-settings:about"_s << u"_Link_Refused"_s << u"ok"_s << false;
    QTest::newRow("nothing") << u"x"_s << u"_Link_Refused"_s << u"ok"_s << false;
}

void Test_Editor_Commands::Links_Open_Safely()
{
    QFETCH(QString, target);
    QFETCH(QString, question);
    QFETCH(QString, answer);
    Prompt_Script script;
    if (!question.isEmpty())
        script.Expect(Pack_Text("Editor_Bar", question.toLatin1()).section(u"%1"_s, 0, 0), answer);
    bool opened = false;
    Links::Set_Opener([&](const QUrl & /*url*/) { return opened = true; });
    Links::Open(target);
    QTEST(opened, "opened");
    QCOMPARE(script.Problems(), QStringList());
}

void Test_Editor_Commands::Paths_May_Be_Escaped_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("target");
    QTest::newRow("as it is") << u"a b.txt"_s << u"a b.txt"_s;
    QTest::newRow("escaped") << u"年 b'.txt"_s << u"年%20b%27.txt"_s;
    QTest::newRow("a name that looks escaped") << u"a%20b.txt"_s << u"a%20b.txt"_s;
}

void Test_Editor_Commands::Paths_May_Be_Escaped()
{
    QFETCH(QString, file);
    QFETCH(QString, target);
    const QTemporaryDir folder;
    QFile made(folder.filePath(file));
    QVERIFY(made.open(QIODevice::WriteOnly));
    Prompt_Script script;
    script.Expect(folder.filePath(file), u"yes"_s);
    QString opened;
    Links::Set_Opener([&](const QUrl &address) {
        opened = address.toLocalFile();
        return true;
    });
    Links::Open(folder.filePath(target));
    QCOMPARE(opened, folder.filePath(file));
    QCOMPARE(script.Problems(), QStringList());
}

void Test_Editor_Commands::Pastes_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("plain");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("bold");

    const QByteArray html("<p>a<b>b</b></p>"), rtf("{\\rtf1 a{\\b b}}");
    QTest::newRow("html") << u"text/html"_s << html << false << u"ab"_s << true;
    QTest::newRow("rtf") << u"text/rtf"_s << rtf << false << u"ab"_s << true;
    QTest::newRow("html as plain text") << u"text/html"_s << html << true << u"plain"_s << false;
    QTest::newRow("text") << u"text/plain"_s << QByteArray("plain") << false << u"plain"_s << false;
}

void Test_Editor_Commands::Pastes()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, bytes);
    QFETCH(bool, plain);
    Desk desk;
    auto *data = new QMimeData;
    data->setText(u"plain"_s);
    data->setData(type, bytes);
    QGuiApplication::clipboard()->setMimeData(data);
    plain ? desk.Run(u"Cmd_Paste_Plain"_s) : desk.Run(u"Cmd_Paste"_s);
    QTEST(desk.editor.toPlainText(), "text");
    QTEST(desk.Format_At(1).fontWeight() >= QFont::Bold, "bold");
    desk.editor.undo();
    QCOMPARE(desk.editor.toPlainText(), QString());
}

/// What comes from another program loses its looks when the settings say so, what was copied here never does.
void Test_Editor_Commands::Foreign_Looks_Follow_The_Setting()
{
    const auto pasted = [](const QString &keep, bool own, const QString &size = u"font-size:30pt;"_s) {
        Desk desk;
        desk.editor.Start_In(u"Serif"_s, 12, 150);
        Config().CH_KeepWord = keep;
        QMimeData data;
        data.setHtml(u"<p style='%1color:red'>a<b>b</b></p>"_s.arg(size));
        if (own) {
            Desk source;
            source.editor.setHtml(data.html());
            source.editor.selectAll();
            source.Run(u"Cmd_Copy"_s);
            desk.Run(u"Cmd_Paste"_s);
        } else {
            desk.editor.Insert_Data(data);
        }
        const QTextCharFormat format = desk.Format_At(1);
        return u"%1 %2 %3"_s.arg(format.fontPointSize())
            .arg(format.fontWeight() >= QFont::Bold)
            .arg(format.foreground().color() == QColor(Qt::red));
    };
    QCOMPARE(pasted(u"1"_s, false), u"30 1 1"_s);
    QCOMPARE(pasted(u"0"_s, false), u"12 1 0"_s);
    QCOMPARE(pasted(u"0"_s, true), u"30 1 1"_s);
    QCOMPARE(pasted(u"1"_s, false, {}), u"12 1 1"_s); // what says no size takes that of the text around
    Config() = {};
}

void Test_Editor_Commands::Settings_Reach_The_Pane()
{
    Desk desk;
    desk.editor.Start_In(u"Serif"_s, 12, 150);
    QCOMPARE(Paragraph_Commands::Line_Spacing(desk.editor), 150);
    Config().Col_List = 0x98E2E9; // blue, green, red
    desk.editor.insertPlainText(u"marked"_s);
    desk.Select(0, 6);
    desk.Run(u"Cmd_Mark"_s);
    QCOMPARE(desk.Format_At(0).background().color().name(), u"#e9e298"_s);
    desk.Run(u"Cmd_Mark"_s);
    QVERIFY(!desk.Format_At(0).hasProperty(QTextFormat::BackgroundBrush));
    desk.Select(0, 0);
    QTest::keyClick(&desk.editor, Qt::Key_Tab);
    Config().CH_Tab = u"1"_s;
    desk.Select(0, 0);
    QTest::keyClick(&desk.editor, Qt::Key_Tab);
    QCOMPARE(desk.Outline(), u"i1:\tmarked"_s);
    Config() = {};
}

void Test_Editor_Commands::Copies_As_Rtf()
{
    Desk desk;
    desk.editor.setHtml(u"<p>one <b>two</b></p>"_s);
    QTextCursor cursor = desk.editor.textCursor();
    cursor.movePosition(QTextCursor::End);
    QVERIFY(Pictures::Insert(cursor, Red_Picture(4, 4)));
    desk.editor.selectAll();
    desk.Run(u"Cmd_Copy"_s);
    const QByteArray rtf = QGuiApplication::clipboard()->mimeData()->data(u"text/rtf"_s);
    QTextDocument there;
    QVERIFY(Rich_Text::Read_Rtf(rtf, there));
    QCOMPARE(there.toPlainText(), u"one two\uFFFC"_s);
    QVERIFY(rtf.contains("\\pngblip"));
}

void Test_Editor_Commands::Pictures_Come_Into_The_Document()
{
    Desk desk;
    QMimeData dragged;
    dragged.setImageData(QImage::fromData(Red_Picture(3000, 30)));
    desk.editor.Insert_Data(dragged);
    QMimeData page;
    const QByteArray coded = Red_Picture(5, 5).toBase64();
    page.setHtml(u"<img src='data:image/png;base64,"_s + QLatin1String(coded) + u"'>"_s);
    desk.editor.Insert_Data(page);
    Prompt_Script script;
    script.Expect(Pack_Text("Editor_Bar", "_Link_Target"), u"example.org"_s);
    desk.Run(u"Cmd_Link"_s); // its text is none of the picture before it
    const QByteArray rtf = Rich_Text::Write_Rtf(*desk.editor.document());
    QVERIFY(rtf.contains("example.org}"));
    QCOMPARE(rtf.count("\\pngblip"), 2);
    QVERIFY(desk.editor.document()->size().width() <= desk.editor.width()); // the wide one was fitted in
    QVERIFY(rtf.contains("\\picw3000"));
}

void Test_Editor_Commands::Composed_Text_Is_Committed()
{
    Desk desk;
    for (QWidget *field : std::initializer_list<QWidget *>{&desk.editor, &desk.other}) {
        field->setFocus();
        QInputMethodEvent composing(u"zhong"_s, {});
        QCoreApplication::sendEvent(field, &composing);
        QVERIFY(Composition::Is_Open());
        Commit_Composition();
        QVERIFY(!Composition::Is_Open());
        Commit_Composition(); // nothing is given twice
    }
    QCOMPARE(desk.editor.toPlainText(), u"zhong"_s);
    QCOMPARE(desk.other.text(), u"zhong"_s);

    QInputMethodEvent given;
    given.setCommitString(u"中"_s);
    QCoreApplication::sendEvent(&desk.other, &given);
    Commit_Composition();
    QCOMPARE(desk.other.text(), u"zhong中"_s);
}

void Test_Editor_Commands::Hidden_Text_Outlives_Editing()
{
    Desk desk;
    QVERIFY(Rich_Text::Read_Rtf("{\\rtf1 a{\\v secret}}", *desk.editor.document()));
    desk.editor.moveCursor(QTextCursor::End);
    QTest::keyClicks(&desk.editor, u"b"_s);
    desk.editor.moveCursor(QTextCursor::Left);
    QTest::keyClick(&desk.editor, Qt::Key_Return);
    QTest::keyClick(&desk.editor, Qt::Key_Return);
    desk.editor.selectAll();
    desk.Run(u"Cmd_Bold"_s);
    QTextDocument again;
    QVERIFY(Rich_Text::Read_Rtf(Rich_Text::Write_Rtf(*desk.editor.document()), again));
    QCOMPARE(Rich_Text::Shown_Text(again), u"a\n\nb"_s);
    QVERIFY(Rich_Text::Write_Rtf(again).contains("\\v secret"));
}

void Test_Editor_Commands::Keys_Reach_The_Editor_First()
{
    Desk desk;
    QAction rival(&desk.window);
    rival.setShortcut(Qt::CTRL | Qt::Key_I);
    desk.window.addAction(&rival);
    int taken = 0;
    connect(&rival, &QAction::triggered, this, [&] { ++taken; });
    desk.editor.setPlainText(u"text"_s);
    desk.editor.selectAll();
    QTest::keyClick(&desk.editor, Qt::Key_I, Qt::ControlModifier);
    QVERIFY(desk.Format_At(0).fontItalic());
    desk.other.setFocus();
    QTest::keyClick(&desk.other, Qt::Key_I, Qt::ControlModifier);
    QCOMPARE(taken, 1);
}

QTEST_MAIN(Test_Editor_Commands)
#include "test_editor_commands.moc"

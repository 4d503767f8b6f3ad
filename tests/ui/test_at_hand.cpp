// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "documents/drafts.h"
#include "editor/links.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/kit/folder_box.h"
#include "ui/kit/twips.h"
#include "ui/program/frm_login.h"
#include "ui/tools/frm_note.h"
#include "ui/tools/frm_on_top.h"
#include "ui/tools/frm_on_top_drop.h"
#include "ui/tools/frm_show_up.h"
#include "ui/tools/version_check.h"
#include "ui/window/frm_main.h"
#include "users/user_list.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QMimeData>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>
#include <QTextEdit>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
template <class Window>
Window *Shown()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (auto *found = qobject_cast<Window *>(window); found != nullptr && found->isVisible())
            return found;
    }
    return nullptr;
}

/// @returns whether the window takes it
bool Drop(QWidget &window, const QMimeData &data)
{
    const QPoint middle = window.rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    if (!enter.isAccepted())
        return false;
    QDropEvent drop(middle, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    return drop.isAccepted() && drop.dropAction() == Qt::CopyAction; // nothing is taken away where it came from
}

QString Documents()
{
    QStringList rows;
    for (const QStringList &row :
         Sql_Rows(u"select Code_Title, Code_Type, Cate_ID from Code_Info order by Code_Title"_s))
        rows << row.join(u'|');
    return rows.join(u'\n');
}
} // namespace

class Test_At_Hand : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    void Begin()
    {
        m_window->Come_To_Hand();
        QCoreApplication::processEvents();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Inbox"_s);
        Load_Root_Facts();
        Config().Cob_K9 = u"001"_s;
        m_window = std::make_unique<Frm_Main>();
        m_window->show();
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Dropped_Files_Are_Imported()
    {
        Begin();
        m_program->Write(u"a.txt"_s, "text");
        QMimeData data;
        data.setUrls(
            {QUrl::fromLocalFile(m_program->Path(u"a.txt"_s)), QUrl::fromLocalFile(m_program->Path(u"data"_s))});
        QVERIFY(Drop(*Shown<Frm_OnTop>(), data));
        QTRY_COMPARE(Documents(), u"a.txt|TXT|001"_s);
        QVERIFY(!Drop(*Shown<Frm_OnTop>(), QMimeData()));
    }

    void Dropped_Content_Becomes_A_Document_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("text");
        QTest::newRow("text") << u"text/plain"_s << QByteArray("first line\nsecond") << u"first line"_s
                              << u"first line\nsecond"_s;
        QTest::newRow("rich text") << u"text/rtf"_s << QByteArray("{\\rtf1 {\\b bold} text}") << u"bold text"_s
                                   << u"bold text"_s;
        QTest::newRow("a page") << u"text/html"_s << QByteArray("<h1>Head</h1><script>run()</script><p>Body</p>")
                                << u"Head"_s << u"Head\nBody"_s;
        QTest::newRow("an address") << u"text/uri-list"_s << QByteArray("https://example.org/a?b=c")
                                    << u"https://example.org/a?b=c"_s << u"https://example.org/a?b=c"_s;
    }
    void Dropped_Content_Becomes_A_Document()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, title);
        QFETCH(QString, text);
        Begin();
        QMimeData data;
        data.setData(format, bytes);
        QVERIFY(Drop(*Shown<Frm_OnTop>(), data));
        auto *form = Shown<Frm_OnTop_Drop>();
        QVERIFY(form != nullptr);
        auto &field = Get<QLineEdit>(*form, "Txt_Title");
        QCOMPARE(field.text(), title.left(30));
        auto &folder = Get<Folder_Box>(*form, "Comb_Cate");
        QCOMPARE(folder.Chosen(), u"001"_s);

        folder.setCurrentIndex(-1);
        m_program->prompts.Expect(u"请选择相应的文件夹."_s, u"ok"_s);
        Get<QPushButton>(*form, "Cmd_Save").click();
        folder.setCurrentIndex(folder.findData(u"001"_s));
        for (const QString &refused : {QString(), QString(101, u'x')}) {
            field.setText(refused);
            m_program->prompts.Expect(u"标题不能为空且不能超过100字"_s, u"ok"_s);
            Get<QPushButton>(*form, "Cmd_Save").click();
        }
        field.setText(QString(100, u'x'));
        Get<QPushButton>(*form, "Cmd_Save").click();
        QCOMPARE(Documents(), QString(100, u'x') + u"|RTF|001"_s);
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s).trimmed(), text);
        QVERIFY(Shown<Frm_OnTop_Drop>() == nullptr);
    }

    void What_Was_Typed_Is_Given_Up_After_A_Question()
    {
        Frm_OnTop_Drop form;
        QMimeData data;
        data.setText(u"dropped"_s);
        form.Take(data);
        form.show();
        Get<QTextEdit>(form, "Txt_Drop").insertPlainText(u"typed "_s);
        m_program->prompts.Expect(u"放弃吗"_s, u"no"_s);
        form.reject();
        QVERIFY(form.isVisible());
        m_program->prompts.Expect(u"放弃吗"_s, u"yes"_s);
        form.reject();
        QVERIFY(!form.isVisible());
    }

    void The_Place_Is_Kept_And_Is_On_A_Screen()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const auto kept = [](const char *key) {
            return Pixels(GetIni(u"Page"_s, QLatin1String(key)).toInt());
        };
        {
            Frm_OnTop window;
            window.show();
            QVERIFY(area.contains(window.geometry()));
            window.move(100, 120);
        }
        Frm_OnTop window;
        QCOMPARE(window.pos(), QPoint(100, 120));
        window.show();
        window.hide();
        QCOMPARE(QPoint(kept("OnTop_Left"), kept("OnTop_Top")), QPoint(100, 120));
        for (const char *value : {"900000000000", "-80000", "750000"}) {
            WriteIni(u"Page"_s, u"OnTop_Left"_s, QLatin1String(value));
            Frm_OnTop elsewhere;
            QVERIFY2(area.contains(elsewhere.geometry()), value);
        }
    }

    void The_Lock_Takes_It_Off_The_Screen()
    {
        User user = Blank_User();
        user.name = App().Curr_User = u"Anna"_s;
        user.password = user.repeated = u"pw"_s;
        QCOMPARE(Add_User(user), User_Refusal::None);
        Begin();
        m_window->Lock();
        QVERIFY(Shown<Frm_OnTop>() == nullptr);
        Get<QAction>(*m_window, "Mnu_Note").trigger();
        QVERIFY(Shown<Frm_Note>() == nullptr);
        auto *login = Shown<frmLogin>();
        Get<QLineEdit>(*login, "txtPassword").setText(u"pw"_s);
        QTest::keyClick(login, Qt::Key_Return);
        QVERIFY(Shown<Frm_OnTop>() != nullptr);
    }

    void It_Is_Switched_Off_And_On()
    {
        Begin();
        QVERIFY(Shown<Frm_OnTop>() != nullptr);
        auto &entry = Get<QAction>(*m_window, "Mnu_Float");
        QVERIFY(entry.isChecked());
        Get<QAction>(*Shown<Frm_OnTop>(), "Mnu_OnTop_Float").trigger();
        QVERIFY(Shown<Frm_OnTop>() == nullptr && !entry.isChecked());
        QCOMPARE(GetIni(u"Col"_s, u"CH_FLOAT"_s), u"0"_s);
        entry.trigger();
        QVERIFY(Shown<Frm_OnTop>() != nullptr);
    }

    void A_Quick_Note_Is_Stored_Or_Kept()
    {
        Begin();
        Get<QAction>(*m_window, "Mnu_Note").trigger();
        auto *note = Shown<Frm_Note>();
        QVERIFY(note != nullptr);
        auto &text = Get<QTextEdit>(*note, "Txt_Note");
        text.insertPlainText(u"Remember\nthe milk"_s);
        const QStringList drafts = {u"*.draft"_s};
        const auto left = [&] {
            const QString folder = QDir(m_program->Path(u"data"_s)).entryList({u"*-drafts"_s}).value(0);
            return QDir(m_program->Path(u"data/"_s + folder)).entryList(drafts).size();
        };
        QTRY_COMPARE_WITH_TIMEOUT(left(), 1, 2000);
        QTest::keyClick(note, Qt::Key_Escape);
        QVERIFY(!note->isVisible());
        Get<QAction>(*m_window, "Mnu_Note").trigger();
        QCOMPARE(text.toPlainText(), u"Remember\nthe milk"_s);
        QTest::keyClick(&text, Qt::Key_Return, Qt::ControlModifier);
        QCOMPARE(Documents(), u"Remember|RTF|001"_s);
        QVERIFY(!note->isVisible() && text.toPlainText().isEmpty());
        QCOMPARE(left(), 0);
    }

    void Nothing_Is_Asked_Without_An_Address()
    {
        Config().COB_UPDATE_DATE = u"2000-01-01"_s;
        Version_Check check;
        QSignalSpy told(&check, &Version_Check::Told);
        check.Check_If_Due();
        QCOMPARE(check.children().size(), 0);
        check.Check_Now();
        QCOMPARE(told.count(), 1);
        QCOMPARE(check.children().size(), 0);
    }

    void A_New_Version_Is_Told_data()
    {
        QTest::addColumn<QByteArray>("answer");
        QTest::addColumn<bool>("told");
        QTest::newRow("newer") << QByteArray("Version=99.1\nPage=https://example.org/new") << true;
        QTest::newRow("this one") << QByteArray("Version=1.0\nPage=https://example.org/new") << false;
        QTest::newRow("a page of a site") << QByteArray("<html>no such file</html>") << false;
        QTest::newRow("hostile") << QByteArray("Version=99\nPage=file:///bin/sh") << false;
    }
    void A_New_Version_Is_Told()
    {
        QFETCH(QByteArray, answer);
        QFETCH(bool, told);
        QTcpServer server;
        QVERIFY(server.listen(QHostAddress::LocalHost));
        connect(&server, &QTcpServer::newConnection, this, [&] {
            QTcpSocket *socket = server.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, socket, [socket, answer] {
                socket->write("HTTP/1.1 200 OK\r\nConnection: close\r\n\r\n" + answer);
                socket->disconnectFromHost();
            });
        });
        Version_Check::Set_Address(u"http://127.0.0.1:%1/update.txt"_s.arg(server.serverPort()));
        Config().COB_UPDATE = u"W"_s;
        Config().COB_UPDATE_DATE = u"2000-01-01"_s;
        Version_Check check;
        std::unique_ptr<frm_ShowUp> notice;
        connect(&check, &Version_Check::New_Version, this,
                [&](const Version_Notice &found) { notice = std::make_unique<frm_ShowUp>(found); });
        check.Check_If_Due();
        QTRY_VERIFY(Config().COB_UPDATE_DATE != u"2000-01-01"_s); // and is not asked again in this period
        QCOMPARE(notice != nullptr, told);
        const bool logged = m_program->Logged().contains(u"frm_ShowUp\\Check"_s);
        QCOMPARE(logged, !told && !answer.contains("1.0"));
        if (!told)
            return;
        notice->setAttribute(Qt::WA_DeleteOnClose, false);
        QSignalSpy page(notice.get(), &frm_ShowUp::Page_Wanted);
        notice->Slide_In();
        QVERIFY(Get<QLabel>(*notice, "Lab_What").text().contains(u"99.1"_s));
        Get<QPushButton>(*notice, "Cmd_Page").click();
        QCOMPARE(page.value(0).value(0).toUrl(), QUrl(u"https://example.org/new"_s));
    }
};

QTEST_MAIN(Test_At_Hand)
#include "test_at_hand.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"
#include "documents/document_store.h"
#include "documents/drafts.h"
#include "editor/links.h"
#include "platform/files/paths.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/kit/star_field.h"
#include "views/line_colors.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <QUrl>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// A main window with a list of documents and nothing else.
struct List_Shell : No_Shell {
    QStringList list;
    Document_Tabs *tabs = nullptr;

    [[nodiscard]] QString Selected_Folder() const override { return u"001"_s; }
    void Open_Document(const QString &code_id) override { tabs->Open(code_id); }
    [[nodiscard]] bool Is_Open(const QString &code_id) const override { return tabs->Find(code_id) > 0; }
    [[nodiscard]] QString Neighbour(const QString &code_id, int step) const override
    {
        const qsizetype row = list.indexOf(code_id);
        return row < 0 ? QString() : list.value(row + step);
    }
};
} // namespace

class Test_Document_Tabs : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::optional<List_Shell> m_shell;
    std::unique_ptr<Document_Tabs> m_tabs;

    QString Stored(const QString &title, const QString &text, const QString &password = {})
    {
        Test_Form form(text);
        form.title = title;
        form.password = password;
        if (!AddCodeContent_Ex_Standard(form, u"0"_s))
            qFatal("not stored");
        m_shell->list << form.code_id;
        return form.code_id;
    }
    template <class Widget>
    [[nodiscard]] Widget &Control(const char *name) const
    {
        return *m_tabs->Current_Document()->findChild<Widget *>(QLatin1String(name));
    }
    void Type(const QString &text) const
    {
        QTextEdit &content = Control<QTextEdit>("Txt_Content");
        content.moveCursor(QTextCursor::End);
        content.insertPlainText(text);
    }
    [[nodiscard]] QStringList Drafts() const
    {
        return QDir(m_program->Path(u"data/Zelqor.db-drafts"_s)).entryList({u"*.draft"_s}, QDir::Files);
    }
    /// The tabs as after a kill: the drafts are there, their owner is not.
    void Kill_And_Start()
    {
        const QDir folder(m_program->Path(u"data/Zelqor.db-drafts"_s));
        QVERIFY(QDir(folder).mkpath(u"kept"_s));
        for (const QString &name : Drafts())
            QVERIFY(QFile::copy(folder.filePath(name), folder.filePath(u"kept/"_s + name)));
        m_tabs.reset();
        for (const QString &name : QDir(folder.filePath(u"kept"_s)).entryList(QDir::Files))
            QVERIFY(QFile::rename(folder.filePath(u"kept/"_s + name),
                                  folder.filePath(u"999999-dead_"_s + name.section(u'_', 1))));
        Start();
    }
    void Start()
    {
        m_tabs = std::make_unique<Document_Tabs>(*m_shell, nullptr);
        m_shell->tabs = m_tabs.get();
        m_tabs->Add_List(new QWidget, u"List"_s);
        m_tabs->resize(1000, 700);
        m_tabs->show();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
        m_shell.emplace();
        Start();
    }
    void cleanup()
    {
        m_tabs.reset();
        m_shell.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Title_Wears_The_Colours_Of_Its_Row()
    {
        const QString id = Stored(u"Rivers"_s, u"text"_s);
        m_tabs->Open(id);
        QLineEdit &title = Control<QLineEdit>("Txt_Title");
        const QColor plain = title.palette().color(QPalette::Text);
        Store_Line_Color({id}, u"255|16711680|True|True"_s);
        m_tabs->Show_Style(id);
        title.ensurePolished();
        QVERIFY(title.font().bold() && title.font().italic());
        QVERIFY(title.palette().color(QPalette::Text).red() > 150);
        // A save drops the style of the row, and the title follows.
        Type(u" more"_s);
        QVERIFY(m_tabs->Save_Current());
        title.ensurePolished();
        QVERIFY(!title.font().bold());
        QCOMPARE(title.palette().color(QPalette::Text), plain);
    }

    void What_Is_Typed_Has_A_Draft_Within_Two_Seconds()
    {
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        Type(u" more"_s);
        QVERIFY(m_tabs->tabText(1).endsWith(u'*'));
        // Who types without a pause has one too.
        for (int i = 0; i < 19 && Drafts().isEmpty(); ++i) {
            QTest::qWait(100);
            Type(u"."_s);
        }
        QTRY_COMPARE_WITH_TIMEOUT(Drafts().size(), 1, 500);
        QVERIFY(m_tabs->Save_Current());
        QCOMPARE(Drafts(), QStringList());
        QVERIFY(!m_tabs->tabText(1).endsWith(u'*'));
    }

    void After_A_Kill_The_Drafts_Are_Offered_data()
    {
        QTest::addColumn<QString>("password");
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<int>("tabs");
        QTest::addColumn<int>("drafts");
        const QString found = u"1 份资料尚未保存"_s;
        const QString ask = u"请输入文档密码"_s;
        QTest::addRow("yes") << u""_s << QStringList({found, u"yes"_s}) << 2 << 1;
        QTest::addRow("no") << u""_s << QStringList({found, u"no"_s}) << 1 << 0;
        QTest::addRow("later") << u""_s << QStringList({found, u"cancel"_s}) << 1 << 1;
        QTest::addRow("sealed") << u"p"_s << QStringList({u"（有密码的资料）"_s, u"yes"_s, ask, u"p"_s}) << 2 << 1;
        QTest::addRow("sealed, wrong password")
            << u"p"_s << QStringList({found, u"yes"_s, ask, u"q"_s, u"密码不正确"_s, u"ok"_s}) << 1 << 1;
    }
    void After_A_Kill_The_Drafts_Are_Offered()
    {
        QFETCH(QString, password);
        QFETCH(QStringList, answers);
        QFETCH(int, tabs);
        QFETCH(int, drafts);
        const QString id = Stored(u"Rivers"_s, u"text"_s, password);
        if (!password.isEmpty())
            m_program->prompts.Expect(u"请输入文档密码"_s, password);
        m_tabs->Open(id);
        Type(u" typed before the kill"_s);
        QTRY_COMPARE_WITH_TIMEOUT(Drafts().size(), 1, 2000);
        Kill_And_Start();
        for (qsizetype i = 0; i + 1 < answers.size(); i += 2)
            m_program->prompts.Expect(answers[i], answers[i + 1]);
        m_tabs->Bring_Back_Unsaved();
        QCOMPARE(m_tabs->count(), tabs);
        QCOMPARE(Drafts().size(), drafts);
        if (tabs > 1) {
            QCOMPARE(m_tabs->Current_Document()->Code_Id(), id);
            QCOMPARE(Control<QTextEdit>("Txt_Content").toPlainText(), u"text typed before the kill"_s);
            QVERIFY(m_tabs->tabText(1).endsWith(u'*'));
            QVERIFY(m_tabs->Save_Current());
            QCOMPARE(Sql_Cell(u"select count(*) from Code_Info"_s), u"1"_s);
            QCOMPARE(Drafts(), QStringList());
        }
    }

    void Closing_Asks_For_What_Is_Unsaved_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<bool>("folderIsGone");
        QTest::addColumn<int>("tabs");
        QTest::addColumn<QString>("text");
        QTest::addRow("yes") << u"yes"_s << false << 1 << u"text more"_s;
        QTest::addRow("no") << u"no"_s << false << 1 << u"text"_s;
        QTest::addRow("cancel") << u"cancel"_s << false << 2 << u"text"_s;
        QTest::addRow("yes, and the folder is gone") << u"yes"_s << true << 2 << u"text"_s;
    }
    void Closing_Asks_For_What_Is_Unsaved()
    {
        QFETCH(QString, answer);
        QFETCH(bool, folderIsGone);
        QFETCH(int, tabs);
        QFETCH(QString, text);
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        Type(u" more"_s);
        if (folderIsGone)
            Sql_Run(u"delete from Cate_Info where Cate_ID='001'"_s);
        m_program->prompts.Expect(u"内容已更改"_s, answer);
        if (folderIsGone)
            m_program->prompts.Expect(u"请选择相应的文件夹"_s, u"ok"_s);
        QTest::mouseClick(m_tabs->tabBar(), Qt::MiddleButton, {}, m_tabs->tabBar()->tabRect(1).center());
        QTRY_COMPARE(m_program->prompts.Problems(), QStringList());
        QCOMPARE(m_tabs->count(), tabs);
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), text);
        if (tabs > 1) {
            QCOMPARE(Control<QTextEdit>("Txt_Content").toPlainText(), u"text more"_s);
            QVERIFY(m_tabs->Current_Document()->Is_Changed());
        }
    }

    void The_Next_Document_Takes_The_Same_Form()
    {
        const QString first = Stored(u"One"_s, u"1"_s);
        const QString locked = Stored(u"Two"_s, u"2"_s, u"p"_s);
        const QString last = Stored(u"Three"_s, u"3"_s);
        m_tabs->Open(first);
        QVERIFY(!Control<QToolButton>("Lbl_Previous").isEnabled());
        Type(u"+"_s);
        m_program->prompts.Expect(u"内容已更改"_s, u"cancel"_s);
        Control<QToolButton>("Lbl_Next").click();
        QCOMPARE(m_tabs->Current_Document()->Code_Id(), first);
        m_program->prompts.Expect(u"内容已更改"_s, u"yes"_s);
        m_program->prompts.Expect(u"请输入文档密码"_s, u"p"_s);
        Control<QToolButton>("Lbl_Next").click();
        QCOMPARE(m_tabs->Current_Document()->Code_Id(), locked);
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info where Code_Title='One'"_s), u"1+"_s);
        Control<QToolButton>("Lbl_Next").click();
        QCOMPARE(m_tabs->Current_Document()->Code_Id(), last);
        QCOMPARE(m_tabs->tabText(1), u"Three"_s);
        QVERIFY(!Control<QToolButton>("Lbl_Next").isEnabled());
        QCOMPARE(Control<QLineEdit>("Txt_Password").text(), QString());
        // A document that does not open leaves nothing behind that could be saved over it.
        m_program->prompts.Expect(u"请输入文档密码"_s, u"wrong"_s);
        m_program->prompts.Expect(u"密码不正确"_s, u"ok"_s);
        Control<QToolButton>("Lbl_Previous").click();
        QTRY_COMPARE(m_tabs->count(), 1);
        QCOMPARE(Sql_Cell(u"select Code_UpdateNum from Code_Info where Code_Title='Two'"_s), u"0"_s);
    }

    void A_Document_Is_Edited_In_One_Tab()
    {
        const QString first = Stored(u"One"_s, u"1"_s);
        const QString last = Stored(u"Two"_s, u"2"_s);
        m_tabs->Open(last);
        Type(u" typed"_s);
        m_tabs->Open(first);
        Control<QToolButton>("Lbl_Next").click();
        QCOMPARE(m_tabs->currentIndex(), 1);
        QCOMPARE(Control<QTextEdit>("Txt_Content").toPlainText(), u"2 typed"_s);
        QCOMPARE(m_tabs->count(), 3);
    }

    void A_Next_Document_That_Cannot_Be_Read_Leaves_The_Present_One()
    {
        const QString first = Stored(u"One"_s, u"1"_s);
        m_shell->list << u"{gone}"_s;
        m_tabs->Open(first);
        m_program->prompts.Expect(u"打开出错"_s, u"ok"_s);
        Control<QToolButton>("Lbl_Next").click();
        QVERIFY(m_tabs->Current_Document()->Is_Editing());
        Type(u"+"_s);
        QVERIFY(m_tabs->Save_Current());
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"1+"_s);
    }

    void A_Damaged_Document_Is_Shown_And_Never_Stored()
    {
        const QString id = Stored(u"One"_s, u"1"_s);
        Sql_Run(u"update Code_Info set Code_Content_IO='none'"_s);
        m_program->prompts.Expect(u"文件解压出错"_s, u"ok"_s);
        m_tabs->Open(id);
        QCOMPARE(Control<QTextEdit>("Txt_Content").toPlainText(), u"1"_s);
        QVERIFY(!m_tabs->Current_Document()->Is_Editing());
        m_program->prompts.Expect(u"不需再次保存"_s, u"ok"_s);
        QVERIFY(!m_tabs->Save_Current());
    }

    void Text_That_Comes_In_During_A_Save_Is_Not_Stored_Yet()
    {
        m_tabs->Open(Stored(u"One"_s, u"1"_s));
        Type(u"+"_s);
        QTimer other;
        connect(&other, &QTimer::timeout, &other, [&] {
            other.stop();
            QVERIFY(!m_tabs->Save_Current()); // one save at a time
            Type(u" late"_s);
        });
        other.start(0);
        QVERIFY(m_tabs->Save_Current());
        QVERIFY(!other.isActive() && m_tabs->Current_Document()->Is_Changed());
        QVERIFY(m_tabs->Save_Current() && !m_tabs->Current_Document()->Is_Changed());
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"1+ late"_s);
    }

    void Two_Programs_On_One_Document_data()
    {
        QTest::addColumn<QStringList>("answers");
        QTest::addColumn<QStringList>("texts");
        QTest::addColumn<bool>("saved");
        QTest::addRow("replace") << QStringList{u"1"_s} << QStringList{u"text mine"_s} << true;
        QTest::addRow("keep both") << QStringList{u"2"_s} << QStringList({u"text mine"_s, u"theirs"_s}) << true;
        QTest::addRow("look, then cancel") << QStringList({u"0"_s, u"cancel"_s}) << QStringList{u"theirs"_s} << false;
    }
    void Two_Programs_On_One_Document()
    {
        QFETCH(QStringList, answers);
        QFETCH(QStringList, texts);
        QFETCH(bool, saved);
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        Type(u" mine"_s);
        Sql_Run(u"update Code_Info set Code_Content='theirs',Code_Content_IO=null"_s);
        m_tabs->Current_Document()->Save_Quietly(); // asks nothing
        QCOMPARE(Drafts().size(), 1);
        for (const QString &answer : answers)
            m_program->prompts.Expect(u"已被其他程序修改"_s, answer);
        QString seen;
        QTimer look;
        connect(&look, &QTimer::timeout, &look, [&] {
            if (QWidget *box = QApplication::activeModalWidget()) {
                seen = box->findChild<QTextEdit *>()->toPlainText();
                box->close();
            }
        });
        look.start(20);
        QCOMPARE(m_tabs->Save_Current(), saved);
        QCOMPARE(seen, answers.contains(u"0"_s) ? u"theirs"_s : QString());
        QStringList stored;
        for (const QStringList &row : Sql_Rows(u"select Code_Content from Code_Info order by Code_Content"_s))
            stored << row.value(0);
        QCOMPARE(stored, texts);
        QCOMPARE(m_tabs->Current_Document()->Is_Changed(), !saved);
        if (saved)
            return;
        // At the exit it is told once, and the draft outlives the window.
        m_program->prompts.Expect(u"已保留为草稿"_s, u"ok"_s);
        QVERIFY(m_tabs->Save_All());
        m_tabs.reset();
        QCOMPARE(Drafts().size(), 1);
        Start();
    }

    void What_Is_Changed_Back_Is_Not_Unsaved()
    {
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        QSignalSpy editing(m_tabs.get(), &Document_Tabs::Editing);
        QTextEdit &content = Control<QTextEdit>("Txt_Content");
        QTest::keyClick(&content, Qt::Key_Backtab); // there is no indent to take back
        QVERIFY(!m_tabs->Current_Document()->Is_Changed());
        Type(u" more"_s);
        QVERIFY(m_tabs->Current_Document()->Is_Changed());
        m_tabs->Current_Document()->Set_Edit_Mode(false); // what is unsaved can be saved while it is only read
        QVERIFY(editing.last().first().toBool());
        content.document()->undo();
        QVERIFY(!m_tabs->Current_Document()->Is_Changed() && !m_tabs->tabText(1).endsWith(u'*'));
        QVERIFY(!editing.last().first().toBool());
        QTest::keyClicks(&Control<QLineEdit>("Txt_Title"), u"x"_s);
        QVERIFY(m_tabs->Current_Document()->Is_Changed());
        QTest::keyClick(&Control<QLineEdit>("Txt_Title"), Qt::Key_Backspace);
        QVERIFY(m_tabs->Current_Document()->Is_Changed() == (Control<QLineEdit>("Txt_Title").text() != u"Rivers"));
    }

    void Facts_Of_Every_Type_Are_Saved_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("type");
        QTest::addRow("settings file") << u"ini"_s << u"INI"_s;
        QTest::addRow("portable document") << u"pdf"_s << u"PDF"_s;
        QTest::addRow("page") << u"mp3"_s << u"HTM"_s;
    }
    void Facts_Of_Every_Type_Are_Saved()
    {
        QFETCH(QString, extension);
        QFETCH(QString, type);
        m_program->Write(u"a."_s + extension, "content");
        m_tabs->Open(AddCodeContent_File_Ex(m_program->Path(u"a."_s + extension), u"001"_s, u"0"_s, u"Facts"_s,
                                            extension, false));
        const QString content = u"select Code_Content,Code_Content_IO,Code_File,Code_Type from Code_Info"_s;
        const QList<QStringList> before = Sql_Rows(content);
        auto &keys = Control<QLineEdit>("Txt_Keys");
        QCOMPARE(keys.maxLength(), 255);
        QTest::keyClicks(&keys, u"key"_s);
        m_program->prompts.Expect(u"内容已更改"_s, u"yes"_s);
        QVERIFY(m_tabs->Close(1));
        QCOMPARE(Sql_Rows(content), before);
        QCOMPARE(before.value(0).value(3), type);
        QCOMPARE(Sql_Cell(u"select Code_Keys from Code_Info"_s), u"key"_s);
    }

    void A_New_Document_Follows_The_Settings_data()
    {
        QTest::addColumn<QString>("editor");
        QTest::addColumn<bool>("written");
        QTest::addRow("rich text") << u"0"_s << true;
        QTest::addRow("page") << u"1"_s << true;
        QTest::addRow("left as it is") << u"2"_s << false;
    }
    void A_New_Document_Follows_The_Settings()
    {
        QFETCH(QString, editor);
        QFETCH(bool, written);
        Config().Op_Editor = editor;
        m_tabs->Open_New(u"ADDCODE"_s, {});
        QVERIFY(Control<QComboBox>("Comb_Cate").currentIndex() == 0);
        QCOMPARE(Control<QLineEdit>("Txt_Create").text(), u"2026-03-05"_s);
        QCOMPARE(m_tabs->Current_Document()->Form().type, written ? u"RTF"_s : QString());
    }

    void Two_Drafts_Of_A_Document_Become_Two_Documents()
    {
        const QString id = Stored(u"One"_s, u"1"_s);
        for (const QString &typed : {u" older"_s, u" newer"_s}) {
            Draft draft;
            Test_Form form(u"1"_s + typed);
            form.code_id = id;
            draft.Write(form, true, {});
            for (const QString &name : Drafts()) {
                if (!name.startsWith(u"999999"_s))
                    QVERIFY(QFile::rename(
                        m_program->Path(u"data/Zelqor.db-drafts/"_s + name),
                        m_program->Path(u"data/Zelqor.db-drafts/999999-dead_"_s + typed.trimmed() + u".draft"_s)));
            }
            QTest::qWait(20); // the newest is told by its time
        }
        m_program->prompts.Expect(u"2 份资料尚未保存"_s, u"yes"_s);
        m_tabs->Bring_Back_Unsaved();
        QCOMPARE(m_tabs->count(), 3);
        QVERIFY(m_tabs->Save_All());
        QCOMPARE(Sql_Rows(u"select Code_Content from Code_Info order by Code_Content"_s),
                 QList<QStringList>({{u"1 newer"_s}, {u"1 older"_s}}));
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info where Code_ID='%1'"_s.arg(id)), u"1 newer"_s);
    }

    void Automatic_Saving_Counts_Its_Ticks_data()
    {
        QTest::addColumn<QString>("on");
        QTest::addColumn<QString>("period");
        QTest::addColumn<int>("savedAt"); ///< tick, 0 for never
        QTest::addRow("off") << u"0"_s << u"1"_s << 0;
        QTest::addRow("period 0") << u"1"_s << u"0"_s << 0;
        QTest::addRow("no number") << u"1"_s << u"x"_s << 0;
        QTest::addRow("each tick") << u"1"_s << u"1"_s << 1;
        QTest::addRow("third tick") << u"1"_s << u"3"_s << 3;
    }
    void Automatic_Saving_Counts_Its_Ticks()
    {
        QFETCH(QString, on);
        QFETCH(QString, period);
        QFETCH(int, savedAt);
        Config().CH_Auto_Save = on;
        Config().COB_Auto_Save = period;
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        for (int i = 0; i < 5; ++i)
            m_tabs->Auto_Save_Tick();
        QCOMPARE(Sql_Cell(u"select Code_UpdateNum from Code_Info"_s), u"0"_s);
        Type(u" more"_s);
        int saved = 0;
        for (int tick = 1; tick <= 7 && saved == 0; ++tick) {
            m_tabs->Auto_Save_Tick();
            saved = m_tabs->Current_Document()->Is_Changed() ? 0 : tick;
        }
        QCOMPARE(saved, savedAt);
    }

    void The_List_Stays_The_First_Tab()
    {
        m_tabs->Open(Stored(u"One"_s, u"1"_s));
        m_tabs->Open(Stored(u"Two"_s, u"2"_s));
        m_tabs->tabBar()->moveTab(2, 0);
        QCOMPARE(m_tabs->tabText(0), u"List"_s);
        m_tabs->tabBar()->moveTab(0, 2);
        QCOMPARE(m_tabs->tabText(0), u"List"_s);
        m_tabs->setCurrentIndex(2);
        m_tabs->Turn(1);
        QCOMPARE(m_tabs->currentIndex(), 0);
        m_tabs->Turn(-1);
        QCOMPARE(m_tabs->currentIndex(), 2);
    }

    /// The page on screen paints itself, whichever way it came there.
    void The_Page_On_Screen_Is_Awake()
    {
        const auto awake = [this] {
            QStringList titles;
            for (int i = 0; i < m_tabs->count(); ++i) {
                if (m_tabs->widget(i)->updatesEnabled())
                    titles << m_tabs->tabText(i);
            }
            return titles.join(u' ');
        };
        for (const char16_t *title : {u"One", u"Two", u"Three"})
            m_tabs->Open(Stored(QString::fromUtf16(title), u"text"_s));
        QCOMPARE(awake(), u"Three"_s);
        m_tabs->tabBar()->moveTab(3, 1);
        QCOMPARE(awake(), u"Three"_s);
        QVERIFY(m_tabs->Close(1));
        QCOMPARE(awake(), m_tabs->tabText(m_tabs->currentIndex()));
        m_tabs->Show_List();
        QCOMPARE(awake(), u"List"_s);
        QVERIFY(m_tabs->Close(1));
        m_tabs->Turn(1);
        QCOMPARE(awake(), u"Two"_s);
    }

    void Fields_Are_Set_By_Clicks_And_Keys()
    {
        m_tabs->Open(Stored(u"Rivers"_s, u"A chosen word"_s));
        auto &stars = Control<Star_Field>("Comb_Star");
        QTest::mouseClick(&stars, Qt::LeftButton, {}, QPoint(stars.width() * 5 / 10, stars.height() / 2));
        QCOMPARE(stars.Text(), u"★★★☆☆"_s);
        QTest::keyClick(&Control<Star_Field>("Comb_Done"), Qt::Key_5);
        QTextEdit &content = Control<QTextEdit>("Txt_Content");
        QVERIFY(content.find(u"chosen"_s));
        Control<QToolButton>("Img_Tool_Action_0").click();
        Control<QToolButton>("Img_Tool_Action_1").click();
        Control<QToolButton>("Img_Tool_Action_3").click();
        QVERIFY(m_tabs->Save_Current());
        QCOMPARE(Sql_Rows(u"select Code_Color,Code_Done,Code_Title,Code_Keys,Code_Explain from Code_Info"_s).value(0),
                 QStringList({u"★★★☆☆"_s, u"★★★★★"_s, u"chosen"_s, u"chosen"_s, u"chosen"_s}));
        QTest::mouseClick(&stars, Qt::LeftButton, {}, QPoint(stars.width() * 5 / 10, stars.height() / 2));
        QCOMPARE(stars.Text(), u"★★☆☆☆"_s);
    }

    void A_Page_Is_Shown_And_Edited_As_What_It_Shows_data()
    {
        QTest::addColumn<QString>("page"); ///< "" for the page that stands for the file
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("picture"); ///< is held by the document itself
        const QString frame(QChar(0xFFFC));
        QTest::addRow("link to a file") << u""_s << u"a.mp3"_s << u"%1"_s << false;
        QTest::addRow("picture of a file") << u""_s << u"a.bmp"_s << frame << true;
        QTest::addRow("picture of the picture directory")
            << u"<img src='<<<Pic_Dir>>>a.bmp'>"_s << u"a.mp3"_s << frame << true;
        QTest::addRow("script and network") << u"<p>text<script>x()</script><img src='http://host/x.png'>"_s
                                            << u"a.mp3"_s << u"text"_s + frame << false;
    }
    void A_Page_Is_Shown_And_Edited_As_What_It_Shows()
    {
        QFETCH(QString, page);
        QFETCH(QString, file);
        QFETCH(QString, text);
        QFETCH(bool, picture);
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(m_program->Path(u"a.bmp"_s)) && image.save(Config().Pic_Dir + u"a.bmp"_s));
        m_program->Write(u"a.mp3"_s, "x");
        const QString id =
            AddCodeContent_File_Ex(m_program->Path(file), u"001"_s, u"0"_s, u"Page"_s, file.right(3), false);
        if (!page.isEmpty())
            Sql_Run(u"update Code_Info set Code_Content=\"%1\""_s.arg(page));
        m_tabs->Open(id);
        QTextEdit &content = Control<QTextEdit>("Txt_Content");
        QVERIFY(content.isReadOnly() && !m_tabs->Current_Document()->Is_Changed());
        const QString shown = text.contains(u'%') ? text.arg(m_program->Path(file)) : text;
        QCOMPARE(content.document()->toRawText().trimmed(), shown);
        QCOMPARE(content.toHtml().contains(u"\"picture:"_s), picture);
        m_tabs->Action(u"Mnu_Mode_Edit"_s)->trigger();
        QVERIFY(!content.isReadOnly());
        Type(u" more"_s);
        QVERIFY(m_tabs->Save_Current());
        const QStringList row = Sql_Rows(u"select Code_Type,Code_Content from Code_Info"_s).value(0);
        QCOMPARE(row.value(0), u"RTF"_s);
        QVERIFY(row.value(1).trimmed().endsWith(u"more"_s));
        QVERIFY(m_tabs->Close(1));
        m_tabs->Open(id);
        QCOMPARE(Control<QTextEdit>("Txt_Content").document()->toRawText().contains(QChar(0xFFFC)), picture);
    }

    void A_New_Office_Document_Is_Given_To_Its_Program_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addRow("AddCode_Word") << u"DOCX"_s;
        QTest::addRow("AddCode_Excel") << u"XLSX"_s;
        QTest::addRow("AddCode_PPT") << u"PPTX"_s;
    }
    void A_New_Office_Document_Is_Given_To_Its_Program()
    {
        QFETCH(QString, type);
        QString opened;
        Links::Set_Opener([&](const QUrl &address) {
            opened = address.toLocalFile();
            return true;
        });
        m_tabs->Action(QLatin1String(QTest::currentDataTag()))->trigger();
        QCOMPARE(Sql_Cell(u"select Code_Type from Code_Info"_s), type);
        QVERIFY(opened.endsWith(u'.' + type.toLower()) && QFileInfo(opened).size() > 0);
        QVERIFY(!m_tabs->Current_Document()->Is_Editing() && Control<QToolButton>("Cmd_Outside").isVisible());
        QVERIFY(m_tabs->Close(1));
        QTRY_VERIFY(!QFile::exists(opened));
    }

    /// The type is what a database says; a file of one that may be run is not given away unasked.
    void A_Type_That_May_Be_Run_Is_Asked_About()
    {
        m_program->Write(u"a.ini"_s, "x");
        const QString id =
            AddCodeContent_File_Ex(m_program->Path(u"a.ini"_s), u"001"_s, u"0"_s, u"Facts"_s, u"ini"_s, false);
        QString opened;
        Links::Set_Opener([&](const QUrl &address) {
            opened += QFileInfo(address.toLocalFile()).suffix() + u' ';
            return true;
        });
        for (const char *type : {"INI", "docx", "DESKTOP", "EXE", "jar", "sh", "BAT", "PHP", "XLS", "PDF"}) {
            Sql_Run(u"update Code_Info set Code_Type='%1'"_s.arg(QLatin1String(type)));
            m_tabs->Open(id);
            if (QStringList{u"DESKTOP"_s, u"EXE"_s, u"jar"_s, u"sh"_s, u"BAT"_s, u"PHP"_s}.contains(
                    QLatin1String(type)))
                m_program->prompts.Expect(u"文件“Facts.%1”的类型是"_s.arg(QString::fromLatin1(type).toLower()),
                                          *type == 'P' ? u"yes"_s : u"no"_s);
            m_tabs->Action(u"Mnu_Open_Outside"_s)->trigger();
            QVERIFY(m_tabs->Close(1));
        }
        QCOMPARE(opened, u"ini docx php xls pdf "_s);
    }

    void What_Another_Program_Saves_Comes_Back()
    {
        m_program->Write(u"a.ini"_s, "[a]\r\nb=1");
        const QString id =
            AddCodeContent_File_Ex(m_program->Path(u"a.ini"_s), u"001"_s, u"0"_s, u"Facts"_s, u"ini"_s, false);
        Sql_Run(u"update Code_Info set Code_Keys='kept'"_s);
        QString opened;
        Links::Set_Opener([&](const QUrl &address) {
            opened = address.toLocalFile();
            return true;
        });
        m_tabs->Open(id);
        m_tabs->Action(u"Mnu_Open_Outside"_s)->trigger();
        QCOMPARE(Files::Read_Bytes(opened), QByteArray("[a]\r\nb=1"));
        Files::Write_Bytes(opened, "[a]\r\nb=other");
        QTRY_COMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"[a]\nb=other"_s);
        QCOMPARE(Sql_Cell(u"select Code_Keys from Code_Info"_s), u"kept"_s);
        QCOMPARE(Control<QTextEdit>("Txt_Content").toPlainText(), u"[a]\nb=other"_s);
        // What is saved last is not lost when the tab is closed at once, nor while the program still has the file.
        Files::Write_Bytes(opened, "last");
        Files::Write_Bytes(QFileInfo(opened).path() + u"/.~lock."_s + QFileInfo(opened).fileName() + u'#', "x");
        m_program->prompts.Expect(u"仍在其他程序中打开"_s, u"no"_s);
        QVERIFY(!m_tabs->Close(1));
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"last"_s);
        m_program->prompts.Expect(u"仍在其他程序中打开"_s, u"yes"_s);
        QVERIFY(m_tabs->Close(1) && QFile::exists(opened));
    }

    void Composed_Text_Is_Saved_At_The_Exit()
    {
        m_tabs->Open(Stored(u"Rivers"_s, u"text"_s));
        QTextEdit &content = Control<QTextEdit>("Txt_Content");
        content.moveCursor(QTextCursor::End);
        QInputMethodEvent composing(u" 河"_s, {});
        QCoreApplication::sendEvent(&content, &composing);
        QVERIFY(m_tabs->Save_All());
        QCOMPARE(Sql_Cell(u"select Code_Content from Code_Info"_s), u"text 河"_s);
    }

    void A_Page_File_Becomes_A_Document()
    {
        m_program->Write(u"page.html"_s, "<html><head><title>A page</title></head><body><b>text</b></body></html>");
        m_program->prompts.Expect(u"选择网页文件"_s, m_program->Path(u"page.html"_s));
        m_tabs->Action(u"AddCode_Htm"_s)->trigger();
        QVERIFY(m_tabs->Current_Document()->Is_Changed() && m_tabs->Current_Document()->Is_Editing());
        QCOMPARE(m_tabs->tabText(1), u"A page*"_s);
        QVERIFY(m_tabs->Save_Current());
        QCOMPARE(Sql_Rows(u"select Code_Title,Code_Type,Code_Content,Cate_ID from Code_Info"_s).value(0),
                 QStringList({u"A page"_s, u"RTF"_s, u"text"_s, u"001"_s}));
    }
};

QTEST_MAIN(Test_Document_Tabs)
#include "test_document_tabs.moc"

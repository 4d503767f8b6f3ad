// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/document_store.h"
#include "editor/links.h"
#include "platform/database/database.h"
#include "platform/files/paths.h"
#include "support/controls.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "ui/document/frm_doc_standard.h"
#include "ui/document/opened_attachments.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>
#include <QUrl>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
struct Folder_Shell : No_Shell {
    [[nodiscard]] QString Selected_Folder() const override { return u"001"_s; }
};

QString Names()
{
    QStringList names;
    for (const QStringList &row : Sql_Rows(u"select file_name from tab_file order by order_id"_s))
        names << row.value(0);
    return names.join(u' ');
}
} // namespace

class Test_Document_Pages : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Folder_Shell m_shell;
    std::unique_ptr<Frm_Doc_Standard> m_form;
    QStringList m_started;

    QString Stored()
    {
        Test_Form form(u"text"_s);
        if (!AddCodeContent_Ex_Standard(form, u"0"_s))
            qFatal("not stored");
        return form.code_id;
    }
    void Show(const QString &code_id, int page)
    {
        m_form = std::make_unique<Frm_Doc_Standard>(m_shell);
        m_form->resize(1000, 700);
        m_form->show();
        if (code_id.isEmpty())
            m_form->AddCode_Office(u"ADDCODE"_s, u"001"_s);
        else
            QVERIFY(m_form->GetCode_ViaID(code_id));
        Get<QTabWidget>(*m_form, "TabS_Header").show();
        Get<QTabWidget>(*m_form, "TabS_Header").setCurrentIndex(page);
    }
    void Run(const char *command) const { Get<QAction>(*m_form, command).trigger(); }
    void Add(const QString &name, const QByteArray &bytes)
    {
        m_program->Write(name, bytes);
        m_program->prompts.Expect(u"选择要添加的文件"_s, m_program->Path(name));
        Run("Mnu_Add");
    }
    void Select(int row) const
    {
        auto &list = Get<QTreeView>(*m_form, "Lsv_File");
        list.setCurrentIndex(list.model()->index(row, 0));
    }
    static void Come_To_Front() { emit qApp->applicationStateChanged(Qt::ApplicationActive); }

private slots:
    void init()
    {
        m_program.emplace();
        m_started.clear();
        Add_Folder(u"001"_s, u"Work"_s);
        Links::Set_Opener([this](const QUrl &url) {
            m_started << (url.isLocalFile() ? url.toLocalFile() : url.toString());
            return true;
        });
    }
    void cleanup()
    {
        m_form.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void The_First_Save_Takes_Attachments_And_Tags()
    {
        Show({}, 1);
        Add(u"a.txt"_s, "one");
        QCOMPARE(Get<QTabWidget>(*m_form, "TabS_Header").tabText(1), u"附件列表 (1)"_s);
        Get<QTabWidget>(*m_form, "TabS_Header").setCurrentIndex(3);
        Get<QLineEdit>(*m_form, "Key_Tag").setText(u" Rivers "_s);
        Get<QPushButton>(*m_form, "Cmd_AddTag").click();
        Get<QLineEdit>(*m_form, "Txt_Title").setText(u"Title"_s);
        QVERIFY(m_form->Data_Update());
        QCOMPARE(Sql_Cell(u"select code_id from tab_file"_s), m_form->Code_Id());
        QCOMPARE(Get<QTabWidget>(*m_form, "TabS_Header").tabText(1), u"附件列表 (1)"_s);
        QCOMPARE(Sql_Cell(u"select Code_Tags from Code_Info"_s), u"{1}"_s);
        auto &content = Get<QTextEdit>(*m_form, "Txt_Content");
        content.setPlainText(u"valley"_s);
        content.selectAll();
        Get<QToolButton>(*m_form, "Img_Tool_Action_2").click();
        QCOMPARE(Sql_Cell(u"select Code_Tags from Code_Info"_s), u"{1}{2}"_s);
        // A tick that is taken away is stored at once.
        QAbstractItemModel &tags = *Get<QListView>(*m_form, "Lsv_Tags").model();
        QVERIFY(tags.setData(tags.index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
        QCOMPARE(Sql_Cell(u"select Code_Tags from Code_Info"_s), u"{2}"_s);
    }

    void The_List_Is_Changed_In_Edit_Mode_Only()
    {
        Show(Stored(), 1);
        for (const char *name : {"a.txt", "b.txt", "c.txt"})
            Add(QLatin1String(name), name);
        Select(2);
        Run("Mnu_Up");
        QCOMPARE(Names(), u"a.txt c.txt b.txt"_s);
        Select(0);
        Run("Mnu_Up");
        QCOMPARE(Names(), u"a.txt c.txt b.txt"_s);
        m_program->prompts.Expect(u"附件的说明"_s, u"it's"_s); // refused, and offered again
        m_program->prompts.Expect(u""_s, u"ok"_s);
        m_program->prompts.Expect(u"附件的说明"_s, u"a note"_s);
        Run("Mnu_Remark");
        QCOMPARE(Sql_Cell(u"select file_infor from tab_file where file_name='a.txt'"_s), u"a note"_s);
        Get<QTreeView>(*m_form, "Lsv_File").selectAll();
        m_program->prompts.Expect(u"选择文件夹"_s, m_program->Path(u"."_s));
        m_program->prompts.Expect(u"附件导出成功"_s, u"ok"_s);
        Run("Mnu_Export");
        QCOMPARE(m_program->Bytes(u"b (2).txt"_s), "b.txt");
        m_form->Set_Edit_Mode(false);
        for (const char *command : {"Mnu_Add", "Mnu_Delete", "Mnu_Down"}) {
            m_program->prompts.Expect(u"资料设为只读"_s, u"ok"_s);
            Run(command);
        }
        m_form->Set_Edit_Mode(true);
        m_program->prompts.Expect(u"您确定要删除该文件吗"_s, u"yes"_s);
        Run("Mnu_Delete");
        QCOMPARE(Names(), QString());
    }

    void What_Another_Program_Changed_Is_Stored_After_A_Question_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("prompts");
        QTest::addColumn<bool>("killed");
        QTest::addColumn<QString>("stored");
        const QString changed = u"文件已经被更改,需要更新吗？"_s;
        const QStringList agreed{changed, u"yes"_s, u"更新完成"_s, u"ok"_s};
        const QStringList run{u"x.bat"_s, u"yes"_s};
        QTest::addRow("yes") << u"a.txt"_s << agreed << false << u"newer"_s;
        QTest::addRow("no") << u"a.txt"_s << QStringList{changed, u"no"_s} << false << u"old"_s;
        QTest::addRow("at the next start") << u"a.txt"_s << agreed << true << u"newer"_s;
        QTest::addRow("a program") << u"x.bat"_s << run << false << u"old"_s;
    }
    void What_Another_Program_Changed_Is_Stored_After_A_Question()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, prompts);
        QFETCH(bool, killed);
        QFETCH(QString, stored);
        Show(Stored(), 1);
        Add(name, "old");
        Select(0);
        const auto expect = [&](bool runs) {
            for (qsizetype i = 0; i + 1 < prompts.size(); i += 2) {
                if (prompts[i].startsWith(u"x.") == runs)
                    m_program->prompts.Expect(runs ? u"可能"_s : prompts[i], prompts[i + 1]);
            }
        };
        expect(true);
        Run("Mnu_Open");
        QCOMPARE(QFileInfo(m_started.value(0)).fileName(), name);
        QVERIFY(!m_started[0].contains(u"temp/"_s)); // a start empties that folder
        Come_To_Front();
        Files::Write_Bytes(m_started[0], "newer");
        expect(false);
        if (killed) { // the copy as a dead process leaves it
            const QDir folder = QFileInfo(QFileInfo(m_started[0]).path()).dir();
            const QString left = folder.path().section(u'/', 0, -2) + u"/999999-dead_1.attached"_s;
            QVERIFY(QDir().rename(folder.path(), left));
            QCOMPARE(Opened_Attachments::Offer_Left(nullptr).size(), 1);
            QVERIFY(!QFileInfo::exists(left));
        } else {
            Come_To_Front();
            Come_To_Front(); // asked once
        }
        Unwatched_Work work;
        QVERIFY(
            Write_Attachment(Sql_Cell(u"select file_id from tab_file"_s).toLongLong(), m_program->Path(u"x"_s), work));
        QCOMPARE(m_program->Bytes(u"x"_s), stored.toUtf8());
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file"_s), u"1"_s);
        QCOMPARE(Get<QTreeView>(*m_form, "Lsv_File").model()->rowCount(), 1);
    }

    /// The question waits for the program that has the file, here one that has it on its command line.
    void A_Program_Is_Waited_For()
    {
        Show(Stored(), 1);
        Add(u"a.txt"_s, "old");
        Select(0);
        Run("Mnu_Open");
        QProcess reader;
        reader.start(u"tail"_s, {u"-f"_s, m_started.value(0)});
        QVERIFY(reader.waitForReadyRead());
        QVERIFY(QFile::remove(m_started[0])); // as programs do that put a new file in the place of the old one
        Files::Write_Bytes(m_started[0], "newer");
        Come_To_Front();
        QCOMPARE(Sql_Cell(u"select file_size from tab_file"_s), u"0.00K"_s);
        reader.kill();
        reader.waitForFinished();
        m_program->prompts.Expect(u"文件已经被更改,需要更新吗？"_s, u"no"_s);
        Come_To_Front();
        Run("Mnu_Open"); // what was not wanted is not shown again
        QCOMPARE(Files::Read_Bytes(m_started[1]), QByteArray("old"));
    }

    void Files_Of_One_Name_Are_Open_Apart()
    {
        for (int i = 0; i < 2; ++i) {
            Show(Stored(), 1);
            Add(u"a.txt"_s, QByteArray::number(i));
            Select(0);
            Run("Mnu_Open");
            QCOMPARE(Files::Read_Bytes(m_started[i]), QByteArray::number(i));
        }
        QVERIFY(m_started[0] != m_started[1]);
    }

    void What_The_Desktop_Cannot_Open_Goes_To_A_Chosen_Program()
    {
        Links::Set_Opener([](const QUrl &) { return false; });
        Show(Stored(), 1);
        Add(u"a.txt"_s, "old");
        Select(0);
        m_program->prompts.Expect(u"打开文件失败"_s, u"yes"_s);
        m_program->prompts.Expect(u"选择程序"_s, u"/bin/true"_s);
        Run("Mnu_Open");
    }

    void Names_Do_No_Harm_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name :
             {u"../../../a.txt"_s, u"/etc/a.txt"_s, u"a\nb.txt"_s, u".."_s, u"x/y.txt"_s, QString()})
            QTest::addRow("[%s]", QUrl::toPercentEncoding(name).constData()) << name;
        QTest::newRow("300 characters") << QString(300, u'x').left(251) + u".txt"_s;
    }
    void Names_Do_No_Harm()
    {
        QFETCH(QString, name);
        const QString id = Stored();
        Sql_Run(
            u"insert into tab_file (code_id,file_name,file_type,file_cont) values ('%1','%2',0,'x')"_s.arg(id, name));
        Show(id, 1);
        Select(0);
        if (name.size() < 250 && !name.endsWith(u".txt"_s))
            m_program->prompts.Expect(u"可能"_s, u"yes"_s);
        if (name.size() < 250)
            m_program->prompts.Expect(name.left(2), u"ok"_s);
        Run("Mnu_Open");
        QCOMPARE(m_started.size(), name.size() < 250 ? 0 : 1);
    }

    void Files_Come_And_Go_By_Clipboard_And_Mouse()
    {
        Show(Stored(), 1);
        m_program->Write(u"box/one.txt"_s, "1");
        m_program->Write(u"box/below/two.txt"_s, "2");
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(m_program->Path(u"box"_s))});
        m_program->prompts.Expect(u"2 个文件"_s, u"yes"_s);
        auto *page = Get<QTreeView>(*m_form, "Lsv_File").parentWidget();
        const auto drop = [&] {
            QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(page, &enter);
            QDropEvent event(QPointF(9, 9), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(page, &event);
        };
        drop();
        QCOMPARE(Names(), u"one.txt two.txt"_s);
        m_program->prompts.Expect(u"2 个文件"_s, u"no"_s);
        drop();
        QVERIFY(Names().endsWith(u"/box"_s)); // a link

        auto &list = Get<QTreeView>(*m_form, "Lsv_File");
        list.selectAll();
        const std::unique_ptr<QMimeData> dragged(list.model()->mimeData(list.selectionModel()->selectedRows()));
        QCOMPARE(dragged->urls().size(), 3);
        QCOMPARE(Files::Read_Bytes(dragged->urls().at(1).toLocalFile()), QByteArray("2"));

        QImage picture(4, 3, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QGuiApplication::clipboard()->setImage(picture);
        Run("Mnu_Paste");
        QVERIFY2(Names().endsWith(u".png"_s), qPrintable(Names()));
        QCOMPARE(Sql_Cell(u"select max(file_type) from tab_file where file_name like '%.png'"_s), u"0"_s);
    }

    void Links_Are_Followed_With_Care_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QString>("started");
        QTest::addRow("page") << u"<W>https://example.org/"_s << QString() << u"https://example.org/"_s;
        QTest::addRow("unsafe") << u"<W>file:///bin/sh"_s << u"file:///bin/sh"_s << QString();
        QTest::addRow("folder") << u"<F>/usr"_s << QString() << u"/usr"_s;
        QTest::addRow("folder that is a program") << u"<F>/bin/sh"_s << u"不存在"_s << QString();
        QTest::addRow("a path that is none") << u"a.txt"_s << u"不存在"_s << QString();
        QTest::addRow("file that is gone") << u"/nowhere/a.txt"_s << u"不存在"_s << QString();
    }
    void Links_Are_Followed_With_Care()
    {
        QFETCH(QString, path);
        QFETCH(QString, prompt);
        QFETCH(QString, started);
        const QString id = Stored();
        Sql_Run(
            u"insert into tab_file (code_id,file_name,file_type,file_path) values ('%1','x',1,'%2')"_s.arg(id, path));
        Show(id, 1);
        if (!prompt.isEmpty())
            m_program->prompts.Expect(prompt, u"ok"_s);
        Select(0);
        Run("Mnu_Open");
        QCOMPARE(m_started.join(u' '), started);
    }

    void A_Score_Is_Stored_At_Once()
    {
        Sql_Run(u"insert into tab_Gene (Gene_Id,Gene_Name,Gene_Num,Gene_Per,Gene_Default) "
                "values (7,'days',1.5,'D','X')"_s);
        const QString id = Stored();
        const auto next = [] {
            return Database_Engine::Date_From_Text(
                Sql_Cell(u"select Code_ReadDateNext from Code_Info where Code_ReadDate_Gene_Id = 7"_s));
        };
        Show(id, 0);
        const QDateTime easy = next(); // the first score, chosen by the fill
        QVERIFY(easy > Test_Program::Now().addDays(4));
        QTest::keyClick(m_form.get(), Qt::Key_F8, Qt::ControlModifier);
        QCOMPARE(next().daysTo(easy), 3);
        QVERIFY(m_form->Data_Update()); // a save keeps the score
        QCOMPARE(next().daysTo(easy), 3);
    }
};

QTEST_MAIN(Test_Document_Pages)
#include "test_document_pages.moc"

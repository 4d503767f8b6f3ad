// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "platform/database/database.h"
#include "storage/database_lifecycle.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "ui/exchange/frm_data_export_node_exe.h"
#include "ui/exchange/frm_data_export_node_files.h"
#include "ui/exchange/frm_file_import.h"
#include "ui/exchange/frm_transfer.h"
#include "ui/kit/work_window.h"
#include "users/scrambling.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <QTreeView>
#include <optional>

using namespace Qt::StringLiterals;

/// The forms are driven as a person does: rows chosen, boxes ticked, buttons pressed.
class Test_Exchange_Forms : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

    static void Press(QWidget &form, const char *name)
    {
        auto &button = Get<QPushButton>(form, name);
        QVERIFY2(button.isEnabled(), name);
        button.click();
    }
    /// Chooses the first folder below the root.
    static void Choose_Folder(QWidget &form, const char *tree)
    {
        auto &view = Get<QTreeView>(form, tree);
        view.setCurrentIndex(view.model()->index(0, 0, view.model()->index(0, 0)));
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"top"_s);
        QVERIFY(QDir().mkpath(m_program->Path(u"in/sub"_s)));
        m_program->Write(u"in/a.txt"_s, "one");
        m_program->Write(u"in/sub/b.txt"_s, "two");
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        Database_Engine::Let_Go();
        m_program.reset();
    }

    void A_Directory_Is_Imported_In_Five_Steps()
    {
        for (const int round : {1, 2}) {
            Frm_FileImport form;
            QVERIFY(!Get<QPushButton>(form, "Cmd_Next").isEnabled());
            Choose_Folder(form, "Trv_Code_Class");
            Press(form, "Cmd_Next");
            Press(form, "Cmd_Next");
            QVERIFY(!Get<QPushButton>(form, "Cmd_Next").isEnabled());
            form.show();
            Get<QLineEdit>(form, "Txt_Path").setText(m_program->Path(u"in"_s));
            QTest::keyClick(&Get<QLineEdit>(form, "Txt_Path"), Qt::Key_Return);
            QTRY_VERIFY(Get<QPushButton>(form, "Cmd_Next").isEnabled());
            QCOMPARE(Get<QStackedWidget>(form, "Pic_Steps").currentIndex(), 2); // the list is seen before the next step
            Press(form, "Cmd_Next");
            Press(form, "Cmd_Next");
            // The second time both titles are in their folders.
            QCOMPARE(Get<QCheckBox>(form, "Chk_Known").isHidden(), round == 1);
            const QSignalSpy imported(&form, &Frm_FileImport::Imported);
            m_program->prompts.Expect(u"报告"_s, u"no"_s);
            Press(form, "Cmd_Import");
            QCOMPARE(imported.size(), 1);
            QCOMPARE(Sql_Rows(u"select Code_Title,Cate_ID from Code_Info order by Code_Title"_s),
                     (QList<QStringList>{{u"a.txt"_s, u"001"_s}, {u"b.txt"_s, u"001001"_s}}));
        }
    }

    void Documents_Are_Copied_Into_A_New_File_And_Back()
    {
        Add_Document(u"{1}"_s, u"001"_s, u"one"_s);
        Add_Folder(u"002"_s, u"locked"_s, -1, Scramble_Text(u"pw"_s));
        const QString path = m_program->Path(u"copy.db"_s);
        Frm_DataExport_Ex out;
        auto &file = Get<QLineEdit>(out, "Txt_ExportPath");
        for (const auto &[name, refusal] :
             {std::pair(QString(), u"请选择导出的文件"_s), {u"none"_s, u"不是可用的文件"_s}}) {
            file.setText(name);
            m_program->prompts.Expect(refusal, u"ok"_s);
            Press(out, "Cmd_Export");
        }
        file.setText(path);
        Choose_Folder(out, "Trv_Export");
        Get<QCheckBox>(out, "Chk_Code_Info").click();
        Press(out, "Cmd_ListViewToLsv");
        Get<QCheckBox>(out, "Chk_Done").click();
        m_program->prompts.Expect(u"复制 1，已有 0，失败 0"_s, u"ok"_s);
        Press(out, "Cmd_Export");
        auto &tree = Get<QTreeView>(out, "Trv_Export");
        m_program->prompts.Expect(u"密码"_s, u"wrong"_s);
        m_program->prompts.Expect(u"密码输入错误"_s, u"ok"_s);
        tree.setCurrentIndex(tree.model()->index(1, 0, tree.model()->index(0, 0)));

        Sql_Run(u"delete from Code_Info"_s);
        Frm_DataInport_Ex in;
        QVERIFY(!Get<QPushButton>(in, "Cmd_Export").isEnabled());
        m_program->prompts.Expect(u"选择数据库"_s, path);
        Press(in, "Cmd_Browse");
        Choose_Folder(in, "Trv_Export");
        Get<QCheckBox>(in, "Chk_Code_Info").click();
        Press(in, "Cmd_ListViewToLsv");
        Get<QCheckBox>(in, "Chk_Done").click();
        m_program->prompts.Expect(u"复制 1，已有 0，失败 0"_s, u"ok"_s);
        Press(in, "Cmd_Export");
        QCOMPARE(Sql_Cell(u"select Code_Title from Code_Info"_s), u"one"_s);
    }

    void A_Book_Of_Chosen_Documents()
    {
        Add_Document(u"{1}"_s, u"001"_s, u"one"_s, u"Code_Content='text one'"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"two"_s);
        Add_Folder(u"002"_s, u"locked"_s, -1, Scramble_Text(u"pw"_s));
        Frm_DataExport_Node_Exe form;
        auto &path = Get<QLineEdit>(form, "Txt_ExportPath");
        auto &found = Get<QTreeView>(form, "Lsv_Code_Info");
        m_program->prompts.Expect(u"请选择导出的文件"_s, u"ok"_s);
        Press(form, "Cmd_Export");
        m_program->prompts.Expect(u"导出至电子书"_s, m_program->Path(u"book"_s));
        Press(form, "Cmd_Browse");
        QCOMPARE(path.text(), m_program->Path(u"book.exe"_s));
        m_program->prompts.Expect(u"勾选要导出的资料"_s, u"ok"_s);
        Press(form, "Cmd_Export");
        m_program->prompts.Expect(u"two资料内容为空或已加密，不能导出。\n\n请先确认"_s, u"ok"_s);
        Choose_Folder(form, "Trv_Export");
        QCOMPARE(found.model()->rowCount(), 1);
        auto &tree = Get<QTreeView>(form, "Trv_Export");
        m_program->prompts.Expect(u"密码"_s, u"wrong"_s);
        m_program->prompts.Expect(u"密码输入错误"_s, u"ok"_s);
        tree.setCurrentIndex(tree.model()->index(1, 0, tree.model()->index(0, 0)));
        QCOMPARE(found.model()->rowCount(), 1); // stays as it was
        Get<QCheckBox>(form, "Chk_Code_Info").click();
        Press(form, "Cmd_ListViewToLsv");
        Get<QCheckBox>(form, "Chk_Done").click();
        Get<QLineEdit>(form, "Txt_Times").setText(u"0"_s);
        m_program->prompts.Expect(u"使用次数"_s, u"ok"_s);
        Press(form, "Cmd_Export");
        Get<QLineEdit>(form, "Txt_Times").setText(u"3"_s);
        m_program->prompts.Expect(m_program->Path(u"book.exe"_s) + u" ，是否现在运行？"_s, u"no"_s);
        Press(form, "Cmd_Export");
        QVERIFY(QFileInfo(m_program->Path(u"book.exe"_s)).isExecutable());
        Get<QRadioButton>(form, "Opt_Format_1").click();
        QVERIFY(!Get<QLineEdit>(form, "Txt_Pass").isEnabled());
        QCOMPARE(path.text(), m_program->Path(u"book.epub"_s));
        m_program->prompts.Expect(u"是否现在打开"_s, u"no"_s);
        Press(form, "Cmd_Export");
        QVERIFY(m_program->Bytes(u"book.epub"_s).contains("application/epub+zip"));
    }

    void A_Form_Cannot_Be_Used_While_It_Works()
    {
        QDialog form;
        auto *button = new QPushButton(&form);
        int pressed = 0;
        connect(button, &QPushButton::clicked, this, [&] { ++pressed; });
        form.setModal(true);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        Long_Work::Run(&form, u"work"_s,
                       [&](Work & /*work*/) { Long_Work::Ask([&] { QTest::mouseClick(button, Qt::LeftButton); }); });
        QCOMPARE(pressed, 0);
        QTest::mouseClick(button, Qt::LeftButton);
        QCOMPARE(pressed, 1);
    }

    /// The window of the work comes after half a second, and would stand before what is asked.
    void A_Question_Is_Answered_Before_The_Work_Shows()
    {
        bool answered = false;
        Long_Work::Run(nullptr, u"work"_s, [&](Work & /*work*/) {
            Long_Work::Ask([&] {
                QDialog box;
                QTimer::singleShot(900, &box, [&] {
                    answered = QApplication::activeModalWidget() == &box;
                    box.accept();
                });
                box.exec();
            });
        });
        QVERIFY(answered);
    }

    void Work_Is_Called_Off_After_Its_Question()
    {
        for (const char *answer : {"no", "yes"}) {
            m_program->prompts.Expect(u"end it?"_s, QLatin1String(answer));
            bool goesOn = true;
            Long_Work::Run(
                nullptr, u"work"_s,
                [&](Work &work) {
                    for (bool isShown = false; !isShown; QThread::msleep(20))
                        Long_Work::Ask([&] { isShown = QApplication::activeModalWidget() != nullptr; });
                    Long_Work::Ask([] { Get<QPushButton>(*QApplication::activeModalWidget(), "Cmd_Cancel").click(); });
                    goesOn = work.Next(1, 2, u"item"_s);
                },
                u"end it?"_s);
            QCOMPARE(goesOn, *answer == 'n');
        }
    }

    void Nothing_Is_Exported_Before_Both_Sides_Are_Chosen()
    {
        Frm_DataExport_Node_Files form;
        m_program->prompts.Expect(u"请选择导出的节点"_s, u"ok"_s);
        Press(form, "Cmd_Export");
        Choose_Folder(form, "Trv_Export");
        m_program->prompts.Expect(u"请选择保存的路径"_s, u"ok"_s);
        Press(form, "Cmd_Export");
    }
};

QTEST_MAIN(Test_Exchange_Forms)
#include "test_exchange_forms.moc"

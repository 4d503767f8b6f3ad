// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/process_state.h"
#include "core/settings.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "tree/folder_ids.h"
#include "tree/tree_loading.h"
#include "ui/folders/tree_commands.h"
#include "ui/folders/tree_pane.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>
#include <QUrl>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
/// The main window as the pane sees it: it writes down what it is asked.
struct Notes : No_Shell {
    QStringList said;
    QStringList done;
    Tree_Pane *pane = nullptr; ///< null: imports fail
    void Set_Status(const QString &text) override { said << text; }
    int Import_Files(const QStringList &paths, const QString &folderId) override
    {
        done << u"import %1 to %2"_s.arg(paths.join(u' '), folderId);
        if (pane == nullptr)
            return 0;
        Add_Document(u"{new}"_s, folderId, u"imported"_s);
        pane->Recount(folderId);
        return 1;
    }
    void Focus_List() override { done << u"list"_s; }
    void Documents_Moved(const QStringList &ids, const QString &folder) override
    {
        done << u"%1 to %2"_s.arg(ids.join(u' '), folder);
    }
    void Folder_Renumbered(const QString &oldId, const QString &newId) override
    {
        done << u"%1 is %2"_s.arg(oldId, newId);
    }
};

/// Does something in the dialog that the next call opens.
void In_Dialog(const std::function<void(QDialog &)> &work)
{
    QTimer::singleShot(0, qApp, [work] {
        auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            qFatal("no dialog came up");
        work(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
}

template <class Control>
Control &Get(QWidget &form, const char *name)
{
    auto *control = form.findChild<Control *>(QLatin1String(name));
    if (control == nullptr)
        qFatal("no control %s", name);
    return *control;
}

void Click(QWidget &form, const char *button)
{
    Get<QAbstractButton>(form, button).click();
}
} // namespace

class Test_Tree_Pane : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::optional<Notes> m_shell;
    std::unique_ptr<QWidget> m_window;
    Tree_Pane *m_pane = nullptr;

    void Run(const char *action) { Get<QAction>(*m_pane, action).trigger(); }
    void Select(const QString &id) { QVERIFY(m_pane->Select_Folder(id)); }
    [[nodiscard]] QString Caption(const QString &id) const
    {
        const int node = m_pane->Tree().Find(Folder_Key(id));
        return node < 0 ? QString() : m_pane->Tree().Node(node).caption;
    }
    void Drop_On(const QString &key, QMimeData &data)
    {
        const QModelIndex index = m_pane->Tree().Index_Of(m_pane->Tree().Find(key));
        const QPoint at = key.isEmpty() ? m_pane->viewport()->rect().bottomRight() - QPoint(3, 3)
                                        : m_pane->visualRect(index).center();
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pane->viewport(), &enter);
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(m_pane->viewport(), &drop);
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

private slots:
    void init()
    {
        m_program.emplace();
        m_program->Write(u"data/ico/book.ico"_s, "no picture");
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"001001"_s, u"Plans"_s);
        Add_Folder(u"002"_s, u"Home"_s);
        Add_Document(u"{1}"_s, u"001001"_s, u"one"_s);
        m_shell.emplace();
        m_window = std::make_unique<QWidget>();
        m_pane = new Tree_Pane(*m_shell, m_window.get());
        m_window->resize(300, 500);
        m_pane->resize(300, 500);
        m_window->show();
        m_pane->Update_Tree();
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void A_Folder_Is_Added_By_Its_Dialog()
    {
        Select(u"001"_s);
        m_program->prompts.Expect(u"文件夹名称不得为空"_s, u"ok"_s);
        m_program->prompts.Expect(u"a[b  含有非法字符 [ "_s, u"ok"_s);
        In_Dialog([](QDialog &form) {
            QCOMPARE(Get<QLabel>(form, "Lab_Cate").text(), u"Work"_s);
            auto &name = Get<QLineEdit>(form, "Txt_Name");
            for (const QString &text : {u""_s, u"a[b"_s, u"it's"_s}) {
                name.setText(text);
                Click(form, "Cmd_OK");
                QCOMPARE(name.text(), text);
            }
            QVERIFY(Get<QLabel>(form, "Lab_Trouble").text().contains(u"单引号"_s));
            name.setText(u"New?"_s);
            Get<QLineEdit>(form, "Txt_Memo").setText(u"remark"_s);
            Click(form, "Cmd_OK");
        });
        QSignalSpy changed(m_pane, &Tree_Pane::Folders_Changed);
        Run("Mnu_Node_Add_Next");
        QCOMPARE(Caption(u"001002"_s), u"New_[0]"_s);
        QCOMPARE(m_pane->Selected_Id(), u"001002"_s);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(m_shell->said.size(), 2);
        QVERIFY(m_shell->said.first().startsWith(u"操作失败："_s));
        QCOMPARE(m_shell->said.last(), u"成功增加文件夹：New_"_s);
        QCOMPARE(Sql_Cell(u"select log_text from tab_log"_s), u"成功增加文件夹：New_"_s);
    }

    void A_Folder_Is_Changed_By_Its_Dialog()
    {
        Select(u"001"_s);
        In_Dialog([](QDialog &form) {
            Get<QLineEdit>(form, "Txt_Name").setText(u"Play's"_s);
            Get<QCheckBox>(form, "Chk_Exp").setChecked(false);
            Click(form, "Cmd_OK");
        });
        Run("Mnu_Node_Modify");
        QCOMPARE(Caption(u"001"_s), u"Play's[1]"_s);
        QVERIFY(!m_pane->isExpanded(m_pane->currentIndex()));
        QCOMPARE(m_shell->said, QStringList(u"成功修改文件夹：Play's 原文件夹：Work"_s));
    }

    void A_Name_Is_Edited_In_Place()
    {
        Select(u"001"_s);
        const auto type = [&](const QString &text, int key) {
            auto *editor = m_pane->findChild<QLineEdit *>();
            QVERIFY(editor != nullptr);
            editor->setText(text);
            QTest::keyClick(editor, static_cast<Qt::Key>(key));
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QCoreApplication::processEvents();
        };
        Run("Mnu_Node_Rename");
        QCOMPARE(m_pane->findChild<QLineEdit *>()->text(), u"Work"_s);
        type(u"Play"_s, Qt::Key_Return);
        QCOMPARE(Caption(u"001"_s), u"Play[1]"_s);
        QCOMPARE(m_shell->said.last(), u"Work成功更新 为Play"_s);
        // A name that cannot be stored stays in the editor.
        Run("Mnu_Node_Rename");
        type(u"it's"_s, Qt::Key_Return);
        QVERIFY(m_shell->said.last().startsWith(u"操作失败："_s));
        QCOMPARE(m_pane->findChild<QLineEdit *>()->text(), u"it's"_s);
        type(u"it is"_s, Qt::Key_Return);
        QCOMPARE(Caption(u"001"_s), u"it is[1]"_s);
        Run("Mnu_Node_Rename");
        type(u"away"_s, Qt::Key_Escape);
        QCOMPARE(Caption(u"001"_s), u"it is[1]"_s);
        // The root has no count: all that is typed is its name.
        Select(u""_s);
        for (const QString &name : {u"All [mine]"_s, u"All [of it]"_s}) {
            Run("Mnu_Node_Rename");
            type(name, Qt::Key_Return);
            QCOMPARE(m_pane->Tree().Node(0).caption, name);
        }
    }

    /// However deep a folder lies, choosing it brings its name into view.
    void Deep_Names_Are_Seen()
    {
        QString id = u"003"_s;
        for (int level = 1; level <= 80; ++level, id += u"001"_s)
            Add_Folder(id, u"level %1"_s.arg(level));
        m_pane->Update_Tree();
        for (const int level : {80, 7, 1}) {
            Select(id.left(3 * level));
            const QRect name = m_pane->visualRect(m_pane->currentIndex());
            const int end = name.left() + m_pane->sizeHintForIndex(m_pane->currentIndex()).width();
            QVERIFY2(name.left() >= 0 && end <= m_pane->viewport()->width(), qPrintable(QString::number(level)));
        }
    }

    void The_Bin_Refuses_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("notice");
        QTest::addRow("rename") << u"Mnu_Node_Rename"_s << u"回收站不能更改"_s;
        QTest::addRow("modify") << u"Mnu_Node_Modify"_s << u"回收站不能更改"_s;
        QTest::addRow("icon") << u"Mnu_Node_Icon"_s << u"回收站不能更改"_s;
        QTest::addRow("password") << u"Mnu_Node_Pass"_s << u"回收站不允许加密"_s;
        QTest::addRow("delete") << u"Mnu_Node_Del"_s << u"回收站不能删除"_s;
        QTest::addRow("move") << u"Mnu_Node_Move"_s << u"回收站不能移动"_s;
    }
    void The_Bin_Refuses()
    {
        QFETCH(QString, action);
        QFETCH(QString, notice);
        Select(u"000"_s);
        m_program->prompts.Expect(notice, u"ok"_s);
        Run(qPrintable(action));
        QCOMPARE(Caption(u"000"_s), u"回收站[0]"_s);
    }

    void Folders_Are_Reordered_And_Deleted_By_Keys()
    {
        Select(u"001"_s);
        m_pane->setFocus();
        m_program->prompts.Expect(u"不需再次保存。"_s, u"yes"_s);
        Run("Mnu_Node_Down");
        QCOMPARE(m_pane->Selected_Id(), u"001"_s);
        QCOMPARE(m_pane->currentIndex().row(), 1);
        m_program->prompts.Expect(u"文件夹发生变动"_s, u"no"_s);
        Run("Mnu_Node_Up");
        QCOMPARE(m_pane->currentIndex().row(), 1);
        m_program->prompts.Expect(u"转移到 回收站"_s, u"yes"_s);
        Run("Mnu_Node_Del");
        QCOMPARE(Caption(u"000001001"_s), u"Plans[1]"_s);
        QCOMPARE(Caption(u"000"_s), u"回收站[1]"_s);
        QCOMPARE(m_shell->done, QStringList(u"001 is 000001"_s));
        Select(u"000001"_s);
        m_program->prompts.Expect(u"不能恢复"_s, u"yes"_s);
        Run("Mnu_Node_Del");
        QCOMPARE(m_pane->Selected_Id(), u"000"_s);
        QCOMPARE(Caption(u"000"_s), u"回收站[0]"_s);
        QTest::keyClick(m_pane, Qt::Key_Return);
        QCOMPARE(m_shell->done.last(), u"list"_s);
        Select(u""_s);
        m_program->prompts.Expect(u"根节点，不能移动"_s, u"ok"_s);
        Run("Mnu_Node_Up");
    }

    void Drops_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("prompt");
        QTest::addColumn<QString>("done");
        QTest::addColumn<QString>("said");
        const QString text = u"text/plain"_s;
        const QString rows = u"application/x-zelqor-documents"_s;
        const QString files = u"text/uri-list"_s;
        QTest::addRow("folder") << text << QByteArray("C_001") << u"C_002"_s << u"Work ==>  新文件夹：Home"_s
                                << u"001 is 002001"_s << u"更新完成：原文件夹Work ==>  新文件夹：Home"_s;
        QTest::addRow("folder below itself") << text << QByteArray("C_001") << u"C_001001"_s << u""_s << u""_s << u""_s;
        QTest::addRow("root") << text << QByteArray("qvmxcode_") << u"C_001"_s << u""_s << u""_s << u""_s;
        QTest::addRow("bin") << text << QByteArray("C_000") << u"C_001"_s << u"回收站不能移动"_s << u""_s << u""_s;
        QTest::addRow("on empty space") << text << QByteArray("C_001") << u""_s << u""_s << u""_s
                                        << u"请指定对应的节点。"_s;
        QTest::addRow("documents") << rows << QByteArray("{1}\n{2}\n") << u"C_002"_s << u"one ==>  新文件夹：Home"_s
                                   << u"{1} {2} to 002"_s << u"更新完成：标题one ==>  新文件夹：Home"_s;
        QTest::addRow("documents as text") << text << QByteArray("LIST{1}/") << u"C_002"_s << u"one ==> "_s
                                           << u"{1} to 002"_s << u"更新完成：标题one ==>  新文件夹：Home"_s;
        QTest::addRow("files") << files << QByteArray("file:///a.txt\r\nfile:///b.txt\r\n") << u"C_002"_s << u""_s
                               << u"import /a.txt /b.txt to 002"_s << u"Home文件已成功导入"_s;
        QTest::addRow("files that fail") << files << QByteArray("file:///fails.txt\r\n") << u"C_002"_s << u""_s
                                         << u"import /fails.txt to 002"_s << u""_s;
        QTest::addRow("files on the root")
            << files << QByteArray("file:///a.txt\r\n") << Root_Key << u"请勿拖放到根结点: Zelqor"_s << u""_s << u""_s;
        QTest::addRow("documents on the root")
            << rows << QByteArray("{1}\n") << Root_Key << u"请勿拖放到根结点: Zelqor"_s << u""_s << u""_s;
        QTest::addRow("some words") << text << QByteArray("Chapter") << u"C_002"_s << u""_s << u""_s << u""_s;
    }
    void Drops()
    {
        QFETCH(QString, format);
        QFETCH(QByteArray, data);
        QFETCH(QString, target);
        QFETCH(QString, prompt);
        Add_Document(u"{2}"_s, u"001"_s, u"two"_s);
        m_pane->Update_Tree();
        m_shell->pane = data.contains("fails") ? nullptr : m_pane;
        QMimeData mime;
        mime.setData(format, data);
        if (!prompt.isEmpty())
            m_program->prompts.Expect(prompt, u"yes"_s);
        Drop_On(target, mime);
        QTEST(m_shell->done.join(u';'), "done");
        QTEST(m_shell->said.join(u';'), "said");
        if (format != u"text/plain" && format != u"text/uri-list" && target != Root_Key) {
            QCOMPARE(Caption(u"001001"_s), u"Plans[0]"_s);
            QCOMPARE(Caption(u"002"_s), u"Home[2]"_s);
        }
    }

    void A_Folder_Moves_By_The_Keyboard()
    {
        Select(u"001001"_s);
        m_program->prompts.Expect(u"Plans ==>  新文件夹：Home"_s, u"yes"_s);
        In_Dialog([](QDialog &form) {
            auto &filter = Get<QLineEdit>(form, "Txt_Find");
            QVERIFY(Get<QAbstractButton>(form, "Cmd_OK").isEnabled()); // the root
            filter.setText(u"plans"_s);
            QCOMPARE(Get<QTreeView>(form, "Trv_Choice").model()->rowCount(), 0);
            filter.setText(u"hom"_s);
            QTest::keyClick(&filter, Qt::Key_Return);
        });
        Run("Mnu_Node_Move");
        QCOMPARE(Caption(u"002001"_s), u"Plans[1]"_s);
        QCOMPARE(m_pane->Selected_Id(), u"002001"_s);
    }

    void Documents_Move_By_The_Keyboard()
    {
        m_program->prompts.Expect(u"one ==> "_s, u"yes"_s);
        In_Dialog([](QDialog &form) {
            QVERIFY(!Get<QAbstractButton>(form, "Cmd_OK").isEnabled());
            QTest::keyClick(&Get<QLineEdit>(form, "Txt_Find"), Qt::Key_Down);
            QTest::keyClick(&Get<QLineEdit>(form, "Txt_Find"), Qt::Key_Return);
        });
        m_pane->Commands().Move_Documents({u"{1}"_s});
        QCOMPARE(Caption(u"001"_s), u"Work[1]"_s);
        QCOMPARE(Caption(u"001001"_s), u"Plans[0]"_s);
    }

    void A_Click_Chooses_When_It_Ends()
    {
        const auto at = [&](const QString &id) {
            return m_pane->visualRect(m_pane->Tree().Index_Of(m_pane->Tree().Find(Folder_Key(id)))).center();
        };
        QSignalSpy chosen(m_pane, &Tree_Pane::Folder_Chosen);
        QTest::mousePress(m_pane->viewport(), Qt::LeftButton, {}, at(u"002"_s));
        QCOMPARE(chosen.size(), 0);
        QTest::mouseRelease(m_pane->viewport(), Qt::LeftButton, {}, at(u"002"_s));
        QCOMPARE(chosen.size(), 1);
        QTest::mouseClick(m_pane->viewport(), Qt::LeftButton, {}, at(u"002"_s));
        QCOMPARE(chosen.size(), 2); // the same folder again
        QTest::mouseClick(m_pane->viewport(), Qt::RightButton, {}, at(u"001"_s));
        QCOMPARE(chosen.last().first().toString(), u"001"_s);
        Sql_Run(u"update Cate_Info set Cate_pass='x' where Cate_ID='002'"_s);
        m_pane->Show_Locks();
        QTest::mouseClick(m_pane->viewport(), Qt::RightButton, {}, at(u"002"_s));
        QCOMPARE(m_pane->Selected_Id(), u"002"_s);
        QCOMPARE(chosen.size(), 3);
        // The arrow closes the node, which is remembered, and chooses nothing.
        const QRect work = m_pane->visualRect(m_pane->Tree().Index_Of(m_pane->Tree().Find(u"C_001"_s)));
        QTest::mouseClick(m_pane->viewport(), Qt::LeftButton, {}, work.center() - QPoint(work.width() / 2 + 8, 0));
        QCOMPARE(Sql_Cell(u"select Cate_Exp from Cate_Info where Cate_ID='001'"_s), u"0"_s);
        QCOMPARE(chosen.size(), 3);
    }

    void A_Folder_Is_Locked()
    {
        Select(u"001"_s);
        m_pane->Set_Accepted_Password(u"001"_s, u"old"_s);
        m_program->prompts.Expect(u"不一致"_s, u"ok"_s);
        m_program->prompts.Expect(u"旧密码输入错误"_s, u"ok"_s);
        In_Dialog([](QDialog &form) {
            QCOMPARE(Get<QLabel>(form, "Lab_Node").text(), u"Work (001)"_s);
            for (const char *field : {"Txt_Pass_Old", "Txt_Pass_New", "Txt_Pass_New_Chk"})
                QCOMPARE(Get<QLineEdit>(form, field).echoMode(), QLineEdit::Password);
            Get<QLineEdit>(form, "Txt_Pass_New").setText(u"it's"_s);
            Click(form, "Cmd_Save");
            Get<QLineEdit>(form, "Txt_Pass_New_Chk").setText(u"it's "_s);
            Get<QLineEdit>(form, "Txt_Pass_Old").setText(u"x"_s);
            Click(form, "Cmd_Save");
            Get<QLineEdit>(form, "Txt_Pass_Old").clear();
            Click(form, "Cmd_Save");
        });
        Run("Mnu_Node_Pass");
        QCOMPARE(m_shell->said, QStringList(u"设置密码成功，请牢记密码。Work"_s));
        m_pane->Update_Tree();
        QCOMPARE(m_pane->Accepted_Password(u"001"_s), QString());
    }

    void Folders_Are_Looked_Up()
    {
        Run("Mnu_Node_LookUp");
        auto &form = Get<QDialog>(*m_window, "Frm_Nodes_Search");
        QVERIFY(!form.isModal());
        Get<QLineEdit>(form, "Txt_Find").setText(u"plan"_s);
        Click(form, "Cmd_Find");
        auto &rows = Get<QTreeWidget>(form, "LV");
        QCOMPARE(rows.topLevelItemCount(), 1);
        QCOMPARE(rows.topLevelItem(0)->text(2), u"Work \\ Plans"_s);
        QTest::keyClick(&rows, Qt::Key_Return);
        QCOMPARE(m_pane->Selected_Id(), u"001001"_s);
        Get<QCheckBox>(form, "Chk_Para_Full").setChecked(true);
        Click(form, "Cmd_Find");
        QCOMPARE(rows.topLevelItemCount(), 0);
    }

    void Icons_Are_Chosen_And_Added()
    {
        QImage picture(300, 200, QImage::Format_RGB32);
        picture.fill(Qt::red);
        const QString file = m_program->Path(u"a picture with a long name.jpg"_s);
        QVERIFY(picture.save(file));
        Select(u"001"_s);
        m_program->prompts.Expect(u"选择图片"_s, m_program->Path(u"data/ico/book.ico"_s));
        m_program->prompts.Expect(u"选择图片"_s, file);
        In_Dialog([](QDialog &form) {
            auto &icons = Get<QListWidget>(form, "LV_Icon");
            QCOMPARE(icons.count(), 1);
            Click(form, "Cmd_Add");
            QVERIFY(Get<QLabel>(form, "Lab_Trouble").text().contains(u"不是可用的图片"_s));
            Click(form, "Cmd_Add");
            QCOMPARE(icons.count(), 2);
            QCOMPARE(icons.currentItem()->text(), u"a picture with a"_s);
            Click(form, "Cmd_Apply");
        });
        Run("Mnu_Node_Icon");
        QCOMPARE(Sql_Cell(u"select Icon_Name from Cate_Info where Cate_ID='001'"_s), u"A PICTURE WITH A.PNG"_s);
        QCOMPARE(Sql_Rows(u"select file_name,code_id from tab_file where file_type=3"_s),
                 QList<QStringList>({{u"a picture with a.png"_s, u""_s}}));
        m_pane->Update_Tree();
        QCOMPARE(m_pane->Tree().Node(m_pane->Selected_Node()).image, u"A PICTURE WITH A.PNG"_s);
        QVERIFY(QImage(m_program->Path(u"data/ico/a picture with a.png"_s)).width() == 64);
    }
};

QTEST_MAIN(Test_Tree_Pane)
#include "test_tree_pane.moc"

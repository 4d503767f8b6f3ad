// SPDX-License-Identifier: GPL-3.0-or-later
#include "documents/attachments.h"
#include "support/controls.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "ui/document/frm_file_admin.h"
#include "ui/window/frm_main.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeView>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
struct Main_Shell : No_Shell {
    [[nodiscard]] QString Document_On_Screen() const override { return u"{2}"_s; }
    void Open_Document(const QString &code_id) override { opened = code_id; }
    QString opened;
};
} // namespace

class Test_File_Admin : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    Main_Shell m_shell;
    std::unique_ptr<Frm_File_Admin> m_form;

    void Add(const char *document, const QString &name, const QByteArray &bytes, const QString &mode)
    {
        Unwatched_Work work;
        m_program->Write(name, bytes);
        S_SaveFile(QString::fromLatin1(document), m_program->Path(name), {}, mode, work);
    }
    void Click(const char *button) const { Get<QPushButton>(*m_form, button).click(); }
    void Choose(int view) const
    {
        auto &combo = Get<QComboBox>(*m_form, "Cob_Show");
        combo.setCurrentIndex(view);
        emit combo.activated(view);
    }
    QString Names() const
    {
        const QAbstractItemModel &model = *Get<QTreeView>(*m_form, "Lsv_File").model();
        QStringList names;
        for (int i = 0; i < model.rowCount(); ++i)
            names << model.index(i, 0).data().toString();
        return names.join(u' ');
    }
    void Select(const QString &name) const
    {
        auto &list = Get<QTreeView>(*m_form, "Lsv_File");
        for (int i = 0; i < list.model()->rowCount(); ++i) {
            if (list.model()->index(i, 0).data().toString() == name)
                return list.setCurrentIndex(list.model()->index(i, 0));
        }
        QFAIL(qPrintable(name));
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Document(u"{1}"_s, u"001"_s, u"One"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"Two"_s);
        Add("{1}", u"b.txt"_s, QByteArray(3000, 'b'), Addin_Mode::Internal);
        Add("{2}", u"a.txt"_s, QByteArray(3000, 'b'), Addin_Mode::Internal);
        Add("{2}", u"small.txt"_s, "words inside", Addin_Mode::Internal);
        Add("{gone}", u"alone.txt"_s, "x", Addin_Mode::Internal);
        Add("{1}", u"lost.txt"_s, "y", Addin_Mode::Link);
        QFile::remove(m_program->Path(u"lost.txt"_s));
        m_form = std::make_unique<Frm_File_Admin>(&m_shell);
        m_form->show();
    }
    void cleanup()
    {
        m_form.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    void Everything_Is_Listed_And_Summed()
    {
        QCOMPARE(Names(), u"a.txt alone.txt b.txt lost.txt small.txt"_s);
        const QString sum = Get<QLabel>(*m_form, "Lab_Sum").text();
        QVERIFY2(sum.contains(u"5 个（内部 4 个"_s) && sum.contains(u"外部 1 个"_s), qPrintable(sum));
        Get<QTreeView>(*m_form, "Lsv_File").sortByColumn(2, Qt::DescendingOrder);
        QCOMPARE(Names(), u"a.txt b.txt small.txt alone.txt lost.txt"_s); // by their bytes
    }

    void It_Is_Searched()
    {
        m_program->prompts.Expect(u"请输入要查找的内容"_s, u"ok"_s);
        Click("Cmd_Find");
        Get<QLineEdit>(*m_form, "Txt_key").setText(u"INSIDE"_s);
        Click("Cmd_Find");
        QCOMPARE(Names(), QString());
        Get<QCheckBox>(*m_form, "Chk_Key_2").setChecked(true);
        Click("Cmd_Find");
        QCOMPARE(Names(), u"small.txt"_s);
        QVERIFY(Get<QLabel>(*m_form, "Lab_Sum").text().startsWith(u"查找完成....总附件数:1"_s));
        Choose(0);
        QCOMPARE(Names().count(u' '), 4);
    }

    void What_Is_Wrong_Is_Put_Right()
    {
        Choose(1);
        QCOMPARE(Names(), u"lost.txt"_s);
        Select(u"lost.txt"_s);
        m_program->Write(u"found.txt"_s, "y");
        m_program->prompts.Expect(u"选择链接所指的文件"_s, m_program->Path(u"found.txt"_s));
        Click("Cmd_Place");
        Choose(1);
        QCOMPARE(Names(), QString());

        Choose(2);
        Select(u"alone.txt"_s);
        Click("Cmd_Give");
        QCOMPARE(Names(), u"alone.txt"_s); // what was shown stays until something else is
        Choose(2);
        QCOMPARE(Names(), QString());
        QCOMPARE(Sql_Cell(u"select code_id from tab_file where file_name='alone.txt'"_s), u"{2}"_s);

        Choose(3);
        QCOMPARE(Names().count(u' '), 1);
        Click("Cmd_Repeated");
        m_program->prompts.Expect(u"您确定要删除该文件吗"_s, u"yes"_s);
        m_program->prompts.Expect(u"删除成功"_s, u"ok"_s);
        Click("Cmd_Del");
        QCOMPARE(Sql_Cell(u"select count(*) from tab_file where file_size='2.93K'"_s), u"1"_s);

        Choose(0);
        Select(u"small.txt"_s);
        Click("Cmd_Goto");
        QCOMPARE(m_shell.opened, u"{2}"_s);
    }

    /// By the menu of the main window; what was deleted is given back to the disk, and its bytes are said.
    void Room_Is_Given_Back()
    {
        m_form.reset();
        Add("{1}", u"large.bin"_s, QByteArray(8 << 20, 'z'), Addin_Mode::Internal);
        Frm_Main window;
        window.show();
        const qint64 before = QFileInfo(m_program->Path(u"data/Zelqor.db"_s)).size();
        QTimer shown;
        connect(&shown, &QTimer::timeout, this, [&] {
            auto *form = qobject_cast<Frm_File_Admin *>(QApplication::activeModalWidget());
            if (form == nullptr)
                return;
            shown.stop();
            m_form.reset(form);
            Select(u"large.bin"_s);
            m_program->prompts.Expect(u"您确定要删除该文件吗"_s, u"yes"_s);
            m_program->prompts.Expect(u"删除成功"_s, u"ok"_s);
            Click("Cmd_Del");
            m_program->prompts.Expect(u"已归还磁盘的字节数"_s, u"ok"_s);
            Click("Cmd_Compact");
            m_form.release()->reject();
        });
        shown.start(20);
        Get<QAction>(window, "Mnu_File_Admin").trigger();
        QVERIFY(QFileInfo(m_program->Path(u"data/Zelqor.db"_s)).size() < before - (8 << 20));
    }
};

QTEST_MAIN(Test_File_Admin)
#include "test_file_admin.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/settings.h"
#include "support/controls.h"
#include "support/test_program.h"
#include "tree/tree_loading.h"
#include "ui/lists/document_list_view.h"
#include "ui/lists/due_button.h"
#include "ui/lists/frm_list_view_tags.h"
#include "ui/window/frm_main.h"
#include "views/tags.h"

#include <QAction>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>
#include <optional>

using namespace Qt::StringLiterals;

/// The pages of tags and hot lists, and the tags of the list's rows.
class Test_Left_Pages : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    std::unique_ptr<Frm_Main> m_window;

    [[nodiscard]] static QStringList Column(const QAbstractItemModel &rows, int column)
    {
        QStringList texts;
        for (int i = 0; i < rows.rowCount(); ++i)
            texts << rows.index(i, column).data().toString();
        return texts;
    }
    [[nodiscard]] QStringList Listed() const
    {
        QStringList titles = Column(*Get<Document_List_View>(*m_window, "Lsv_Code_Info").model(), 3);
        titles.sort();
        return titles;
    }
    [[nodiscard]] QTreeView &Tags() const { return Get<QTreeView>(*m_window, "Lsv_Tags"); }
    static QString Fields()
    {
        QString fields;
        for (const QStringList &row : Sql_Rows(u"select Code_Tags from Code_Info order by Code_ID"_s))
            fields += row.first() + u' ';
        return fields.trimmed();
    }
    void Drop(const QString &text, int row) const
    {
        QMimeData data;
        data.setText(text);
        const QRect rect = Tags().visualRect(Tags().model()->index(row, 0));
        const QPoint at = rect.isValid() ? rect.center() : QPoint(5, 5000);
        QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Tags().viewport(), &enter);
        QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Tags().viewport(), &drop);
    }
    void Trigger(const char *action) const { Get<QAction>(*m_window, action).trigger(); }

private slots:
    void init()
    {
        m_program.emplace();
        Config().CH_Tags = Config().CH_Hot = u"FALSE"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        for (int i = 1; i <= 15; ++i)
            QCOMPARE(Add_Tag(QString(QChar(u'a' + i - 1))), i);
        Add_Document(u"{1}"_s, u"001"_s, u"one"_s, u"Code_Tags='{5}',Code_ReadDateNext=#2000-01-01#"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"two"_s, u"Code_Tags='{15}{5}'"_s);
        Add_Document(u"{3}"_s, u"001"_s, u"three"_s, u"Code_Tags='{15}'"_s);
        Load_Root_Facts();
        m_window = std::make_unique<Frm_Main>();
        m_window->resize(900, 600);
    }
    void cleanup()
    {
        m_window.reset();
        QCOMPARE(m_program->prompts.Problems().join(u'\n'), QString());
        m_program.reset();
    }

    void A_Page_Comes_And_Goes_With_Its_Entry()
    {
        auto &tabs = Get<QTabWidget>(*m_window, "Pic_On_Left");
        for (const char *page : {"Left_Tags", "Left_Hot"}) {
            const int index = tabs.indexOf(&Get<QWidget>(tabs, page));
            QVERIFY(!tabs.isTabVisible(index));
            Trigger(("Mnu_" + QByteArray(page)).constData());
            QVERIFY(tabs.isTabVisible(index));
            QCOMPARE(tabs.currentIndex(), index);
            Trigger(("Mnu_" + QByteArray(page)).constData());
            QVERIFY(!tabs.isTabVisible(index));
        }
    }

    void A_Tag_Lists_Renames_And_Goes()
    {
        Trigger("Mnu_Left_Tags");
        QCOMPARE(Tags().model()->rowCount(), 15);
        Tags().setCurrentIndex(Tags().model()->index(4, 0));
        QCOMPARE(Listed(), QStringList({u"one"_s, u"three"_s, u"two"_s})); // 15 fits the pattern of 5
        m_program->prompts.Expect(u"请输入新标签名称(Max:50)"_s, u"  Zoo "_s);
        Get<QToolButton>(*m_window, "Ima_ModTag").click();
        QCOMPARE(Column(*Tags().model(), 0).last(), u"zoo"_s);
        QCOMPARE(Tags().currentIndex().data().toString(), u"zoo"_s);
        m_program->prompts.Expect(u"是否确定删除该标签？"_s, u"yes"_s);
        Get<QToolButton>(*m_window, "Ima_DelTag").click();
        QCOMPARE(Column(*Tags().model(), 0).last(), u"o"_s);
        QCOMPARE(Fields(), u"{15} {15}"_s);
        Add_Tag(u"late"_s);
        m_window->Document_Changed(u"{1}"_s); // the page follows what is done elsewhere
        QTRY_VERIFY(Column(*Tags().model(), 0).contains(u"late"_s));
        m_program->prompts.Expect(u"以下标签"_s, u"a"_s);
        Tags().setCurrentIndex(Tags().model()->index(Tags().model()->rowCount() - 1, 0));
        for (QAction *action : Tags().actions()) {
            if (action->text().startsWith(u"合并"_s))
                action->trigger();
        }
        QCOMPARE(Fields(), u"{1} {1}"_s);
    }

    void What_Is_Dropped_Is_Tagged()
    {
        Trigger("Mnu_Left_Tags");
        Drop(u"LIST{1}/{3}/"_s, 0);
        Drop(u"LIST{1}/{3}/"_s, 99);
        QCOMPARE(Fields(), u"{5}{1} {15}{5} {15}{1}"_s);
        QCOMPARE(Column(*Tags().model(), 1).first(), u"2"_s);
        m_window->Open_Document(u"{2}"_s);
        Drop(u" Fresh"_s, 99);
        QCOMPARE(Fields(), u"{5}{1} {15}{5}{16} {15}{1}"_s);
        QVERIFY(Column(*Tags().model(), 0).contains(u"fresh"_s));
    }

    void Rows_Get_Their_Tags()
    {
        Frm_ListView_Tags form({u"{1}"_s, u"{2}"_s});
        auto &list = Get<QTreeView>(form, "Lsv_Tags");
        auto &filter = Get<QLineEdit>(form, "Txt_Filter");
        const auto state = [&](int row) {
            return list.model()->index(row, 0).data(Qt::CheckStateRole).toInt();
        };
        QCOMPARE(QList<int>({state(0), state(4), state(14)}),
                 QList<int>({Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked}));
        QTest::keyClicks(&filter, u"New one"_s);
        QCOMPARE(list.model()->rowCount(), 0);
        QTest::keyClick(&filter, Qt::Key_Return);
        QTest::keyClicks(&filter, u"E"_s);
        QCOMPARE(list.model()->rowCount(), 2); // "e" and "new one"
        list.model()->setData(list.model()->index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
        Get<QPushButton>(form, "Cmd_OK").click();
        QCOMPARE(form.result(), static_cast<int>(QDialog::Accepted));
        QCOMPARE(Fields(), u"{16} {15}{16} {15}"_s); // the half tick stays what it is
    }

    void What_Is_Due_Is_Told_And_Listed()
    {
        auto &due = *m_window->findChild<Due_Button *>();
        due.Count();
        QCOMPARE(due.text(), u"逾期 1，今天 0"_s);
        due.click();
        QCOMPARE(Get<QTreeView>(*m_window, "Trv_Hot").currentIndex().data().toString(), u"逾期未读"_s);
        QCOMPARE(Listed(), QStringList(u"one"_s));
        Sql_Run(u"update Code_Info set Code_ReadDateNext=null where Code_ID='{1}'"_s);
        due.Count();
        QVERIFY(due.isHidden());
    }
};

QTEST_MAIN(Test_Left_Pages)
#include "test_left_pages.moc"

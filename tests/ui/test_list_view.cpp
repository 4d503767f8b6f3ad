// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/language_pack.h"
#include "core/process_state.h"
#include "core/settings.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "ui/kit/located_key.h"
#include "ui/lists/document_list_view.h"
#include "ui/lists/frm_list_view.h"
#include "ui/lists/frm_list_view_color.h"
#include "ui/lists/frm_list_view_para.h"
#include "ui/lists/search_pane.h"
#include "views/line_colors.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDropEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QToolButton>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{
/// Writes down what the panes ask of the main window.
struct Listening_Shell : No_Shell {
    QStringList asked;
    QString status;

    [[nodiscard]] QString Selected_Folder() const override { return u"001"_s; }
    void Open_Document(const QString &code_id) override { asked << u"open "_s + code_id; }
    void Delete_Documents(const QStringList &ids, Asked_In /*place*/) override
    {
        asked << u"delete "_s + ids.join(u' ');
    }
    void Open_Document_At(const QString &code_id, const QString &key, qint64 place) override
    {
        asked << u"open %1 at %2 of %3"_s.arg(code_id).arg(place).arg(key);
    }
    void New_Document() override { asked << u"new"_s; }
    int Import_Files(const QStringList &paths, const QString &folderId) override
    {
        asked << u"import %1 into %2"_s.arg(paths.join(u' '), folderId);
        return static_cast<int>(paths.size());
    }
    void Set_Status(const QString &text) override { status = text; }
};
} // namespace

class Test_List_View : public QObject
{
    Q_OBJECT
    std::unique_ptr<Test_Program> m_program;
    std::unique_ptr<Listening_Shell> m_shell;
    std::unique_ptr<Frm_ListView> m_form;

    [[nodiscard]] Document_List_View &List() const
    {
        return *m_form->findChild<Document_List_View *>(u"Lsv_Code_Info"_s);
    }
    [[nodiscard]] QString Title(int row) const { return List().model()->index(row, 3).data().toString(); }
    [[nodiscard]] QString Caption(int column) const
    {
        return List().model()->headerData(column, Qt::Horizontal).toString();
    }
    void Show_Folder()
    {
        m_form->Show_Source([](List_Model &list, int page) {
            QString password;
            return ShowCodeInfoToList_Ex(u"001"_s, list, false, page, {}, password);
        });
    }
    void Click_Header(int column) { emit List().header()->sectionClicked(column); }

private slots:
    void init()
    {
        m_program = std::make_unique<Test_Program>();
        m_shell = std::make_unique<Listening_Shell>();
        m_form = std::make_unique<Frm_ListView>(*m_shell);
        Config().Cob_OrderBy = u"3"_s;
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"北京"_s, u"Code_Content='one two one'"_s);
        Add_Document(u"{2}"_s, u"001"_s, u"apple"_s);
        Add_Document(u"{3}"_s, u"001"_s, u"avocado"_s);
        Show_Folder();
        m_form->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    }
    void cleanup()
    {
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_form.reset();
        m_program.reset();
    }

    void Columns_Sort_And_Carry_Their_Mark()
    {
        const QString bare = Caption(3);
        Click_Header(0);
        QCOMPARE(Caption(0).contains(u'△') || Caption(0).contains(u'▽'), false);
        Click_Header(3);
        QCOMPARE(Caption(3), bare + u'△');
        QCOMPARE(Title(0) + Title(2), u"北京avocado"_s);
        Click_Header(3);
        QCOMPARE(Caption(3), bare + u'▽');
        QCOMPARE(Title(0) + Title(2), u"avocado北京"_s);
        Click_Header(4);
        QCOMPARE(Caption(3), bare);
        QVERIFY(Caption(4).endsWith(u'△'));
    }

    void Widths_And_Places_Are_Kept()
    {
        QHeaderView *header = List().header();
        header->resizeSection(1, 30);
        header->resizeSection(8, 333);
        header->setSectionHidden(5, true);
        header->moveSection(header->visualIndex(4), 1);
        m_form->Save_Columns();
        Frm_ListView again(*m_shell);
        const QHeaderView *kept = again.findChild<Document_List_View *>(u"Lsv_Code_Info"_s)->header();
        QCOMPARE(kept->sectionSize(1), 30);
        QCOMPARE(kept->sectionSize(8), 333);
        QVERIFY(kept->isSectionHidden(5));
        QCOMPARE(kept->visualIndex(4), 1);

        Frm_ListView_Para setup;
        QSignalSpy changed(&setup, &Frm_ListView_Para::Columns_Changed);
        QVERIFY(!setup.findChild<QCheckBox *>(u"Chk_ListViewPara_5"_s)->isChecked());
        setup.findChild<QCheckBox *>(u"Chk_ListViewPara_6"_s)->setChecked(false);
        setup.findChild<QAbstractButton *>(u"Cmd_Update"_s)->click();
        QCOMPARE(changed.count(), 1);
        const QStringList widths = GetIni(u"Col"_s, u"ListViewPara"_s).split(u',');
        QCOMPARE(widths.value(8), QString::number(333 * 15));
        QCOMPARE(widths.mid(5, 2), QStringList({u"0"_s, u"0"_s}));
    }

    void Captions_Of_Another_Language_Find_Room()
    {
        Config().LANGUAGE = u"Chinese"_s;
        List().header()->resizeSection(4, 30);
        List().header()->resizeSection(8, 333);
        m_form->Save_Columns();
        Config().LANGUAGE = u"English"_s;
        Language().Load(Pack_Folder(), u"English"_s);
        Frm_ListView again(*m_shell);
        const QHeaderView *shown = again.findChild<Document_List_View *>(u"Lsv_Code_Info"_s)->header();
        QVERIFY(shown->sectionSize(4) > shown->sectionSizeHint(4));
        QCOMPARE(shown->sectionSize(8), 333);
    }

    void Typing_Finds_A_Title()
    {
        List().setFocus();
        QTest::keyClicks(&List(), u"av"_s);
        QCOMPARE(Title(List().currentIndex().row()), u"avocado"_s);
        List().keyboardSearch(u"x"_s);
        QCOMPARE(Title(List().currentIndex().row()), u"avocado"_s);
    }

    void Keys_Run_The_Commands()
    {
        List().setFocus();
        List().setCurrentIndex(List().model()->index(1, 0));
        QTest::keyClick(&List(), Qt::Key_Return);
        QTest::keyClick(&List(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&List(), Qt::Key_Delete);
        QTest::keyClick(&List(), Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), u"apple\navocado"_s);
        QTest::keyClick(&List(), Qt::Key_Return);
        QCOMPARE(m_shell->asked, QStringList({u"open {2}"_s, u"delete {2} {3}"_s, u"open {2}"_s, u"open {3}"_s}));
        List().clearSelection();
        QTest::keyClick(&List(), Qt::Key_Delete);
        QCOMPARE(m_shell->asked.size(), 4);
    }

    void A_Place_Opens_At_It()
    {
        Search_Pane pane(*m_shell);
        pane.show();
        pane.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&pane));
        Tree_Model tree;
        Tree_Builder builder;
        builder.Add({}, {u"qvmxcode_"_s, u"root"_s, {}, true, {}, -1, 0, {}});
        tree.Replace(builder.Take());
        pane.Copy_Folders(tree);
        QSignalSpy ended(&pane, &Search_Pane::Search_Ended);
        auto *keys = pane.findChild<QComboBox *>(u"Cob_FindKey"_s);
        const auto search = [&](const QString &key) {
            pane.Start_Typing();
            keys->setEditText(key);
            QTest::keyClick(keys->lineEdit(), Qt::Key_Return);
            return !ended.isEmpty() || ended.wait() ? ended.takeFirst().first().value<std::shared_ptr<Search_Result>>()
                                                    : nullptr;
        };
        Sql_Run(u"update Code_Info set Code_Content='One' where Code_ID='{3}'"_s);
        const auto result = search(u"O'NE"_s);
        QVERIFY(result);
        m_form->Show_Source([&](List_Model &list, int /*page*/) {
            list.Replace(result->found.rows);
            return result->found.info;
        });
        m_form->Set_Search(result->key, result->fields);
        QCOMPARE(List().model()->rowCount(), 5);
        emit List().doubleClicked(List().model()->index(2, 0));
        emit List().doubleClicked(List().model()->index(0, 0));
        QCOMPARE(m_shell->asked, QStringList({u"open {1} at 1 of ONE"_s, u"open {1} at -1 of ONE"_s}));
        QCOMPARE(m_form->Neighbour(u"{1}"_s, 1) + m_form->Neighbour(u"{3}"_s, 1), u"{3}"_s);
        QCOMPARE(m_form->Neighbour(u"{3}"_s, -1) + m_form->Neighbour(u"{1}"_s, -1), u"{1}"_s);

        const auto nothing = search(u"nowhere"_s);
        QVERIFY(nothing && nothing->found.rows.empty());
        for (const char16_t *named : {u"nowhere", u"按标题、关键字、", u"回收站"})
            QVERIFY2(nothing->scope.contains(QString::fromUtf16(named)), qPrintable(nothing->scope));
        const QString searched = m_shell->status;
        const QString database = std::exchange(App().Conn_Str, u"Data Source=none.db"_s);
        m_program->prompts.Expect(u""_s, u"ok"_s);
        const auto failed = search(u"nowhere"_s);
        App().Conn_Str = database;
        QVERIFY(failed && !failed->scope.contains(u"标题"_s) && failed->scope == m_shell->status);
        QVERIFY(m_shell->status != searched);
        search(u"nowhere"_s);
        QCOMPARE(keys->count(), 2);
        search(u"third"_s);
        Config().KEYS_NUM = u"2"_s;
        pane.Save_History();
        QCOMPARE(GetIni(u"Col"_s, u"KEYS"_s), u"third,nowhere,"_s);
        const Search_Pane again(*m_shell);
        const auto *kept = again.findChild<QComboBox *>(u"Cob_FindKey"_s);
        QCOMPARE(kept->itemText(0) + kept->itemText(1) + kept->currentText(), u"thirdnowhere"_s);
        m_program->prompts.Expect(u"关键字"_s, u"ok"_s);
        keys->setEditText(u"''"_s);
        pane.Cmd_FindTxt();
    }

    void A_Key_Is_Marked_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<int>("place");
        QTest::addColumn<int>("position");
        QTest::addRow("none named") << u"ONE"_s << -1 << 4;
        QTest::addRow("the second one") << u"one"_s << 1 << 12;
        QTest::addRow("one that is not shown") << u"one"_s << 9 << 12;
        QTest::addRow("one that lies over another") << u"aa"_s << 1 << 1;
    }
    void A_Key_Is_Marked()
    {
        QFETCH(QString, key);
        QFETCH(int, place);
        QTextEdit text;
        text.setPlainText(u"aaa\none two one"_s);
        Mark_Key(text, key, place);
        QTEST(text.textCursor().position(), "position");
        QCOMPARE(text.extraSelections().size(), 3);
        QTest::keyClick(&text, Qt::Key_Escape);
        QCOMPARE(text.extraSelections().size(), 0);
        Mark_Key(text, key, place);
        QCOMPARE(text.extraSelections().size(), 3);
        Mark_Key(text, {}, -1);
        QCOMPARE(text.extraSelections().size(), 0);
    }

    void Colours_Reach_The_Documents()
    {
        Frm_ListView_Color colors(nullptr, {u"{1}"_s, u"{2}"_s});
        colors.findChild<QToolButton *>(u"Txt_Color_0"_s)->click();
        colors.findChild<QCheckBox *>(u"Chk_Bold"_s)->setChecked(true);
        colors.findChild<QAbstractButton *>(u"Cmd_Apply"_s)->click();
        QVERIFY(Line_Color_Of(u"{2}"_s).endsWith(u"|True"_s));
        m_form->Refresh_Row(u"{2}"_s);
        QVERIFY(List().model()->index(1, 3).data(Qt::ForegroundRole).isValid());
        QVERIFY(!List().model()->index(2, 3).data(Qt::ForegroundRole).isValid());
        colors.findChild<QAbstractButton *>(u"Cmd_DefaultColor"_s)->click();
        colors.findChild<QAbstractButton *>(u"Cmd_Apply"_s)->click();
        QCOMPARE(Line_Color_Of(u"{1}"_s), QString());
    }

    void A_New_Document_Joins_Its_List()
    {
        List().setCurrentIndex(List().model()->index(1, 0));
        Add_Document(u"{4}"_s, u"001"_s, u"written"_s);
        m_form->Refresh_Row(u"{4}"_s);
        QCOMPARE(List().model()->rowCount(), 4);
        QCOMPARE(List().currentIndex().row(), 1);
    }

    void A_Row_That_Goes_Leaves_Its_Place()
    {
        const auto goes = [this](const QString &id) {
            Sql_Run(u"delete from Code_Info where Code_ID='%1'"_s.arg(id));
            m_form->Reload();
            return Title(List().currentIndex().row());
        };
        Add_Document(u"{4}"_s, u"001"_s, u"b"_s);
        Config().MAX_RECORD = 2;
        Show_Folder();
        m_form->Go_To_Page(2);
        List().setCurrentIndex(List().model()->index(0, 0));
        QCOMPARE(Title(0) + Title(1), u"avocadob"_s);
        QCOMPARE(goes(u"{3}"_s), u"b"_s);
        QCOMPARE(goes(u"{4}"_s), u"北京"_s); // on the page before
        QCOMPARE(List().model()->rowCount(), 2);
        List().setCurrentIndex(List().model()->index(1, 0));
        QCOMPARE(goes(u"{2}"_s), u"北京"_s);
    }

    void Dropped_Files_Are_Stored_And_Logged()
    {
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(m_program->Path(u"Config.ini"_s))});
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, {});
        static_cast<QObject &>(*m_form).event(&drop);
        QVERIFY(drop.isAccepted() && m_shell->asked.isEmpty());
        QTRY_COMPARE(m_shell->asked, QStringList(u"import %1 into 001"_s.arg(m_program->Path(u"Config.ini"_s))));
        QVERIFY(Sql_Cell(u"select log_text from tab_log where type_id='5'"_s).contains(u"(1)"_s));
    }

    /// Extra folders and properties are those of one document: with several, nothing is asked or told.
    void Some_Commands_Are_For_One_Row()
    {
        List().selectAll();
        bool asked = false;
        QTimer::singleShot(0, [&asked] {
            if (QWidget *form = QApplication::activeModalWidget()) {
                asked = true;
                form->close();
            }
        });
        m_form->findChild<QAction *>(u"Mnu_Lsv_Code_Info_VirCate"_s)->trigger();
        m_form->findChild<QAction *>(u"Mnu_List_Properties"_s)->trigger();
        QTest::qWait(1);
        QVERIFY(!asked);
        QStringList enabled;
        QTimer::singleShot(0, [&] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            for (const QAction *action : menu == nullptr ? QList<QAction *>() : menu->actions()) {
                if (action->isEnabled())
                    enabled << action->objectName();
            }
            if (menu != nullptr)
                menu->close();
        });
        emit List().customContextMenuRequested({});
        QVERIFY(enabled.contains(u"Mnu_List_Delete"_s));
        QVERIFY(!enabled.contains(u"Mnu_List_Properties"_s) && !enabled.contains(u"Mnu_Lsv_Code_Info_VirCate"_s));
        List().setCurrentIndex(List().model()->index(0, 0));
        m_program->prompts.Expect(u"{1}"_s, u"ok"_s);
        m_form->findChild<QAction *>(u"Mnu_List_Properties"_s)->trigger();
    }

    void A_Missing_Picture_Is_Told()
    {
        Config().Pic_List = u" none.png "_s;
        m_form->setListPic(Config().Pic_List);
        QVERIFY(m_shell->status.startsWith(u"none.png 不存在"_s));
        QTimer::singleShot(0, [] { QApplication::activePopupWidget()->close(); });
        emit List().customContextMenuRequested({});
        QVERIFY(m_form->findChild<QAction *>(u"Mnu_List_No_Picture"_s)->isVisible());
        QVERIFY(!m_form->findChild<QWidget *>(u"Img_List"_s)->isVisible());
        QPixmap picture(20, 10);
        picture.fill(Qt::red);
        QVERIFY(QDir().mkpath(m_program->Path(u"data/img"_s)));
        QVERIFY(picture.save(m_program->Path(u"data/img/red.png"_s)));
        m_form->setListPic(u"red.png"_s);
        const auto &shown = *m_form->findChild<QLabel *>(u"Img_List"_s);
        QVERIFY(shown.isVisible());
        // Another picture of that name takes another one; the same one is there already.
        picture.fill(Qt::blue);
        QVERIFY(QDir().mkpath(m_program->Path(u"else"_s)));
        QVERIFY(picture.save(m_program->Path(u"else/red.png"_s)));
        for (int i = 0; i < 2; ++i) {
            m_program->prompts.Expect(u""_s, m_program->Path(u"else/red.png"_s));
            m_form->findChild<QAction *>(u"Mnu_List_Picture"_s)->trigger();
            QCOMPARE(Config().Pic_List, u"red (2).png"_s);
            QCOMPARE(shown.pixmap().toImage().pixelColor(1, 1), QColor(Qt::blue));
        }
        QCOMPARE(QDir(m_program->Path(u"data/img"_s)).entryList(QDir::Files).size(), 2);
    }
};

QTEST_MAIN(Test_List_View)
#include "test_list_view.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/config_store.h"
#include "core/settings.h"
#include "documents/document_store.h"
#include "editor/line_distance.h"
#include "editor/links.h"
#include "editor/text_editor.h"
#include "platform/files/paths.h"
#include "platform/richtext/rich_text.h"
#include "support/controls.h"
#include "support/no_shell.h"
#include "support/test_form.h"
#include "support/test_program.h"
#include "ui/document/document_tabs.h"
#include "ui/document/frm_doc_standard.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QToolButton>
#include <QUrl>
#include <QWheelEvent>
#include <optional>

using namespace Qt::StringLiterals;

class Test_Document_Look : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;
    No_Shell m_shell;
    std::unique_ptr<Document_Tabs> m_tabs;

    template <class Widget>
    [[nodiscard]] Widget &Control(const char *name) const
    {
        return Get<Widget>(*m_tabs->Current_Document(), name);
    }
    [[nodiscard]] Text_Editor &Content() const { return Control<Text_Editor>("Txt_Content"); }
    QString Stored(const QByteArray &rtf) const
    {
        Test_Form form;
        if (!Rich_Text::Read_Rtf(rtf, *form.content) || !AddCodeContent_Ex_Standard(form, u"0"_s))
            qFatal("not stored");
        return form.code_id;
    }
    void Open(const QString &id, const QSize &size = {1040, 600})
    {
        m_tabs->resize(size);
        m_tabs->Open(id);
        QApplication::processEvents();
    }

private slots:
    void init()
    {
        m_program.emplace();
        Add_Folder(u"001"_s, u"Work"_s);
        Add_Folder(u"001001"_s, u"Plans"_s);
        m_tabs = std::make_unique<Document_Tabs>(m_shell, nullptr);
        m_tabs->Add_List(new QWidget, u"List"_s);
        m_tabs->show();
    }
    void cleanup()
    {
        m_tabs.reset();
        QCOMPARE(m_program->prompts.Problems(), QStringList());
        m_program.reset();
    }

    /// Size, width and distances on screen are the view's alone: the text that a save writes is, byte for byte, what it
    /// is without them.
    void The_View_Leaves_The_Text_As_It_Is_data()
    {
        QTest::addColumn<QByteArray>("rtf");
        QTest::addRow("of a word processor")
            << Files::Read_Bytes(QStringLiteral(ZELQOR_TEST_DATA "/shots/Knowledge notes.rtf"));
        QTest::addRow("paragraphs with spacing")
            << QByteArray("{\\rtf1\\ansi plain\\par\\pard\\sl360\\slmult1 wide\\par\\pard\\sl-400\\slmult0 fixed\\par"
                          "\\pard\\sa200\\sb100 spaced\\par{\\fs48 large} and {\\super up}\\par}");
        QTest::addRow("table") << QByteArray("{\\rtf1\\ansi before\\par\\trowd\\cellx3000\\cellx6000\\intbl a\\cell "
                                             "b\\cell\\row\\pard behind\\par}");
    }
    void The_View_Leaves_The_Text_As_It_Is()
    {
        QFETCH(QByteArray, rtf);
        const QString id = Stored(rtf);
        Open(id);
        const QByteArray shown = Rich_Text::Write_Rtf(*Content().document());
        Text_Editor plain; // a pane without any of it
        Rich_Text::Read_Rtf(rtf, *plain.document());
        QCOMPARE(shown, Rich_Text::Write_Rtf(*plain.document()));
        const double before = Content().document()->size().height();
        QWheelEvent wheel({9, 9}, {9, 9}, {}, {0, 120}, {}, Qt::ControlModifier, Qt::NoScrollPhase, false);
        for (int i = 0; i < 4; ++i)
            QApplication::sendEvent(Content().viewport(), &wheel);
        for (const int mode : {1, 2, 0})
            m_tabs->Current_Document()->Use_View_Mode(mode);
        m_tabs->resize(1600, 500);
        QApplication::processEvents();
        QVERIFY(Content().document()->size().height() > before);
        QCOMPARE(Rich_Text::Write_Rtf(*Content().document()), shown);
        QVERIFY(!m_tabs->Current_Document()->Is_Changed() && !Content().document()->isUndoAvailable());
        QVERIFY(!Line_Distance::Without(Content().toHtml()).contains(u"line-distance"_s));
        // A paragraph that is put in lies like its neighbours, and leaves them nothing that is copied along.
        auto *data = new QMimeData;
        data->setHtml(u"<p>one</p><p>two</p>"_s);
        QGuiApplication::clipboard()->setMimeData(data);
        Content().moveCursor(QTextCursor::End);
        Content().paste();
        const QTextBlock last = Content().document()->lastBlock();
        QCOMPARE(last.blockFormat().lineHeightType(), int(QTextBlockFormat::LineDistanceHeight));
        Content().selectAll();
        Content().copy();
        QVERIFY(!QGuiApplication::clipboard()->mimeData()->html().contains(u"line-distance"_s));
    }

    void The_Size_Is_Kept_For_All()
    {
        Open(Stored("{\\rtf1 one}"));
        Open(Stored("{\\rtf1 two}"));
        QCOMPARE(Content().Zoom(), 120);
        emit Content().Zoom_Wanted(1);
        QCOMPARE(GetIni(u"Col"_s, u"Text_Zoom"_s), u"135"_s);
        for (int i = 0; i < 20; ++i)
            emit Content().Zoom_Wanted(-1);
        QCOMPARE(Content().Zoom(), 50);
        m_tabs->setCurrentIndex(1);
        QCOMPARE(Content().Zoom(), 50);
        QTest::keyClick(m_tabs.get(), Qt::Key_0, Qt::ControlModifier);
        QTRY_COMPARE(Content().Zoom(), 120);
        // A picture that is pulled on screen has its size in the document's measures.
        QCOMPARE(Content().document()->documentLayout()->paintDevice()->logicalDpiY(), Content().logicalDpiY() * 6 / 5);
    }

    void The_Text_Has_Its_Room_And_Stays_In_Place_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addRow("small") << QSize(760, 560);
        QTest::addRow("usual") << QSize(1040, 620);
        QTest::addRow("wide") << QSize(2400, 1300);
    }
    void The_Text_Has_Its_Room_And_Stays_In_Place()
    {
        QFETCH(QSize, size);
        Open(Stored("{\\rtf1 text}"), size);
        QCOMPARE(m_tabs->size(), size);
        QVERIFY(!Control<QTabWidget>("TabS_Header").isVisible()); // a first start shows the text alone
        const int head = m_tabs->Current_Document()->height() - Content().height();
        QVERIFY2(head <= 120, qPrintable(QString::number(head)));
        QVERIFY(Content().viewport()->width() <= 760 && Content().viewport()->width() > size.width() / 4);
        const QRect place = Content().geometry();
        Content().insertPlainText(u"typed"_s);
        QApplication::processEvents();
        QVERIFY(m_tabs->Current_Document()->Is_Changed() && Control<QLabel>("Fra_Code_Content").text().endsWith(u'*'));
        QCOMPARE(Content().geometry(), place);
        Control<QToolButton>("Chk_Addon_Title").click();
        QApplication::processEvents();
        QVERIFY(Control<QTabWidget>("TabS_Header").isVisible() && Content().width() > size.width() / 2);
        QCOMPARE(m_tabs->size(), size);
        QCOMPARE(GetIni(u"Page"_s, u"M_FILE"_s), u"TRUE"_s);
        Control<QToolButton>("Chk_Read_Title").click(); // the tools of writing go
        QApplication::processEvents();
        QVERIFY(Content().height() > place.height());
    }

    void Tools_Stand_In_One_Row()
    {
        Open(Stored("{\\rtf1 text}"), {760, 560});
        auto &more = Get<QToolButton>(Control<QWidget>("Bar_Editor"), "Cmd_More");
        QVERIFY(more.isVisible() && Control<QWidget>("Bar_Editor").height() < 50);
        emit more.menu()->aboutToShow();
        const auto entries = more.menu()->actions();
        QVERIFY(std::any_of(entries.begin(), entries.end(),
                            [](auto *a) { return a->objectName() == u"Cmd_Align_Justify"; }));
        QVERIFY(std::none_of(entries.begin(), entries.end(), [](auto *a) { return a->objectName() == u"Cmd_Bold"; }));
        m_tabs->resize(2000, 560);
        QApplication::processEvents();
        QVERIFY(!more.isVisible());
    }

    void Memo_And_Summary_Stand_Where_They_Are_Wanted()
    {
        Open(Stored("{\\rtf1 text}"));
        Control<QToolButton>("Chk_Memo_Title").click();
        auto &memo = Control<QWidget>("Pic_Memo");
        QTRY_VERIFY(memo.isVisible());
        const auto corner = [&](QWidget &pane) {
            return pane.mapTo(m_tabs.get(), QPoint());
        };
        QVERIFY(corner(memo).x() > corner(Content()).x());
        auto &look = Control<QToolButton>("Cmd_Look");
        emit look.menu()->aboutToShow();
        look.menu()->actions().last()->trigger();
        QApplication::processEvents();
        QVERIFY(memo.isVisible() && corner(memo).y() > corner(Content()).y());
        QCOMPARE(GetIni(u"Col"_s, u"Panes_Below"_s), u"TRUE"_s);
        emit look.menu()->aboutToShow();
        look.menu()->actions().last()->trigger();
        QApplication::processEvents();
        QVERIFY(corner(memo).x() > corner(Content()).x());
    }

    void The_Keyboard_Comes_Back_To_The_Text()
    {
        Open(Stored("{\\rtf1 text}"));
        Control<QToolButton>("Chk_Addon_Title").click();
        m_tabs->activateWindow();
        for (const char *name : {"Txt_Title", "Comb_Cate", "Comb_Star", "Txt_Keys", "Txt_Update", "Txt_Author"}) {
            auto &control = Control<QWidget>(name);
            control.setFocus();
            QTest::keyClick(&control, Qt::Key_Escape);
            QVERIFY2(Content().hasFocus(), name);
        }
        QTest::keyClick(&Content(), Qt::Key_J, Qt::AltModifier);
        QVERIFY(Control<QLineEdit>("Txt_Title").hasFocus());
        // Text that is read is no place where the tab key stays.
        m_tabs->Current_Document()->Set_Edit_Mode(false);
        Content().setFocus();
        QTest::keyClick(&Content(), Qt::Key_Tab);
        QVERIFY(!Content().hasFocus());
    }

    void A_Kept_File_Is_A_Card_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("facts"); ///< what the card says, "" for no card
        QTest::addRow("text of a program") << u"a.ini"_s << u"文件 (INI)"_s;
        QTest::addRow("link") << u"my song.mp3"_s << u"文件 (MP3)"_s;
        QTest::addRow("picture that the text shows") << u"a.bmp"_s << u"图片 (BMP)"_s;
        QTest::addRow("picture") << u"a.png"_s << u"图片 (PNG)"_s;
        QTest::addRow("text") << u"a.txt"_s << u""_s;
    }
    void A_Kept_File_Is_A_Card()
    {
        QFETCH(QString, name);
        QFETCH(QString, facts);
        const QString path = m_program->Path(name);
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::red);
        if (!image.save(path))
            m_program->Write(name, "content");
        Open(AddCodeContent_File_Ex(path, u"001"_s, u"0"_s, u"Kept"_s, name.section(u'.', -1), false));
        auto &card = Control<QWidget>("Pic_Card");
        QCOMPARE(card.isVisible(), !facts.isEmpty());
        QCOMPARE(m_tabs->Action(u"Mnu_Open_Outside"_s)->isEnabled(), !facts.isEmpty());
        if (facts.isEmpty())
            return;
        QVERIFY(Get<QLabel>(card, "Lab_File_Facts").text().startsWith(facts));
        QString opened;
        Links::Set_Opener([&](const QUrl &address) {
            opened = address.toLocalFile();
            return true;
        });
        const bool inside = name.endsWith(u".ini");
        if (!inside)
            m_program->prompts.Expect(u""_s, u"yes"_s);
        Get<QToolButton>(card, "Cmd_Outside").click();
        QVERIFY2(opened.endsWith(inside ? u"Kept.ini"_s : name), qPrintable(opened));
    }

    void What_Is_Told_Follows_The_Text()
    {
        QSignalSpy told(m_tabs.get(), &Document_Tabs::Facts_Changed);
        Open(Stored("{\\rtf1 one two\\par three}"));
        const auto facts = [&] {
            return told.isEmpty() ? Document_Facts() : told.last().first().value<Document_Facts>();
        };
        QTRY_COMPARE(facts().words, 3);
        QVERIFY(facts().shown && !facts().unsaved && facts().saved.isValid() && facts().lines == 2);
        QVERIFY(facts().mode == Document_Facts::Mode::Editing);
        Content().moveCursor(QTextCursor::End);
        Content().insertPlainText(u" four"_s);
        QTRY_COMPARE(facts().words, 4);
        QVERIFY(facts().unsaved && facts().line == 2);
        Content().moveCursor(QTextCursor::PreviousWord, QTextCursor::KeepAnchor);
        QTRY_VERIFY(facts().of_selection && facts().words == 1);
        m_tabs->Show_List();
        QVERIFY(!facts().shown);
    }
};

QTEST_MAIN(Test_Document_Look)
#include "test_document_look.moc"

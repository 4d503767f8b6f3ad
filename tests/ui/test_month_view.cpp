// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/controls.h"
#include "support/no_shell.h"
#include "support/test_program.h"
#include "ui/kit/date_field.h"
#include "ui/kit/month_view.h"
#include "ui/tools/frm_date.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QTimer>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{
struct Listening_Shell : No_Shell {
    void List_Documents(const QString &where) override { listed << where; }
    QStringList listed;
};

QString Read_Out(const Month_View &view)
{
    return view.currentIndex().data(Qt::AccessibleTextRole).toString();
}
} // namespace

class Test_Month_View : public QObject
{
    Q_OBJECT
    std::optional<Test_Program> m_program;

private slots:
    void init() { m_program.emplace(); }
    void cleanup()
    {
        QCOMPARE(m_program->Logged(), QStringList());
        m_program.reset();
    }

    void Keys_Go_Beyond_The_Month_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<Qt::KeyboardModifiers>("with");
        QTest::addColumn<QDate>("day");
        const auto row = [](const char *name, Qt::Key key, Qt::KeyboardModifiers with, const QDate &day) {
            QTest::newRow(name) << static_cast<int>(key) << with << day;
        };
        row("a day", Qt::Key_Right, Qt::NoModifier, {2024, 3, 1});
        row("a week back", Qt::Key_Up, Qt::NoModifier, {2024, 2, 22});
        row("a week", Qt::Key_Down, Qt::NoModifier, {2024, 3, 7});
        row("a month", Qt::Key_PageDown, Qt::NoModifier, {2024, 3, 29});
        row("a year back", Qt::Key_PageUp, Qt::ShiftModifier, {2023, 2, 28});
        row("first of the month", Qt::Key_Home, Qt::NoModifier, {2024, 2, 1});
        row("today", Qt::Key_Home, Qt::ControlModifier, Test_Program::Now().date());
    }
    void Keys_Go_Beyond_The_Month()
    {
        QFETCH(int, key);
        QFETCH(Qt::KeyboardModifiers, with);
        Month_View view;
        view.Set_Day({2024, 2, 29});
        QTest::keyClick(&view, static_cast<Qt::Key>(key), with);
        QTEST(view.Day(), "day");
    }

    void A_Click_Takes_A_Day_Or_Its_Mark()
    {
        Month_View view;
        view.setLocale(QLocale(u"en_GB"_s));
        view.resize(view.sizeHint());
        view.show();
        view.Set_Day({2026, 2, 16});
        view.Set_Marks({{17, Day_Mark::Made | Day_Mark::Due}}, {u"Made"_s, u"Changed"_s, u"Read"_s, u"Due"_s});
        QSignalSpy taken(&view, &Month_View::Day_Taken);
        QSignalSpy marked(&view, &Month_View::Mark_Taken);
        const QRect cell = view.visualRect(view.model()->index(3, 1)); // weeks begin on Monday, so does the grid
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, cell.center());
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, QPoint(cell.center().x() + 19, cell.bottom() - 8));
        QCOMPARE(taken.size(), 1);
        QCOMPARE(marked.size(), 1);
        QCOMPARE(marked[0][1].value<Day_Mark>(), Day_Mark::Due);
        QCOMPARE(Read_Out(view), u"Tuesday, 17 February 2026\nMade\nDue"_s);
        view.Set_Lunar(true);
        QVERIFY(Read_Out(view).contains(u"农历丙午年（马）正月初一 春节"_s));
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(5, 6)).center());
        QCOMPARE(view.Day(), QDate(2026, 3, 8)); // a day of the month beside brings its month
    }

    void A_Date_Field_Takes_A_Day()
    {
        Date_Field field;
        field.setText(u"2026-02-28"_s);
        field.show();
        QTimer::singleShot(0, &field, [] {
            auto &month = *QApplication::activePopupWidget()->findChild<Month_View *>();
            QTest::keyClick(&month, Qt::Key_Right);
            QTest::keyClick(&month, Qt::Key_Return);
        });
        field.Show_Calendar();
        QCOMPARE(field.text(), u"2026-03-01"_s);
    }

    void The_Window_Lists_What_A_Day_Has()
    {
        Add_Folder(u"001"_s, u"Folder"_s);
        Add_Document(u"{1}"_s, u"001"_s, u"A title"_s);
        Sql_Run(u"update Code_Info set Code_ReadDateNext='2025-07-25' where Code_ID='{1}'"_s);
        Listening_Shell shell;
        Frm_Date form(shell);
        form.show();
        QVERIFY(Get<QCheckBox>(form, "Chk_Lunar").isChecked()); // the Chinese pack is in force
        Get<QSpinBox>(form, "Spn_Lunar_Year").setValue(2025);
        Get<QComboBox>(form, "Cob_Lunar_Month").setCurrentText(u"闰六月"_s);
        Get<QComboBox>(form, "Cob_Lunar_Day").setCurrentIndex(0);
        Get<QPushButton>(form, "Cmd_Lunar").click();
        QCOMPARE(Get<Month_View>(form, "Mon_Days").Day(), QDate(2025, 7, 25));
        QCOMPARE(Get<QSpinBox>(form, "Spn_Year").value(), 2025);
        QVERIFY(!Get<QPushButton>(form, "Cmd_Mark_0").isEnabled());
        Get<QPushButton>(form, "Cmd_Mark_3").click();
        QCOMPARE(shell.listed, QStringList(Day_Where({2025, 7, 25}, Day_Mark::Due)));
    }
};

QTEST_MAIN(Test_Month_View)
#include "test_month_view.moc"

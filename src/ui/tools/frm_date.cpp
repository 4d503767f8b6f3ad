// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/tools/frm_date.h"

#include "platform/machine/machine.h"
#include "tools/calendar.h"
#include "tools/day_text.h"
#include "ui/kit/icons.h"
#include "ui/kit/shell.h"
#include "ui_frm_date.h"

#include <QEvent>
#include <QLocale>
#include <QSignalBlocker>
#include <algorithm>

namespace
{
constexpr int Months = 12;
} // namespace

Frm_Date::Frm_Date(Shell &shell, QWidget *parent)
    : QDialog(parent), m_shell(shell), m_ui(std::make_unique<Ui::Frm_Date>())
{
    m_ui->setupUi(this);
    m_lang.LoadControlsCaption();
    Set_Up_Words();
    Connect_Controls();
    const bool chinese = locale().language() == QLocale::Chinese;
    m_ui->Chk_Lunar->setChecked(chinese);
    Show_Lunar(chinese);
    Show_Day(m_ui->Mon_Days->Day());
    m_ui->Mon_Days->setFocus();
}

Frm_Date::~Frm_Date() = default;

void Frm_Date::Set_Up_Words()
{
    setLocale(QLocale(m_lang.GetString("_Locale", "Main")));
    for (int month = 1; month <= Months; ++month)
        m_ui->Cob_Month->addItem(locale().standaloneMonthName(month));
    m_ui->Cmd_Previous->setIcon(Line_Icon(QStringLiteral("previous")));
    m_ui->Cmd_Next->setIcon(Line_Icon(QStringLiteral("next")));
    m_ui->Mon_Days->setAccessibleName(windowTitle());
    m_ui->Cob_Month->setAccessibleName(m_lang.GetString("_Month_Name"));
    m_ui->Spn_Year->setAccessibleName(m_lang.GetString("_Year_Name"));
    for (QToolButton *button : {m_ui->Cmd_Previous, m_ui->Cmd_Next})
        button->setAccessibleName(button->toolTip());
    for (QComboBox *box : {m_ui->Cob_Lunar_Month, m_ui->Cob_Lunar_Day})
        box->setAccessibleName(m_ui->Chk_Lunar->text().remove(QLatin1Char('&')));
    const QList<QPushButton *> marks = Mark_Buttons();
    for (int mark = 0; mark < marks.size(); ++mark)
        marks[mark]->setIcon(Month_View::Mark_Icon(mark, *this));
}

void Frm_Date::Connect_Controls()
{
    Month_View *days = m_ui->Mon_Days;
    const auto month = [days](int step) {
        days->Set_Day(days->Day().addMonths(step));
    };
    connect(m_ui->Cmd_Previous, &QToolButton::clicked, this, [month] { month(-1); });
    connect(m_ui->Cmd_Next, &QToolButton::clicked, this, [month] { month(1); });
    connect(m_ui->Cmd_Today, &QPushButton::clicked, this, [days] { days->Set_Day(Machine::Now().date()); });
    connect(m_ui->Cob_Month, &QComboBox::currentIndexChanged, this,
            [days, month](int index) { month(index + 1 - days->Day().month()); });
    connect(m_ui->Spn_Year, &QSpinBox::valueChanged, this,
            [days, month](int year) { month((year - days->Day().year()) * Months); });
    connect(m_ui->Chk_Lunar, &QCheckBox::toggled, this, &Frm_Date::Show_Lunar);
    connect(m_ui->Cob_Lunar_Month, &QComboBox::currentIndexChanged, this, &Frm_Date::Fill_Lunar_Days);
    connect(m_ui->Spn_Lunar_Year, &QSpinBox::valueChanged, this,
            [this] { Fill_Lunar_Months(m_lunarMonth.number, m_lunarMonth.leap); });
    connect(m_ui->Cmd_Lunar, &QPushButton::clicked, this, &Frm_Date::Cmd_Lunar_Click);
    connect(days, &Month_View::Day_Chosen, this, &Frm_Date::Show_Day);
    connect(days, &Month_View::Mark_Taken, this, &Frm_Date::List_Mark);
    const QList<QPushButton *> buttons = Mark_Buttons();
    for (int mark = 0; mark < buttons.size(); ++mark) {
        connect(buttons[mark], &QPushButton::clicked, this,
                [this, days, mark] { List_Mark(days->Day(), static_cast<Day_Mark>(1 << mark)); });
    }
}

void Frm_Date::Show_Day(const QDate &day)
{
    {
        const QSignalBlocker month(m_ui->Cob_Month);
        const QSignalBlocker year(m_ui->Spn_Year);
        m_ui->Cob_Month->setCurrentIndex(day.month() - 1);
        m_ui->Spn_Year->setValue(day.year());
    }
    if (m_marked != QDate(day.year(), day.month(), 1))
        Read_Marks();
    Show_Marks();
    const QString lunar = m_ui->Chk_Lunar->isChecked() ? Text_Of_Day(day).whole : QString();
    m_ui->Lab_Day->setText(locale().toString(day, QLocale::LongFormat) +
                           (lunar.isEmpty() ? QString() : QLatin1Char('\n') + lunar));
    Show_Lunar_Date(day);
}

void Frm_Date::Read_Marks()
{
    const QDate day = m_ui->Mon_Days->Day();
    QStringList words;
    for (const QPushButton *button : Mark_Buttons())
        words << button->text().remove(QLatin1Char('&')).section(QLatin1Char('('), 0, 0);
    m_marked = QDate(day.year(), day.month(), 1);
    m_ui->Mon_Days->Set_Marks(Month_Marks(day.year(), day.month()), words);
}

void Frm_Date::Show_Marks()
{
    const QList<QPushButton *> buttons = Mark_Buttons();
    for (int mark = 0; mark < buttons.size(); ++mark)
        buttons[mark]->setEnabled(m_ui->Mon_Days->Marks_Of_Day().testFlag(static_cast<Day_Mark>(1 << mark)));
}

void Frm_Date::Show_Lunar(bool on)
{
    m_ui->Mon_Days->Set_Lunar(on);
    m_ui->Pic_Lunar->setVisible(on);
    Show_Day(m_ui->Mon_Days->Day());
}

void Frm_Date::Show_Lunar_Date(const QDate &day)
{
    if (Text_Of_Day(day).whole.isEmpty())
        return;
    clsDate date;
    date.Set_Solar(day.year(), day.month(), day.day());
    const QSignalBlocker year(m_ui->Spn_Lunar_Year);
    m_ui->Spn_Lunar_Year->setValue(date.Lunar_Year());
    Fill_Lunar_Months(date.Lunar_Month(), date.Is_Leap());
    m_ui->Cob_Lunar_Day->setCurrentIndex(date.Lunar_Day() - 1);
}

void Frm_Date::Fill_Lunar_Months(int number, bool leap)
{
    const QSignalBlocker blocker(m_ui->Cob_Lunar_Month); // a year that has no such leap month shows the plain one
    m_ui->Cob_Lunar_Month->clear();
    int chosen = 0;
    for (const Lunar_Month &month : Months_Of_Lunar_Year(m_ui->Spn_Lunar_Year->value())) {
        if (month.number == number && (!month.leap || leap))
            chosen = m_ui->Cob_Lunar_Month->count();
        m_ui->Cob_Lunar_Month->addItem(month.name);
    }
    m_ui->Cob_Lunar_Month->setCurrentIndex(chosen);
    Fill_Lunar_Days();
}

void Frm_Date::Fill_Lunar_Days()
{
    m_lunarMonth = Chosen_Lunar_Month();
    const int chosen = std::max(m_ui->Cob_Lunar_Day->currentIndex(), 0);
    const int days = m_lunarMonth.days;
    m_ui->Cob_Lunar_Day->clear();
    for (int day = 1; day <= days; ++day)
        m_ui->Cob_Lunar_Day->addItem(Lunar_Day_Name(day));
    m_ui->Cob_Lunar_Day->setCurrentIndex(std::min(chosen, days - 1));
}

Lunar_Month Frm_Date::Chosen_Lunar_Month() const
{
    return Months_Of_Lunar_Year(m_ui->Spn_Lunar_Year->value()).value(m_ui->Cob_Lunar_Month->currentIndex());
}

void Frm_Date::Cmd_Lunar_Click()
{
    clsDate date;
    date.Set_Lunar(m_ui->Spn_Lunar_Year->value(), m_lunarMonth.number, m_ui->Cob_Lunar_Day->currentIndex() + 1,
                   m_lunarMonth.leap);
    m_ui->Mon_Days->Set_Day(date.Solar());
}

void Frm_Date::List_Mark(const QDate &day, Day_Mark mark)
{
    m_shell.List_Documents(Day_Where(day, mark));
}

/// Documents may have changed while another window was in front.
void Frm_Date::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() != QEvent::ActivationChange || !isActiveWindow())
        return;
    Read_Marks();
    Show_Marks();
}

QList<QPushButton *> Frm_Date::Mark_Buttons() const
{
    return {m_ui->Cmd_Mark_0, m_ui->Cmd_Mark_1, m_ui->Cmd_Mark_2, m_ui->Cmd_Mark_3};
}

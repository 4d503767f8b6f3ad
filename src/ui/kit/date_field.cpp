// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/date_field.h"

#include "core/language_pack.h"
#include "platform/database/database.h"
#include "ui/kit/icons.h"
#include "ui/kit/month_view.h"

#include <QAction>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QToolButton>
#include <QWidgetAction>

namespace
{
QToolButton *Step_Button(const char *icon, const char *words, Month_View &month, int step)
{
    auto *button = new QToolButton;
    button->setAutoRaise(true);
    button->setIcon(Line_Icon(QLatin1String(icon)));
    button->setAccessibleName(Pack_Text("Frm_Date", words));
    QObject::connect(button, &QToolButton::clicked, &month,
                     [&month, step] { month.Set_Day(month.Day().addMonths(step)); });
    return button;
}

/// A month with its name above it, between the buttons for the months beside.
Month_View *Fill_Panel(QWidget &panel)
{
    panel.setLocale(QLocale(Pack_Text("Main", "_Locale")));
    auto *month = new Month_View(&panel);
    month->Set_Lunar(panel.locale().language() == QLocale::Chinese);
    month->setAccessibleName(Pack_Text("Frm_Date", "Frm_Date"));
    auto *name = new QLabel;
    name->setAlignment(Qt::AlignCenter);
    QObject::connect(month, &Month_View::Day_Chosen, name, [name](const QDate &day) {
        name->setText(name->locale().toString(day, Pack_Text("Frm_Date", "_Month_Format")));
    });
    auto *row = new QHBoxLayout;
    row->addWidget(Step_Button("previous", "Cmd_Previous|Index|ToolTipText", *month, -1));
    row->addWidget(name, 1);
    row->addWidget(Step_Button("next", "Cmd_Next|Index|ToolTipText", *month, 1));
    auto *column = new QVBoxLayout(&panel);
    column->addLayout(row);
    column->addWidget(month);
    return month;
}
} // namespace

Date_Field::Date_Field(QWidget *parent) : QLineEdit(parent)
{
    QAction *button = addAction(Line_Icon(QStringLiteral("calendar")), QLineEdit::TrailingPosition);
    connect(button, &QAction::triggered, this, &Date_Field::Show_Calendar);
}

void Date_Field::Show_Calendar()
{
    if (isReadOnly() || !isEnabled())
        return;
    QMenu popup(this);
    auto *panel = new QWidget(&popup);
    Month_View *month = Fill_Panel(*panel);
    const QDateTime typed = Database_Engine::Date_From_Text(text());
    month->Set_Day(typed.isValid() ? typed.date() : month->Day());
    connect(month, &Month_View::Day_Taken, this, [this, &popup](const QDate &date) {
        const QString chosen = Database_Engine::Short_Date(date.startOfDay());
        popup.close();
        if (chosen == text())
            return;
        setText(chosen);
        emit textEdited(chosen);
    });
    auto *action = new QWidgetAction(&popup);
    action->setDefaultWidget(panel);
    popup.addAction(action);
    connect(&popup, &QMenu::aboutToShow, month, [month] { month->setFocus(); });
    popup.exec(mapToGlobal(QPoint(0, height())));
}

void Date_Field::keyPressEvent(QKeyEvent *event)
{
    const bool altDown = event->key() == Qt::Key_Down && event->modifiers().testFlag(Qt::AltModifier);
    if (altDown || event->key() == Qt::Key_F4)
        Show_Calendar();
    else
        QLineEdit::keyPressEvent(event);
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/date_field.h"

#include "platform/database/database.h"
#include "ui/icons.h"

#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLocale>
#include <QMenu>
#include <QWidgetAction>

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
    auto *calendar = new QCalendarWidget(&popup);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    calendar->setLocale(locale());
    const QDateTime typed = Database_Engine::Date_From_Text(text());
    if (typed.isValid())
        calendar->setSelectedDate(typed.date());
    const auto take = [this, &popup](const QDate &date) {
        const QString chosen = Database_Engine::Short_Date(date.startOfDay());
        popup.close();
        if (chosen == text())
            return;
        setText(chosen);
        emit textEdited(chosen);
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    auto *action = new QWidgetAction(&popup);
    action->setDefaultWidget(calendar);
    popup.addAction(action);
    connect(&popup, &QMenu::aboutToShow, calendar, [calendar] { calendar->setFocus(); });
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

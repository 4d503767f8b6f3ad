// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/dialog_finish.h"

#include "ui/kit/access_keys.h"
#include "ui/kit/icons.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>

namespace
{
constexpr int Least_Button = 88;

/// The next of the program's distances.
int Step(int distance)
{
    for (const int step : {0, Distance::Hair, Distance::Near, Distance::Group}) {
        if (distance <= step)
            return step;
    }
    return Distance::Edge;
}

void Space(QLayout &layout)
{
    if (auto *grid = qobject_cast<QGridLayout *>(&layout)) {
        grid->setHorizontalSpacing(Step(grid->horizontalSpacing()));
        grid->setVerticalSpacing(Step(grid->verticalSpacing()));
    } else {
        layout.setSpacing(Step(layout.spacing()));
    }
    const QMargins edges = layout.contentsMargins();
    layout.setContentsMargins(Step(edges.left()), Step(edges.top()), Step(edges.right()), Step(edges.bottom()));
    for (int i = 0; i < layout.count(); ++i) {
        if (QLayout *inner = layout.itemAt(i)->layout())
            Space(*inner);
    }
}

/// A form that begins at its edge, as a tree that fills it, keeps it so.
void Set_Edge(QLayout &layout)
{
    const QMargins edges = layout.contentsMargins();
    const auto edge = [](int side) {
        return side == 0 ? 0 : Distance::Edge;
    };
    layout.setContentsMargins(edge(edges.left()), edge(edges.top()), edge(edges.right()), edge(edges.bottom()));
}

/// The buttons that end a form are as wide as the widest of them.
void Even_Buttons(QLayout &layout)
{
    QList<QPushButton *> row;
    bool others = false;
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->layout() != nullptr)
            Even_Buttons(*item->layout());
        if (auto *button = qobject_cast<QPushButton *>(item->widget()))
            row << button;
        else if (item->widget() != nullptr)
            others = true;
    }
    if (row.isEmpty() || others || qobject_cast<QHBoxLayout *>(&layout) == nullptr)
        return;
    for (QPushButton *button : row)
        button->setMinimumWidth(std::max(button->minimumWidth(), Least_Button));
}

const char *Icon_Of(QMessageBox::Icon icon)
{
    switch (icon) {
    case QMessageBox::Information:
        return "about";
    case QMessageBox::Question:
        return "question";
    case QMessageBox::Warning:
        return "warning";
    case QMessageBox::Critical:
        return "error";
    case QMessageBox::NoIcon:
        break;
    }
    return "";
}

void Finish_Box(QMessageBox &box)
{
    constexpr int Side = 40;
    if (const char *icon = Icon_Of(box.icon()); *icon != '\0')
        box.setIconPixmap(Line_Icon(QLatin1String(icon)).pixmap(QSize(Side, Side), box.devicePixelRatioF()));
    if (box.layout() != nullptr)
        Set_Edge(*box.layout());
    for (QAbstractButton *button : box.buttons()) {
        button->setMinimumWidth(Least_Button);
        button->setIcon({});
    }
}

void Finish_Form(QDialog &form)
{
    if (form.layout() == nullptr)
        return;
    Space(*form.layout());
    Set_Edge(*form.layout());
    Even_Buttons(*form.layout());
    for (const QWidget *part : form.findChildren<QWidget *>()) {
        if (part->layout() != nullptr && part->window() == &form && !part->inherits("QDialogButtonBox"))
            Space(*part->layout());
    }
    if (qobject_cast<QInputDialog *>(&form) == nullptr)
        Give_Access_Keys(form);
}

class Finish : public QObject
{
public:
    using QObject::QObject;

    /// A dialog is polished once, before it is laid out for the screen.
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *dialog = event->type() == QEvent::Polish ? qobject_cast<QDialog *>(object) : nullptr;
        if (dialog != nullptr && qobject_cast<QFileDialog *>(dialog) == nullptr) {
            if (auto *box = qobject_cast<QMessageBox *>(dialog))
                Finish_Box(*box);
            else
                Finish_Form(*dialog);
        }
        return QObject::eventFilter(object, event);
    }
};
} // namespace

void Finish_Dialogs()
{
    if (qApp->findChild<QObject *>(QStringLiteral("Dialog_Finish")) != nullptr)
        return;
    auto *filter = new Finish(qApp);
    filter->setObjectName(QStringLiteral("Dialog_Finish"));
    qApp->installEventFilter(filter);
}

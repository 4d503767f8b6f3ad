// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/access_keys.h"

#include "views/pinyin.h"

#include <QAbstractButton>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>
#include <QToolButton>
#include <algorithm>
#include <functional>
#include <vector>

namespace
{
struct Captioned {
    QWidget *control;
    const QWidget *page; ///< the page of a stack that it lies on, nullptr for none
    QString text;
};

const QWidget *Page_Of(const QWidget &control)
{
    for (const QWidget *part = &control; part->parentWidget() != nullptr && !part->isWindow();
         part = part->parentWidget()) {
        if (qobject_cast<const QStackedWidget *>(part->parentWidget()) != nullptr)
            return part;
    }
    return nullptr;
}

bool Can_Meet(const Captioned &a, const Captioned &b)
{
    return a.page == b.page || a.page == nullptr || b.page == nullptr || a.page->isAncestorOf(b.page) ||
           b.page->isAncestorOf(a.page);
}

QChar Key_Of(const QString &text)
{
    for (qsizetype at = text.indexOf(u'&'); at >= 0 && at + 1 < text.size(); at = text.indexOf(u'&', at + 2)) {
        if (text[at + 1] != u'&')
            return text[at + 1].toUpper();
    }
    return {};
}

bool Is_Latin(QChar letter)
{
    return (letter >= u'a' && letter <= u'z') || (letter >= u'A' && letter <= u'Z');
}

/// "Name:" becomes "&Name:", "名称：" becomes "名称(&M)：".
QString With_Key(const QString &text, const std::function<bool(QChar)> &isFree)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (Is_Latin(text[i]) && isFree(text[i].toUpper()))
            return QString(text).insert(i, u'&');
    }
    QString letters = Pinyin_Initials(text).toUpper();
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        letters += QLatin1Char(letter);
    const auto letter =
        std::find_if(letters.begin(), letters.end(), [&](QChar one) { return Is_Latin(one) && isFree(one); });
    if (letter == letters.end())
        return text;
    qsizetype end = text.size();
    while (end > 0 && (text[end - 1].isPunct() || text[end - 1].isSpace()) && text[end - 1] != u')')
        --end;
    return QString(text).insert(end, QStringLiteral("(&%1)").arg(*letter));
}

bool Takes_Keys(const QWidget *field)
{
    return field != nullptr && field->focusPolicy() != Qt::NoFocus && qobject_cast<const QLabel *>(field) == nullptr &&
           qobject_cast<const QAbstractButton *>(field) == nullptr;
}

/// Binds labels to the fields at their right.
void Bind_Labels(QLayout &layout)
{
    const auto *grid = qobject_cast<QGridLayout *>(&layout);
    for (int i = 0; i < layout.count(); ++i) {
        QLayoutItem *item = layout.itemAt(i);
        if (item->layout() != nullptr)
            Bind_Labels(*item->layout());
        auto *label = qobject_cast<QLabel *>(item->widget());
        if (label == nullptr || label->buddy() != nullptr || label->text().trimmed().isEmpty())
            continue;
        QLayoutItem *beside = nullptr;
        if (grid != nullptr) {
            int row = 0, column = 0, rows = 0, columns = 0;
            grid->getItemPosition(i, &row, &column, &rows, &columns);
            beside = grid->itemAtPosition(row, column + columns);
        } else if (qobject_cast<QBoxLayout *>(&layout) != nullptr &&
                   static_cast<QBoxLayout &>(layout).direction() == QBoxLayout::LeftToRight) {
            beside = layout.itemAt(i + 1);
        }
        if (beside != nullptr && beside->layout() != nullptr)
            beside = beside->layout()->itemAt(0);
        if (beside != nullptr && Takes_Keys(beside->widget()))
            label->setBuddy(beside->widget());
    }
}

bool Wants_Key(const QWidget &control)
{
    if (const auto *label = qobject_cast<const QLabel *>(&control))
        return label->buddy() != nullptr;
    const auto *push = qobject_cast<const QPushButton *>(&control);
    const bool ends = push != nullptr && (push->isDefault() || push->objectName() == QLatin1String("Cmd_Exit") ||
                                          push->objectName() == QLatin1String("Cmd_Cancel") ||
                                          push->objectName() == QLatin1String("Cmd_Close"));
    return !ends && qobject_cast<const QToolButton *>(&control) == nullptr;
}

QString Text_Of(const QWidget &control)
{
    return control.property("text").toString();
}
} // namespace

void Give_Access_Keys(QWidget &form)
{
    if (form.layout() != nullptr)
        Bind_Labels(*form.layout());
    for (const QWidget *part : form.findChildren<QWidget *>()) {
        if (part->layout() != nullptr && part->window() == &form)
            Bind_Labels(*part->layout());
    }
    std::vector<Captioned> all;
    for (QWidget *control : form.findChildren<QWidget *>()) {
        const bool captioned = qobject_cast<QAbstractButton *>(control) != nullptr ||
                               (qobject_cast<QLabel *>(control) != nullptr && Wants_Key(*control));
        if (captioned && control->window() == &form && !control->objectName().startsWith(QLatin1String("qt_")))
            all.push_back({control, Page_Of(*control), Text_Of(*control)});
    }
    for (Captioned &one : all) {
        const bool bare = !one.text.trimmed().isEmpty() && Key_Of(one.text).isNull() && Wants_Key(*one.control);
        if (!bare)
            continue;
        const QString keyed = With_Key(one.text, [&](QChar letter) {
            return std::none_of(all.begin(), all.end(), [&](const Captioned &other) {
                return Key_Of(other.text) == letter && Can_Meet(one, other);
            });
        });
        one.text = keyed;
        one.control->setProperty("text", keyed);
    }
}

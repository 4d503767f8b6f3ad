// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/ctrl_language.h"

#include "core/error_log.h"
#include "core/language_pack.h"
#include "platform/models/plain_tip.h"
#include "platform/profile/profile.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTreeWidget>
#include <QWidget>
#include <functional>

namespace
{
constexpr const char *Form_Mark = "Form";
constexpr int Most_Entries = 1000; // that a pack may give a list

QString Key_Base(const QObject &control)
{
    const QVariant arrayName = control.property("Name");
    const QString name = arrayName.isValid() ? arrayName.toString() : control.objectName();
    const QVariant index = control.property("Index");
    return name + QStringLiteral("|Index") + (index.isValid() ? index.toString().trimmed() : QString());
}

/// Controls of a form, outermost first, without those of forms inside it and without the toolkit's own parts.
void Walk(const QObject &parent, const std::function<void(QObject &)> &visit)
{
    for (QObject *child : parent.children()) {
        const QString name = child->objectName();
        const bool control = child->isWidgetType() || qobject_cast<QAction *>(child) != nullptr;
        if (!control || child->property(Form_Mark).isValid())
            continue;
        if (!name.isEmpty() && !name.startsWith(QLatin1String("qt_")))
            visit(*child);
        Walk(*child, visit);
    }
}

/// Whether a form around this one has the same section: the record of its errors stands for both.
bool Is_Part_Of(const QObject &part, const QString &formName)
{
    for (const QObject *around = part.parent(); around != nullptr; around = around->parent()) {
        if (around->property(Form_Mark) == formName)
            return true;
    }
    return false;
}

/// Where a control keeps a text: how it is read and set.
struct Slot {
    const char *property; ///< "Caption", "Text" or "ToolTipText"
    std::function<QString()> get;
    std::function<void(const QString &)> set;
};

template <class Control>
Slot Caption_Slot(Control &control)
{
    return {"Caption", [&] { return control.text(); },
            [&](const QString &text) {
                control.setText(text);
            }};
}

/// The page of a tab control keeps its caption in the tab.
Slot Page_Slot(QTabWidget &tabs, QWidget &page)
{
    const int index = tabs.indexOf(&page);
    return {"Caption", [&tabs, index] { return tabs.tabText(index); },
            [&tabs, index](const QString &text) {
                tabs.setTabText(index, text);
            }};
}

QTabWidget *Tabs_Of(const QWidget &page)
{
    QWidget *stack = page.parentWidget();
    auto *tabs = stack == nullptr ? nullptr : qobject_cast<QTabWidget *>(stack->parentWidget());
    return tabs != nullptr && tabs->indexOf(const_cast<QWidget *>(&page)) >= 0 ? tabs : nullptr;
}

std::vector<Slot> Slots_Of(QObject &object)
{
    std::vector<Slot> found;
    if (auto *action = qobject_cast<QAction *>(&object)) {
        found.push_back({"Caption", [action] { return action->text(); },
                         [action](const QString &text) {
                             Set_Caption(*action, text);
                         }});
        return found;
    }
    auto &widget = static_cast<QWidget &>(object);
    if (auto *menu = qobject_cast<QMenu *>(&widget)) {
        found.push_back({"Caption", [menu] { return menu->title(); },
                         [menu](const QString &t) {
                             menu->setTitle(t);
                         }});
        return found;
    }
    found.push_back({"ToolTipText", [&widget] { return widget.toolTip(); },
                     [&widget](const QString &text) {
                         widget.setToolTip(Plain_Tip(text));
                     }});
    if (auto *edit = qobject_cast<QLineEdit *>(&widget))
        found.push_back({"Text", [edit] { return edit->text(); },
                         [edit](const QString &t) {
                             edit->setText(t);
                         }});
    else if (auto *label = qobject_cast<QLabel *>(&widget))
        found.push_back(Caption_Slot(*label));
    else if (auto *button = qobject_cast<QAbstractButton *>(&widget))
        found.push_back(Caption_Slot(*button));
    else if (auto *frame = qobject_cast<QGroupBox *>(&widget))
        found.push_back({"Caption", [frame] { return frame->title(); },
                         [frame](const QString &t) {
                             frame->setTitle(t);
                         }});
    else if (QTabWidget *tabs = Tabs_Of(widget))
        found.push_back(Page_Slot(*tabs, widget));
    return found;
}

/// The entries of a list that the pack may fill, or the columns of a list view; an empty `set` for other controls.
struct List_Slot {
    std::function<QStringList()> get;
    std::function<void(const QStringList &)> set;
};

List_Slot List_Of(QObject &object)
{
    if (auto *view = qobject_cast<QTreeWidget *>(&object)) {
        return {[view] {
                    QStringList columns;
                    for (int i = 0; i < view->columnCount(); ++i)
                        columns << view->headerItem()->text(i);
                    return columns;
                },
                [view](const QStringList &columns) {
                    view->setHeaderLabels(columns);
                }};
    }
    if (!object.property("lang_ok").toBool())
        return {};
    if (auto *combo = qobject_cast<QComboBox *>(&object)) {
        return {[combo] {
                    QStringList items;
                    for (int i = 0; i < combo->count(); ++i)
                        items << combo->itemText(i);
                    return items;
                },
                [combo](const QStringList &items) {
                    combo->clear();
                    combo->addItems(items);
                }};
    }
    if (auto *list = qobject_cast<QListWidget *>(&object)) {
        return {[list] {
                    QStringList items;
                    for (int i = 0; i < list->count(); ++i)
                        items << list->item(i)->text();
                    return items;
                },
                [list](const QStringList &items) {
                    list->clear();
                    list->addItems(items);
                }};
    }
    return {};
}
} // namespace

void Set_Caption(QAction &action, const QString &text)
{
    static const QRegularExpression menuOnly(QStringLiteral("\\(&\\w\\)|&|\\.\\.\\.$"));
    action.setText(text);
    action.setIconText(QString(text).remove(menuOnly));
    action.setToolTip(Plain_Tip(action.iconText()));
}

ctrlLanguage::ctrlLanguage(QWidget &form, QString formName) : m_form(&form), m_name(std::move(formName))
{
    form.setProperty(Form_Mark, m_name);
}

void ctrlLanguage::LoadControlsCaption()
{
    const Language_Pack &pack = Language();
    if (pack.Load_Error() && !Is_Part_Of(*m_form, m_name)) {
        Set_Pending(*pack.Load_Error());
        Error_Log(m_name + QStringLiteral("\\Load_Lang"));
    }
    if (!pack.Is_Loaded())
        return;
    Walk(*m_form, [&](QObject &control) {
        const QString base = Key_Base(control);
        for (const Slot &slot : Slots_Of(control))
            slot.set(pack.GetString(m_name, base + QLatin1Char('|') + QLatin1String(slot.property)));
        const List_Slot list = List_Of(control);
        if (!list.set)
            return;
        QStringList items;
        const int count = std::min(pack.GetString(m_name, base + QStringLiteral("|Count")).toInt(), Most_Entries);
        for (int i = 1; i <= count; ++i)
            items << pack.GetString(m_name, base + QStringLiteral("|Item") + QString::number(i));
        list.set(items);
    });
    m_form->setWindowTitle(pack.GetString(m_name, m_name));
}

QString ctrlLanguage::GetString(const char *key) const
{
    return Language().GetString(m_name, QLatin1String(key));
}

QString ctrlLanguage::GetString(const char *key, const char *section)
{
    return Pack_Text(section, key);
}

void ctrlLanguage::WriteIniFileFormIDEform(const QString &path) const
{
    const auto write = [&](const QString &key, const QString &value) {
        const bool quoted = value != value.trimmed();
        Profile::Write(path, m_name, key, quoted ? QLatin1Char('"') + value + QLatin1Char('"') : value);
    };
    write(m_name, m_form->windowTitle());
    Walk(*m_form, [&](QObject &control) {
        const QString base = Key_Base(control);
        for (const Slot &slot : Slots_Of(control)) {
            if (!slot.get().isEmpty())
                write(base + QLatin1Char('|') + QLatin1String(slot.property), slot.get());
        }
        const List_Slot list = List_Of(control);
        if (!list.get)
            return;
        const QStringList items = list.get();
        write(base + QStringLiteral("|Count"), QString::number(items.size()));
        for (qsizetype i = 0; i < items.size(); ++i)
            write(base + QStringLiteral("|Item") + QString::number(i + 1), items[i]);
    });
}

void ctrlLanguage::AddSimpleStringToFile(const QString &key, const QString &path) const
{
    Profile::Write(path, m_name, key, QString());
}

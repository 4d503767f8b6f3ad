// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/window/window_keys.h"

#include "core/language_pack.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

Window_Keys::Window_Keys(QWidget &window, QMenu &menu, std::vector<Area> areas)
    : QObject(&window), m_window(window), m_areas(std::move(areas))
{
    for (size_t i = 0; i < m_areas.size(); ++i) {
        const QByteArray key = "Alt+" + QByteArray::number(static_cast<int>(i) + 1);
        Add(menu, m_areas[i].caption, key.constData(), [this, i] {
            if (m_areas[i].root() != nullptr)
                m_areas[i].enter();
        });
    }
    menu.addSeparator();
    Add(menu, "_Go_Next", "F6", [this] { Step(1); });
    Add(menu, "_Go_Previous", "Shift+F6", [this] { Step(-1); });
}

void Window_Keys::Add(QMenu &menu, const char *caption, const char *key, std::function<void()> run)
{
    QAction *action = menu.addAction(Pack_Text("Frm_Main", caption));
    action->setShortcut(QKeySequence(QLatin1String(key)));
    connect(action, &QAction::triggered, this, std::move(run));
}

bool Window_Keys::Is_There(const Area &area) const
{
    const QWidget *root = area.root();
    return root != nullptr && root->isVisibleTo(&m_window);
}

/// From a place that is in no area, the first one is next. Of areas inside each other the innermost counts.
void Window_Keys::Step(int step)
{
    const int count = static_cast<int>(m_areas.size());
    const QWidget *focus = QApplication::focusWidget();
    int at = step > 0 ? -1 : count;
    for (int i = 0; i < count; ++i) {
        const QWidget *root = m_areas[static_cast<size_t>(i)].root();
        if (root != nullptr && focus != nullptr && (root == focus || root->isAncestorOf(focus)))
            at = i;
    }
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        const Area &area = m_areas[static_cast<size_t>(at)];
        if (Is_There(area))
            return area.enter();
    }
}

QWidget *First_Field(QWidget *part)
{
    if (part == nullptr)
        return nullptr;
    // In the order of the Tab key: each control is followed by the next one.
    for (QWidget *one = part->nextInFocusChain(); one != nullptr && one != part; one = one->nextInFocusChain()) {
        if (part->isAncestorOf(one) && one->isVisible() && one->isEnabled() && (one->focusPolicy() & Qt::TabFocus) != 0)
            return one;
    }
    return nullptr;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "editor/composition.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QPointer>

namespace
{
/// Remembers the field that got the last composition event, and what that showed.
class Watcher : public QObject
{
public:
    using QObject::QObject;

    QPointer<QObject> field;
    QString text;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::InputMethod && watched->isWidgetType()) {
            field = watched;
            text = static_cast<QInputMethodEvent *>(event)->preeditString();
        }
        return false;
    }
};

QPointer<Watcher> &The_Watcher()
{
    static QPointer<Watcher> watcher;
    return watcher;
}
} // namespace

void Composition::Watch()
{
    if (The_Watcher() != nullptr)
        return;
    The_Watcher() = new Watcher(qApp);
    qApp->installEventFilter(The_Watcher());
}

bool Composition::Is_Open()
{
    return The_Watcher() != nullptr && The_Watcher()->field != nullptr && !The_Watcher()->text.isEmpty();
}

void Composition::Commit()
{
    if (!Is_Open())
        return;
    Watcher &watcher = *The_Watcher();
    const bool focused = QGuiApplication::focusObject() == watcher.field;
    if (focused)
        QGuiApplication::inputMethod()->commit();
    // An input method that doesn't answer at once would leave its text where no save sees it.
    if (!Is_Open())
        return;
    QInputMethodEvent taken;
    taken.setCommitString(watcher.text);
    QCoreApplication::sendEvent(watcher.field, &taken);
    if (focused)
        QGuiApplication::inputMethod()->reset();
}

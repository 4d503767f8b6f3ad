// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/desktop/plain_labels.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>

namespace
{
class Plain_Labels : public QObject
{
public:
    using QObject::QObject;

    /// A label is polished before it is measured or painted for the first time.
    bool eventFilter(QObject *object, QEvent *event) override
    {
        auto *label = event->type() == QEvent::Polish ? qobject_cast<QLabel *>(object) : nullptr;
        const bool tip = label != nullptr && label->inherits("QTipLabel"); // their texts are made plain
        if (label != nullptr && !tip && label->textFormat() == Qt::AutoText)
            label->setTextFormat(Qt::PlainText);
        return QObject::eventFilter(object, event);
    }
};
} // namespace

void Keep_Labels_Plain()
{
    if (qApp->findChild<QObject *>(QStringLiteral("Plain_Labels")) != nullptr)
        return;
    auto *filter = new Plain_Labels(qApp);
    filter->setObjectName(QStringLiteral("Plain_Labels"));
    qApp->installEventFilter(filter);
}

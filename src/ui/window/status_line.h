// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

class QLabel;
class QPushButton;
class QStatusBar;

/// The status line: messages that go by themselves, a button that takes back what was just done, and at the right the
/// facts of what is on screen, which stay.
class Status_Line : public QObject
{
    Q_OBJECT

public:
    explicit Status_Line(QStatusBar &bar);

    void Say(const QString &text);
    /// Says what was done and offers to take it back, until something else is said or a while has passed.
    void Offer_Undo(const QString &done, std::function<void()> undo);
    /// One short text for each fact, from left to right.
    void Show_Facts(const QStringList &facts);

private:
    void Take_Back();

    QStatusBar &m_bar;
    QPushButton *m_undoButton;
    QList<QLabel *> m_facts;
    std::function<void()> m_undo;
    QTimer m_offer; ///< how long an undo is offered
};

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QTimer>
#include <QToolButton>

/// The numbers of documents that are overdue and due today; hidden while there are none. They are counted a while
/// after the start and after each change, and on a new day.
class Due_Button : public QToolButton
{
    Q_OBJECT

public:
    explicit Due_Button(QWidget *parent = nullptr);

    /// Something was changed: several changes in a row are one.
    void Count_Soon() { m_soon.start(); }
    void Count();

signals:
    /// The list of that node of the hot lists is wanted.
    void Wanted(const QString &nodeKey);

private:
    QTimer m_soon;
    QTimer m_clock;
    QDate m_day; ///< of the last count
    QString m_node;
};

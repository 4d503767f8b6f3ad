// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QAbstractItemView;

/// Tells once when a row of a view is chosen, by key or by mouse; a click on the current row chooses it again. What
/// happens while its signals are blocked is no choice.
class Row_Choice : public QObject
{
    Q_OBJECT

public:
    /// The view has its model already.
    explicit Row_Choice(QAbstractItemView &view);

signals:
    void Chosen();

private:
    bool m_fresh = false; ///< the row that is being clicked was chosen by this very click
};

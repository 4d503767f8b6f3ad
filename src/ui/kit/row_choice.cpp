// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/kit/row_choice.h"

#include <QAbstractItemView>
#include <QItemSelectionModel>
#include <utility>

Row_Choice::Row_Choice(QAbstractItemView &view) : QObject(&view)
{
    connect(view.selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        m_fresh = !signalsBlocked();
        emit Chosen();
    });
    connect(&view, &QAbstractItemView::clicked, this, [this] {
        if (!std::exchange(m_fresh, false))
            emit Chosen();
    });
}

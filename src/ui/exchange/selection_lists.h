// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/models/list_model.h"
#include "ui/kit/tick_model.h"

#include <QObject>
#include <QStringList>

class QCheckBox;
class QPushButton;
class QTreeView;

/// Two lists with boxes to tick: documents that were found, and below them those that were chosen of them. Both have a
/// box for all rows and the same as a menu of their own.
class Selection_Lists : public QObject
{
    Q_OBJECT

public:
    struct Controls {
        QTreeView &found;
        QTreeView &chosen;
        QCheckBox &all_found;
        QCheckBox &all_chosen;
        QPushButton &move_down;
    };
    struct Column {
        const char *key; ///< of its caption in the pack
        int width;       ///< in characters
    };
    using Columns = std::vector<Column>;

    /// @param section  of the pack, where the columns' captions stand
    Selection_Lists(QWidget &form, const char *section, const Controls &controls, const Columns &found,
                    const Columns &chosen);

    /// Takes the ticks of what was found away, as its rows are about to be others.
    void Forget_Ticks();
    /// The chosen rows that are ticked, in the list's order.
    [[nodiscard]] QList<List_Row> Ticked() const;

    List_Model Found;
    List_Model Chosen;

signals:
    /// Rows came into the lower list.
    void Moved();

private:
    void Set_Up(QTreeView &view, QCheckBox &all, List_Model &list, Tick_Model &ticks, const Columns &columns);
    void Show_Menu(const QTreeView &view, Tick_Model &ticks, const QPoint &where);
    void Move_Down();

    QWidget &m_form;
    const char *m_section; ///< of the pack
    Controls m_controls;
    Tick_Model m_foundTicks{Found};
    Tick_Model m_chosenTicks{Chosen};
};

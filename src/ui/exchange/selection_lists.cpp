// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/exchange/selection_lists.h"

#include "core/language_pack.h"
#include "exchange/transfer_candidates.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>

Selection_Lists::Selection_Lists(QWidget &form, const char *section, const Controls &controls, const Columns &found,
                                 const Columns &chosen)
    : m_form(form), m_section(section), m_controls(controls)
{
    Set_Up(controls.found, controls.all_found, Found, m_foundTicks, found);
    Set_Up(controls.chosen, controls.all_chosen, Chosen, m_chosenTicks, chosen);
    connect(&controls.move_down, &QPushButton::clicked, this, &Selection_Lists::Move_Down);
}

void Selection_Lists::Set_Up(QTreeView &view, QCheckBox &all, List_Model &list, Tick_Model &ticks,
                             const Columns &columns)
{
    std::vector<List_Column> captions;
    for (const Column &column : columns)
        captions.push_back({QLatin1String(column.key), Pack_Text(m_section, column.key)});
    list.Set_Columns(std::move(captions));
    view.setModel(&ticks);
    view.setAccessibleName(m_form.windowTitle());
    const int character = m_form.fontMetrics().averageCharWidth();
    for (size_t i = 0; i < columns.size(); ++i)
        view.setColumnWidth(static_cast<int>(i), columns[i].width * character);
    view.header()->setStretchLastSection(true);
    connect(&all, &QCheckBox::clicked, &ticks, &Tick_Model::Tick_All);
    connect(&view, &QTreeView::customContextMenuRequested, this,
            [this, &view, &ticks](const QPoint &where) { Show_Menu(view, ticks, where); });
}

void Selection_Lists::Show_Menu(const QTreeView &view, Tick_Model &ticks, const QPoint &where)
{
    QMenu menu(&m_form);
    for (const bool on : {true, false}) {
        QAction *action = menu.addAction(Pack_Text("Frm_DataExport_Ex", on ? "_Check" : "_UnCheck"), this,
                                         [&ticks, on] { ticks.Tick_All(on); });
        action->setObjectName(view.objectName() + QLatin1String(on ? "_Check" : "_UnCheck"));
    }
    menu.exec(view.viewport()->mapToGlobal(where));
}

void Selection_Lists::Forget_Ticks()
{
    m_controls.all_found.setChecked(false);
    m_foundTicks.Tick_All(false);
}

void Selection_Lists::Move_Down()
{
    Mod_DataBaseExport::Add_To_Transfer_List(Found, m_foundTicks.Ticked(), Chosen);
    m_controls.all_chosen.setChecked(false);
    emit Moved();
}

QList<List_Row> Selection_Lists::Ticked() const
{
    QList<List_Row> rows;
    for (int i = 0; i < Chosen.Row_Count(); ++i) {
        if (m_chosenTicks.Ticked().contains(Chosen.Row(i).tag))
            rows.append(Chosen.Row(i));
    }
    return rows;
}
